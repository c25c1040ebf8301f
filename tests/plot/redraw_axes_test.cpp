#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>

namespace runsieve::test {
namespace {

/// Ranges and ticks of the axes in the style that draws two columns.
struct RedrawAxesTest : testing::Test
{
  PlotScene plot;

  RedrawAxesTest()
  {
    plot.container.setPlotData(
        makeTable({{"time", {0, 10, 20, 40}}, {"a", {1, 2, 3, 4}}, {"b", {5, 6, 7, 8}}}));
    plot.settings().yColumns = {1};
  }

  void store(CoordinateWindow const& window)
  {
    plot.container.coordinateWindows[{plot.settings().xColumns[0], plot.settings().yColumns[0],
                                      plot.settings().getPlotStyle()}] = window;
  }
};

TEST_F(RedrawAxesTest, APairNeverTouchedGetsFivePercentOfRoomAndAnAutomaticAxis)
{
  plot.container.redraw();
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMinimum(), -2.0);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMaximum(), 42.0);
  EXPECT_EQ(plot.bottom()->GetBehavior(), vtkAxis::AUTO);
  EXPECT_EQ(plot.left()->GetBehavior(), vtkAxis::AUTO);
}

TEST_F(RedrawAxesTest, TheLeftAxisOfAnUntouchedPairStaysAsItWas)
{
  plot.left()->SetBehavior(vtkAxis::FIXED);
  plot.left()->SetUnscaledRange(-7, 7);
  plot.container.redraw();
  EXPECT_EQ(plot.left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(plot.left()->GetMinimum(), -7);
  EXPECT_EQ(plot.bottom()->GetBehavior(), vtkAxis::AUTO);
}

TEST_F(RedrawAxesTest, AColumnThatIsNotOfDoublesLeavesTheBottomAxisAsItIs)
{
  plot.container.plotData->AddColumn(makeColumn<vtkFloatArray, float>("f", {100, 200, 300, 400}));
  plot.settings().xColumns = {3};
  plot.bottom()->SetBehavior(vtkAxis::FIXED);
  plot.bottom()->SetUnscaledRange(-7, 7);
  plot.container.redraw();
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMinimum(), -7);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMaximum(), 7);
}

TEST_F(RedrawAxesTest, AnEmptyColumnGivesNoReversedAxis)
{
  plot.container.setPlotData(makeTable({{"x", {}}, {"y", {}}}));
  plot.container.redraw();
  EXPECT_LE(plot.bottom()->GetUnscaledMinimum(), plot.bottom()->GetUnscaledMaximum());
  EXPECT_LT(plot.bottom()->GetUnscaledMaximum(), 1e100);
  RecordingPainter recorder;
  plot.paint(recorder);
}

TEST_F(RedrawAxesTest, ARememberedWindowFixesBothAxes)
{
  store({1, 2, 3, 4, true});
  plot.container.redraw();
  EXPECT_EQ(plot.bottom()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMinimum(), 1);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMaximum(), 3);
  EXPECT_EQ(plot.left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(plot.left()->GetMinimum(), 2);
  EXPECT_DOUBLE_EQ(plot.left()->GetMaximum(), 4);
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMaximum(), 3) << "painting keeps it";
}

TEST_F(RedrawAxesTest, AWindowCountsBeingMarkedValidOrNot)
{
  store({1, 2, 3, 4, false});
  plot.container.redraw();
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMaximum(), 3);
}

TEST_F(RedrawAxesTest, APairWithoutAWindowAfterOneWithKeepsTheLeftAxisFixed)
{
  store({1, 2, 3, 4, true});
  plot.container.redraw();
  plot.container.setPlotCols(0, 2, 0, false);
  EXPECT_EQ(plot.bottom()->GetBehavior(), vtkAxis::AUTO);
  EXPECT_EQ(plot.left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(plot.left()->GetMaximum(), 4);
  plot.container.setPlotCols(0, 1, 0, false);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetMaximum(), 3);
}

TEST_F(RedrawAxesTest, LabelsAloneStandAtZeroOneTwo)
{
  plot.container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"none", "half", "full"});
  plot.container.redraw();
  ASSERT_EQ(plot.bottom()->GetTickPositions()->GetNumberOfTuples(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(plot.bottom()->GetTickPositions()->GetValue(i), i);
  EXPECT_EQ(plot.bottom()->GetTickLabels()->GetValue(1), "half");
}

TEST_F(RedrawAxesTest, LabelsStandAtTheirPositionsIfGiven)
{
  plot.container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"low", "high"});
  plot.container.xTickPositions = makeColumn("positions", {5.0, 35.0});
  plot.container.redraw();
  ASSERT_EQ(plot.bottom()->GetTickPositions()->GetNumberOfTuples(), 2);
  EXPECT_EQ(plot.bottom()->GetTickPositions()->GetValue(1), 35.0);
  EXPECT_EQ(plot.bottom()->GetTickLabels()->GetValue(1), "high");
}

TEST_F(RedrawAxesTest, EmptyPositionsCountAsNone)
{
  plot.container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"low", "high"});
  plot.container.xTickPositions = makeColumn("positions", {});
  plot.container.redraw();
  ASSERT_EQ(plot.bottom()->GetTickPositions()->GetNumberOfTuples(), 2);
  EXPECT_EQ(plot.bottom()->GetTickPositions()->GetValue(1), 1.0);
}

TEST_F(RedrawAxesTest, EmptyLabelsAreNoCustomTicks)
{
  plot.container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {});
  plot.container.xTickPositions = makeColumn("positions", {5.0, 35.0});
  plot.container.redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_GT(plot.bottom()->GetTickPositions()->GetNumberOfTuples(), 2);
}

TEST_F(RedrawAxesTest, TicksWithoutLabelsAgainAreNumbers)
{
  plot.container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"none", "half"});
  plot.container.redraw();
  plot.container.xTickLabels = nullptr;
  plot.container.redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.texts(), testing::Not(testing::Contains("half")));
}

TEST_F(RedrawAxesTest, ALogarithmicBottomAxisIsAskedFor)
{
  plot.container.setPlotData(makeTable({{"x", {1, 10, 100}}, {"y", {1, 2, 3}}}));
  plot.settings().setLogX(true);
  EXPECT_TRUE(plot.bottom()->GetLogScale());
  EXPECT_FALSE(plot.left()->GetLogScale());
  plot.settings().setLogX(false);
  EXPECT_FALSE(plot.bottom()->GetLogScale());
}

} // namespace
} // namespace runsieve::test
