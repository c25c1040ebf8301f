#include "support/PlotScene.h"

#include <gtest/gtest.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkNew.h>
#include <vtkTextProperty.h>

namespace runsieve::test {
namespace {

struct ChartLooksTest : testing::Test, PlotScene
{};

TEST_F(ChartLooksTest, AfterADistributionTheAxesAreThoseOfANewChart)
{
  container.setDistribution(normalDistribution(5.0, 1.0).get());
  container.setPlotData(makeTable({{"x", {1, 2}}, {"y", {3, 4}}}));
  container.redraw();
  vtkNew<vtkAxis> fresh;
  for (int side : {vtkAxis::LEFT, vtkAxis::BOTTOM}) {
    vtkAxis* axis = container.chartXY->GetAxis(side);
    EXPECT_EQ(axis->GetMargins()[0], fresh->GetMargins()[0]);
    EXPECT_EQ(axis->GetMargins()[1], fresh->GetMargins()[1]);
    EXPECT_EQ(axis->GetPrecision(), fresh->GetPrecision());
    EXPECT_EQ(axis->GetNotation(), fresh->GetNotation());
    EXPECT_EQ(axis->GetNumberOfTicks(), fresh->GetNumberOfTicks());
    EXPECT_EQ(axis->GetLabelProperties()->GetOrientation(), 0.0);
    EXPECT_TRUE(axis->GetLabelsVisible());
  }
  EXPECT_TRUE(container.chartXY->GetInteractive());
}

TEST_F(ChartLooksTest, ALineOfOnePointIsDrawnWithoutAReport)
{
  std::vector<double> times{1};
  std::vector<double> values{2};
  LinePlotData data;
  data.timeLabel = "Time [s]";
  data.times = &times;
  const Kestrane::TypedConcentrationName a(Kestrane::Molecule, "A");
  data.series[a] = &values;
  container.setLinePlotData(&data);
  std::vector<Kestrane::TypedConcentrationName> items{a};
  container.setLinePlotItems(&items);
  RecordingPainter recorder;
  show();
  paint(recorder);
  EXPECT_EQ(recorder.errors(), 0);
}

} // namespace
} // namespace runsieve::test
