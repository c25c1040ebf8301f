#pragma once

#include "support/PlotParts.h"
#include <runsieve/widgets/VtkPlotWidget.h>

#include <gtest/gtest.h>
#include <vtkContextScene.h>
#include <vtkContextView.h>

#include <QTest>

namespace runsieve::test {

/// A widget that can be shown as a window of its own.
struct WidgetWindow : testing::Test
{
  VtkPlotWidget widget;

  void showWindow()
  {
    widget.resize(400, 300);
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    widget.updatePlot(true);
    QTest::qWait(50);
  }

  [[nodiscard]] vtkContextScene* scene() { return widget.view->GetScene(); }
};

} // namespace runsieve::test
