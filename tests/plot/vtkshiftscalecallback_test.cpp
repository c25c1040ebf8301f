#include "support/PlotScene.h"

#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <gmock/gmock.h>
#include <vtkCommand.h>
#include <vtkContextMouseEvent.h>

namespace runsieve::test {
namespace {

/// A plot comes back with the zoom that the user left it in.
struct RememberedWindowTest : testing::Test
{
  PlotScene plot;
  RecordingPainter recorder;

  RememberedWindowTest()
  {
    plot.container.setPlotData(makeTable({{"x", {0, 1, 2}}, {"a", {0, 1, 2}}, {"b", {5, 6, 7}}}));
    plot.settings().yColumns = {1};
    plot.container.redraw();
    plot.paint(recorder);
  }

  void pan(int dx, int dy)
  {
    vtkContextMouseEvent mouse;
    mouse.SetInteractor(nullptr);
    mouse.SetButton(vtkContextMouseEvent::LEFT_BUTTON);
    mouse.SetPos({400, 300});
    mouse.SetLastScreenPos({400, 300});
    mouse.SetScreenPos({400, 300});
    mouse.SetLastScenePos({400, 300});
    mouse.SetScenePos({400, 300});
    plot.chart()->MouseButtonPressEvent(mouse);
    mouse.SetPos({400.0f + dx, 300.0f + dy});
    mouse.SetScreenPos({400 + dx, 300 + dy});
    mouse.SetScenePos({400.0f + dx, 300.0f + dy});
    plot.chart()->MouseMoveEvent(mouse);
  }

  [[nodiscard]] bool remembers(int x, int y, plotStyles style) const
  {
    return plot.container.coordinateWindows.count({x, y, style}) == 1;
  }
};

TEST_F(RememberedWindowTest, NothingIsStoredUntilTheUserMoves)
{
  EXPECT_TRUE(plot.container.coordinateWindows.empty());
}

TEST_F(RememberedWindowTest, APanStoresTheRangesOnScreen)
{
  pan(50, -30);
  ASSERT_TRUE(remembers(0, 1, scatterPlot));
  CoordinateWindow const window = plot.container.coordinateWindows[{0, 1, scatterPlot}];
  EXPECT_TRUE(window.valid);
  EXPECT_DOUBLE_EQ(window.xMin, plot.bottom()->GetMinimum());
  EXPECT_DOUBLE_EQ(window.xMax, plot.bottom()->GetMaximum());
  EXPECT_DOUBLE_EQ(window.yMin, plot.left()->GetMinimum());
  EXPECT_DOUBLE_EQ(window.yMax, plot.left()->GetMaximum());
  EXPECT_LT(window.xMin, 0) << "the picture moved to the right";
}

TEST_F(RememberedWindowTest, ARedrawAfterAPanRestoresBothAxesFixed)
{
  pan(50, -30);
  CoordinateWindow const window = plot.container.coordinateWindows[{0, 1, scatterPlot}];
  plot.bottom()->SetRange(-100, 100);
  plot.left()->SetRange(-100, 100);
  plot.container.redraw();
  plot.paint(recorder);
  EXPECT_EQ(plot.bottom()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_EQ(plot.left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMinimum(), window.xMin);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMaximum(), window.xMax);
  EXPECT_DOUBLE_EQ(plot.left()->GetMinimum(), window.yMin);
  EXPECT_DOUBLE_EQ(plot.left()->GetMaximum(), window.yMax);
}

TEST_F(RememberedWindowTest, EachPairOfColumnsKeepsItsOwn)
{
  pan(50, 0);
  double const left = plot.bottom()->GetMinimum();
  plot.container.setPlotCols(0, 2, 0, false);
  EXPECT_FALSE(remembers(0, 2, scatterPlot));
  EXPECT_NE(plot.bottom()->GetMinimum(), left);
  plot.paint(recorder);
  pan(-80, 0);
  EXPECT_TRUE(remembers(0, 2, scatterPlot));
  plot.container.setPlotCols(0, 1, 0, false);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMinimum(), left);
}

TEST_F(RememberedWindowTest, EachStyleKeepsItsOwn)
{
  plot.settings().blockSignals(true);
  plot.settings().setPlotStyle(multiPlot);
  plot.chart()->InvokeEvent(vtkCommand::InteractionEvent);
  EXPECT_TRUE(remembers(0, 1, multiPlot));
  EXPECT_FALSE(remembers(0, 1, scatterPlot));
}

TEST_F(RememberedWindowTest, ALaterMoveReplacesTheStoredWindow)
{
  pan(50, 0);
  pan(50, 0);
  EXPECT_EQ(plot.container.coordinateWindows.size(), 1u);
  EXPECT_DOUBLE_EQ((plot.container.coordinateWindows[{0, 1, scatterPlot}].xMin), plot.bottom()->GetMinimum());
}

TEST_F(RememberedWindowTest, CallersThatAreNoChartOrHaveNoAxesAreIgnored)
{
  auto* callback = plot.container.shiftScaleCallback.Get();
  callback->Execute(nullptr, 0, nullptr);
  callback->Execute(plot.container.plotData, 0, nullptr);
  vtkNew<vtkChartParallelCoordinates> chartWithoutAxes;
  callback->Execute(chartWithoutAxes, 0, nullptr);
  EXPECT_TRUE(plot.container.coordinateWindows.empty());
}

TEST_F(RememberedWindowTest, WithoutAContainerNothingHappens)
{
  vtkNew<vtkShiftScaleCallback> callback;
  EXPECT_EQ(callback->plotContainer, nullptr);
  callback->Execute(plot.chart(), vtkCommand::InteractionEvent, nullptr);
  EXPECT_TRUE(plot.container.coordinateWindows.empty());
}

} // namespace
} // namespace runsieve::test
