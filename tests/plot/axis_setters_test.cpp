#include "support/ShownPlot.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;

namespace runsieve::test {
namespace {

/// Ticks, log scales and the legend.
using AxisSettersTest = ShownPlot;

TEST_F(AxisSettersTest, TicksAreStoredInNewArraysAndShownAtTheRedraw)
{
  container().setXTickLabels({"low", "high"});
  container().setXTickPosition({1, 2.5});
  auto formerLabels = container().xTickLabels;
  auto formerPositions = container().xTickPositions;
  EXPECT_THAT(textsOf(container().xTickLabels), ElementsAre("low", "high"));
  EXPECT_DOUBLE_EQ(container().xTickPositions->GetValue(1), 2.5);
  EXPECT_THAT(textsOf(plot.bottom()->GetTickLabels()), testing::Not(Contains("low")));
  container().redraw();
  EXPECT_THAT(textsOf(plot.bottom()->GetTickLabels()), ElementsAre("low", "high"));
  EXPECT_DOUBLE_EQ(plot.bottom()->GetTickPositions()->GetValue(1), 2.5);
  container().setXTickLabels({"mid"});
  container().setXTickPosition({2});
  EXPECT_NE(container().xTickLabels, formerLabels);
  EXPECT_NE(container().xTickPositions, formerPositions);
  EXPECT_THAT(textsOf(formerLabels), ElementsAre("low", "high"));
}

TEST_F(AxisSettersTest, EmptyTickLabelsAreAnEmptyArrayAndNoCustomTicks)
{
  container().setXTickLabels({"low", "high"});
  container().redraw();
  container().setXTickLabels({});
  ASSERT_NE(container().xTickLabels, nullptr);
  EXPECT_EQ(container().xTickLabels->GetNumberOfValues(), 0);
  container().redraw();
  EXPECT_THAT(textsOf(plot.bottom()->GetTickLabels()), testing::Not(Contains("low")));
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.texts(), testing::Not(Contains("high")));
}

TEST_F(AxisSettersTest, TheLeftAxisBecomesLogarithmicAtOnce)
{
  container().setLogScaleY(true);
  EXPECT_TRUE(plot.left()->GetLogScale());
  EXPECT_FALSE(plot.bottom()->GetLogScale());
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_TRUE(plot.left()->GetLogScaleActive());
  container().setLogScaleY(false);
  EXPECT_FALSE(plot.left()->GetLogScale());
}

TEST_F(AxisSettersTest, TheBottomAxisTakesTheScaleOfTheSettings)
{
  plot.settings().blockSignals(true);
  plot.settings().setLogX(true);
  plot.settings().blockSignals(false);
  EXPECT_FALSE(plot.bottom()->GetLogScale());
  container().LogScaleX();
  EXPECT_TRUE(plot.bottom()->GetLogScale());
  EXPECT_FALSE(plot.left()->GetLogScale());
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_TRUE(plot.bottom()->GetLogScaleActive());
}

TEST_F(AxisSettersTest, TheLegendIsShownAtOnce)
{
  container().setShowLegend(true);
  EXPECT_TRUE(plot.chart()->GetShowLegend());
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.texts(), Contains("b"));
  container().setShowLegend(false);
  EXPECT_FALSE(plot.chart()->GetShowLegend());
}

TEST_F(AxisSettersTest, LegendAndLogarithmsLiveInTheChartAlone)
{
  container().setShowLegend(true);
  container().setLogScaleY(true);
  container().redraw();
  EXPECT_TRUE(plot.chart()->GetShowLegend());
  EXPECT_TRUE(plot.left()->GetLogScale());
  changeStyle(scatterPlot3D);
  changeStyle(scatterPlot);
  EXPECT_FALSE(plot.chart()->GetShowLegend());
  EXPECT_FALSE(plot.left()->GetLogScale());
}

} // namespace
} // namespace runsieve::test
