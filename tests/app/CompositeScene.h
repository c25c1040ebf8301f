#pragma once

#include "support/PlotParts.h"
#include "support/TableFile.h"

#include "support/ChartMouse.h"
#include "support/ShapedScan.h"

#include "app/composite/CompositeWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <string>
#include <vector>

namespace runsieve::test {

/// The composite view's window on a scan of three shapes.
struct CompositeScene : testing::Test
{
  QTemporaryDir folder;
  ShapedScan shaped;
  app::CompositeWindow window;

  void SetUp() override
  {
    writeTable(shaped.scan, file("scan.csv").toStdString());
    show(window);
    QString error;
    ASSERT_TRUE(window.open(file("scan.csv"), error)) << error.toStdString();
    settle();
  }

  static void show(app::CompositeWindow& shown)
  {
    shown.resize(1000, 800);
    shown.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&shown));
  }

  QString file(const char* name) const { return folder.filePath(name); }

  static void settle(app::CompositeWindow& shown)
  {
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    test::settle(*shown.plotWidget());
  }
  void settle() { settle(window); }

  [[nodiscard]] PlotContainer& plot() { return *window.plot(); }
  [[nodiscard]] std::string status() { return window.statusText().toStdString(); }

  void drag(double time, double low, double high)
  {
    ChartMouse(*window.plotWidget(), plot().chartXY)
        .drag({time - 0.2, low}, {time + 0.2, high}, Qt::RightButton);
    settle();
  }

  /// The cluster of each run as the plot has it.
  [[nodiscard]] std::vector<int> labels()
  {
    std::vector<int> found;
    if (plot().clusterLabels)
      for (vtkIdType i = 0; i < plot().clusterLabels->GetNumberOfValues(); ++i)
        found.push_back(plot().clusterLabels->GetValue(i));
    return found;
  }

  /// The box or button of a window that bears a text.
  template <class Widget> static Widget* child(app::CompositeWindow& parent, QString const& text)
  {
    for (Widget* widget : parent.findChildren<Widget*>())
      if (widget->text() == text) return widget;
    return nullptr;
  }
};

} // namespace runsieve::test
