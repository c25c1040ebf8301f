#include "support/ChartMouse.h"
#include "support/PlotParts.h"

#include <vtkAxis.h>

#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

class FirstPaint : public testing::Test
{
protected:
  void fill()
  {
    times = {0.0, 10.0, 20.0};
    values = {100.0, 150.0, 200.0};
    data.timeLabel = "Time";
    data.times = &times;
    data.series[{Kestrane::Molecule, "A"}] = &values;
    items = {{Kestrane::Molecule, "A"}};
    widget.plotContainer->setLinePlotData(&data);
    widget.plotContainer->setLinePlotItems(&items);
    widget.updatePlot(true);
  }

  void expectAxesOnTheData()
  {
    vtkChart* chart = widget.plotContainer->chartXY;
    EXPECT_DOUBLE_EQ(chart->GetAxis(vtkAxis::BOTTOM)->GetMaximum(), 20.0);
    EXPECT_DOUBLE_EQ(chart->GetAxis(vtkAxis::LEFT)->GetMinimum(), 100.0);
    EXPECT_DOUBLE_EQ(chart->GetAxis(vtkAxis::LEFT)->GetMaximum(), 200.0);
  }

  std::vector<double> times;
  std::vector<double> values;
  LinePlotData data;
  std::vector<Kestrane::TypedConcentrationName> items;
  VtkPlotWidget widget;
};

TEST_F(FirstPaint, DataSetBeforeTheWindowIsShownFillTheAxes)
{
  fill();
  showAndWait(widget, 400, 300);
  expectAxesOnTheData();
}

TEST_F(FirstPaint, DataSetInAShownWindowFillTheAxes)
{
  showAndWait(widget, 400, 300);
  fill();
  settle(widget);
  expectAxesOnTheData();
}

TEST_F(FirstPaint, ThePlotAreaKeepsItsMarginsWhenTheWindowGrows)
{
  fill();
  showAndWait(widget, 400, 300);
  widget.resize(600, 500);
  settle(widget);
  vtkChart* chart = widget.plotContainer->chartXY;
  EXPECT_EQ(chart->GetPoint1()[0], 80);
  EXPECT_EQ(chart->GetPoint1()[1], 40);
  EXPECT_EQ(chart->GetPoint2()[0], 580);
  EXPECT_EQ(chart->GetPoint2()[1], 480);
}

} // namespace
} // namespace runsieve::test
