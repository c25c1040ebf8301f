#include "support/PlotScene.h"

#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <gtest/gtest.h>
#include <vtkCommand.h>

namespace runsieve::test {
namespace {

/// The zoom that a user left comes back as the same numbers, whatever became of the scales of the axes
/// meanwhile.
struct AxisWindowTest : testing::Test, PlotScene
{
  AxisWindowTest()
  {
    container.setPlotData(makeTable({{"x", {1, 10, 100}}, {"y", {1, 10, 1000}}}));
    settings().yColumns = {1};
    container.redraw();
  }

  /// As a pan or zoom of the user that ends with these numbers on the axes.
  void zoomTo(double xMin, double xMax, double yMin, double yMax)
  {
    for (vtkAxis* axis : {bottom(), left()}) axis->SetBehavior(vtkAxis::FIXED);
    bottom()->SetUnscaledRange(xMin, xMax);
    left()->SetUnscaledRange(yMin, yMax);
    chart()->InvokeEvent(vtkCommand::InteractionEvent);
  }

  void setLogX(bool log)
  {
    settings().setLogX(log);
    EXPECT_EQ(bottom()->GetLogScale(), log);
  }

  void expectX(double minimum, double maximum)
  {
    EXPECT_NEAR(bottom()->GetUnscaledMinimum(), minimum, 1e-9 * std::abs(maximum));
    EXPECT_NEAR(bottom()->GetUnscaledMaximum(), maximum, 1e-9 * std::abs(maximum));
    EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::FIXED);
  }

  void expectY(double minimum, double maximum)
  {
    EXPECT_NEAR(left()->GetUnscaledMinimum(), minimum, 1e-9 * std::abs(maximum));
    EXPECT_NEAR(left()->GetUnscaledMaximum(), maximum, 1e-9 * std::abs(maximum));
    EXPECT_EQ(left()->GetBehavior(), vtkAxis::FIXED);
  }
};

TEST_F(AxisWindowTest, AWindowOfALinearAxisShowsTheSameNumbersOnALogarithmicOneAndBack)
{
  zoomTo(10, 50, 2, 20);
  setLogX(true);
  expectX(10, 50);
  EXPECT_TRUE(bottom()->GetLogScaleActive());
  EXPECT_NEAR(bottom()->GetMinimum(), 1.0, 1e-12);
  setLogX(false);
  expectX(10, 50);
  EXPECT_EQ(bottom()->GetMinimum(), 10.0);
}

TEST_F(AxisWindowTest, AWindowOfALogarithmicAxisShowsTheSameNumbersOnALinearOneAndBack)
{
  setLogX(true);
  zoomTo(10, 50, 2, 20);
  const CoordinateWindow window = container.coordinateWindows.at({0, 1, scatterPlot});
  EXPECT_NEAR(window.xMin, 1.0, 1e-12) << "windows are in the units of the axis";
  EXPECT_EQ(window.xScale, WindowScale::logarithmic);
  EXPECT_EQ(window.yScale, WindowScale::linear);
  setLogX(false);
  expectX(10, 50);
  setLogX(true);
  expectX(10, 50);
  EXPECT_TRUE(bottom()->GetLogScaleActive());
}

TEST_F(AxisWindowTest, TheLeftAxisIsConvertedAsWell)
{
  zoomTo(10, 50, 2, 20);
  container.setLogScaleY(true);
  container.redraw();
  expectY(2, 20);
  EXPECT_TRUE(left()->GetLogScaleActive());
  container.setLogScaleY(false);
  container.redraw();
  expectY(2, 20);
}

TEST_F(AxisWindowTest, AWindowOfALogarithmicLeftAxisComesBackOnALinearOne)
{
  container.setLogScaleY(true);
  zoomTo(10, 50, 2, 20);
  ASSERT_TRUE(left()->GetLogScaleActive());
  container.setLogScaleY(false);
  container.redraw();
  expectY(2, 20);
}

TEST_F(AxisWindowTest, AWindowThatReachesBelowZeroIsShownOnALinearAxis)
{
  zoomTo(-5, 50, 2, 20);
  setLogX(true);
  EXPECT_FALSE(bottom()->GetLogScaleActive());
  expectX(-5, 50);
}

TEST_F(AxisWindowTest, AWindowWithoutAScaleIsInTheUnitsOfTheAxis)
{
  container.coordinateWindows[{0, 1, scatterPlot}] = {0.5, 2, 1.5, 20, true};
  setLogX(true);
  expectX(std::pow(10.0, 0.5), std::pow(10.0, 1.5));
}

TEST_F(AxisWindowTest, ACopyConvertsToo)
{
  zoomTo(10, 50, 2, 20);
  setLogX(true);
  testing::internal::CaptureStdout(); // a copy says that it has no scene
  PlotContainer copy(container);
  testing::internal::GetCapturedStdout();
  vtkNew<vtkContextScene> itsScene;
  copy.setScene(itsScene);
  copy.redraw();
  EXPECT_NEAR(copy.chartXY->GetAxis(vtkAxis::BOTTOM)->GetUnscaledMaximum(), 50, 1e-9);
}

} // namespace
} // namespace runsieve::test
