#pragma once

#include "PlotScene.h"
#include "support/PlotParts.h"
#include <runsieve/widgets/LinePlotWidget.h>
#include <runsieve/widgets/PlotSelector.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include <vector>

namespace runsieve::test {

/// The panel of time courses, and a simulation of three items at three times, all values above 0.
struct LinePanel : testing::Test
{
  std::vector<double> times{0, 1, 2};
  std::vector<double> a{5, 60, 700};
  std::vector<double> b{8, 9, 10};
  std::vector<double> c{1, 2, 4};
  LinePlotData data;
  LinePlotWidget panel;

  LinePanel()
  {
    data.timeLabel = "Time [s]";
    data.valueLabel = "Amount";
    data.times = &times;
    data.series[{Kestrane::Molecule, "A"}] = &a;
    data.series[{Kestrane::Molecule, "B"}] = &b;
    data.series[{Kestrane::Complex, "C"}] = &c;
  }

  [[nodiscard]] PlotContainer& plot() { return *panel.ui.plotter->plotContainer; }
  [[nodiscard]] vtkChart* chart() { return plot().chartXY; }
  [[nodiscard]] PlotSelector& tree() { return *panel.ui.selector; }

  void show()
  {
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
  }

  QTreeWidgetItem* item(QString const& name)
  {
    auto const found = tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.front();
  }

  /// Names of the columns that the chart draws, in the order of its plots.
  std::vector<std::string> shown()
  {
    std::vector<std::string> names;
    for (vtkIdType i = 0; i < chart()->GetNumberOfPlots(); ++i)
      names.push_back(drawnColumn(chart()->GetPlot(i), 1));
    return names;
  }

  static void press(QPushButton* button) { QTest::mousePress(button, Qt::LeftButton); }
  static void release(QPushButton* button) { QTest::mouseRelease(button, Qt::LeftButton); }
};

} // namespace runsieve::test
