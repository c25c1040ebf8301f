#include "support/FitDistributionScene.h"

#include <gmock/gmock.h>
#include <vtkColorTransferFunction.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <limits>

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace runsieve::test {
namespace {

/// How the score of each parameter set colours its point, and what is painted.
struct FitDistributionColorTest : FitDistributionScene
{
  [[nodiscard]] vtkColorTransferFunction* colors(int x, int y)
  {
    return vtkColorTransferFunction::SafeDownCast(points(x, y)->GetLookupTable());
  }
};

/// Position, red, green and blue of a point of a colour scale.
std::vector<double> node(vtkColorTransferFunction* colors, int index)
{
  double values[6];
  colors->GetNodeValue(index, values);
  return {values, values + 4};
}

TEST_F(FitDistributionColorTest, TheScoreColoursAllPoints)
{
  load(3);
  ASSERT_EQ(usedCells().size(), 6u);
  for (Cell const& used : usedCells()) {
    vtkPlotPoints* plot = points(used.first, used.second);
    EXPECT_TRUE(plot->GetScalarVisibility());
    EXPECT_EQ(plot->GetColorArrayName(), "score");
    EXPECT_NE(colors(used.first, used.second), nullptr);
  }
}

TEST_F(FitDistributionColorTest, TheColourScaleRunsLogarithmicallyFromBlueOverBlackToRed)
{
  load(2, {100, 4, 25});
  ASSERT_EQ(usedCells().size(), 3u);
  for (Cell const& used : usedCells()) {
    vtkColorTransferFunction* scale = colors(used.first, used.second);
    ASSERT_NE(scale, nullptr);
    ASSERT_EQ(scale->GetSize(), 3);
    EXPECT_EQ(scale->GetScale(), VTK_CTF_LOG10);
    EXPECT_THAT(node(scale, 0), ElementsAre(4, 0.1, 0.1, 0.8));
    EXPECT_THAT(node(scale, 1), ElementsAre(20, 0.1, 0.1, 0.1)) << "the geometric mean of the range";
    EXPECT_THAT(node(scale, 2), ElementsAre(100, 0.8, 0.1, 0.1));
  }
}

TEST_F(FitDistributionColorTest, ScoresDownToZeroOrBelowGetALinearScale)
{
  for (double low : {0.0, -4.0}) {
    load(2, {low, 10, 3});
    ASSERT_EQ(usedCells().size(), 3u);
    vtkColorTransferFunction* scale = colors(0, 0);
    ASSERT_NE(scale, nullptr);
    ASSERT_EQ(scale->GetSize(), 3);
    EXPECT_EQ(scale->GetScale(), VTK_CTF_LINEAR);
    EXPECT_THAT(node(scale, 0), ElementsAre(low, 0.1, 0.1, 0.8));
    EXPECT_THAT(node(scale, 1), ElementsAre((low + 10) / 2, 0.1, 0.1, 0.1));
    EXPECT_THAT(node(scale, 2), ElementsAre(10, 0.8, 0.1, 0.1));
  }
}

TEST_F(FitDistributionColorTest, ScoresThatAreNotDoubleLeaveThePointsUncoloured)
{
  loadScores(2, makeColumn<vtkFloatArray, float>("score", {1, 2, 3}), 3);
  ASSERT_EQ(usedCells().size(), 3u);
  for (Cell const& used : usedCells()) EXPECT_FALSE(points(used.first, used.second)->GetScalarVisibility());
  EXPECT_THAT(drawnPair(cell(0, 0)), Pair("Parameter: k1", "Parameter: k2"));
  RecordingPainter recorder;
  show();
  paint(recorder);
  EXPECT_EQ(recorder.markers().size(), 3u);
}

TEST_F(FitDistributionColorTest, TextsAsScoresDoNotBreakIt)
{
  loadScores(2, makeColumn<vtkStringArray, char const*>("score", {"a", "b", "c"}), 3);
  EXPECT_EQ(usedCells().size(), 3u);
  paintAll();
}

TEST_F(FitDistributionColorTest, ThePointsArePaintedInTheirColours)
{
  load(2);
  RecordingPainter recorder;
  show();
  paint(recorder);
  ASSERT_EQ(recorder.markers().size(), 3u);
  std::vector<std::vector<Point>> painted;
  for (Stroke const& stroke : recorder.markers()) {
    EXPECT_TRUE(stroke.ownColors);
    painted.push_back(stroke.points);
  }
  EXPECT_THAT(painted, UnorderedElementsAre(ElementsAre(Point(10, 20), Point(11, 21), Point(12, 22)),
                                            ElementsAre(Point(0, 10), Point(1, 11), Point(2, 12)),
                                            ElementsAre(Point(0, 20), Point(1, 21), Point(2, 22))));
}

TEST_F(FitDistributionColorTest, ScoresWithoutSpreadArePaintedAllTheSame)
{
  for (double score : {5.0, 0.0, -1.0}) {
    load(2, {score, score, score});
    RecordingPainter recorder;
    show();
    paint(recorder);
    EXPECT_EQ(recorder.markers().size(), 3u) << score;
  }
}

TEST_F(FitDistributionColorTest, UndefinedScoresDoNotBreakIt)
{
  double const nan = std::numeric_limits<double>::quiet_NaN();
  load(2, {nan, 2, 3});
  paintAll();
  load(2, {nan, nan, nan});
  paintAll();
  load(2, {1, std::numeric_limits<double>::infinity(), 3});
  paintAll();
  EXPECT_EQ(usedCells().size(), 3u);
}

TEST_F(FitDistributionColorTest, ATableWithoutRowsOrWithoutColumnsDoesNotBreakIt)
{
  load(2, {});
  paintAll();
  container.setPlotData(vtkSmartPointer<vtkTable>::New());
  draw();
  paintAll();
  EXPECT_EQ(container.getItem(), &matrix());
}

} // namespace
} // namespace runsieve::test
