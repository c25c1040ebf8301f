#include "ShownClusters.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>

namespace runsieve::test {
namespace {

using app::clusterRuns;
using app::rowsOfCluster;
using app::ShapeOf;
using testing::ElementsAre;
using testing::IsEmpty;

using Sizes = std::vector<std::size_t>;

TEST(ScanClusters, CountsTheRunsOfEachCluster)
{
  EXPECT_THAT(clusterSizes({}), IsEmpty());
  EXPECT_EQ(clusterSizes({0}), Sizes({1}));
  EXPECT_EQ(clusterSizes({2, 0, 0, 2, 2}), Sizes({2, 0, 3}));
  EXPECT_EQ(clusterSizes({-1, 0, -1}), Sizes({1})) << "runs without a cluster";
}

TEST(ScanClusters, FindsTheFirstRowOfEachRunOfACluster)
{
  EXPECT_THAT(rowsOfCluster({1, 0, 1, 2}, 1, 5), ElementsAre(0, 10));
  EXPECT_THAT(rowsOfCluster({1, 0, 1, 2}, 2, 5), ElementsAre(15));
  EXPECT_THAT(rowsOfCluster({1, 0, 1, 2}, 3, 5), IsEmpty());
  EXPECT_THAT(rowsOfCluster({}, 0, 5), IsEmpty());
  EXPECT_THAT(rowsOfCluster({1, 0, 1}, 1, 3, true), ElementsAre(0, 1, 2, 6, 7, 8)) << "at all times";
  EXPECT_THAT(rowsOfCluster(std::vector<int>(3, 0), 0, 2000000000), ElementsAre(0, 2000000000, 4000000000));
}

using ScanClusterRuns = ShownClusters;

TEST_F(ScanClusterRuns, GroupsTheRunsOfTheOutputOnShow)
{
  group();
  EXPECT_GE(adjustedRandIndex(labels, shaped.shapeOfRun), 0.95);
  app::showOutput(container, 1);
  group();
  EXPECT_GE(adjustedRandIndex(labels, shaped.otherShapeOfRun), 0.95);
}

TEST_F(ScanClusterRuns, WithoutClustersToMakeThereAreNone)
{
  EXPECT_THAT(clusterRuns(container, 0, ShapeOf::Curves), IsEmpty());
  group();
  EXPECT_THAT(clusterRuns(container, 0, ShapeOf::Curves), IsEmpty()) << "not those of before";
}

TEST_F(ScanClusterRuns, GroupingAndComparingPrintNothing)
{
  testing::internal::CaptureStdout();
  group();
  compare();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ScanClusterRuns, TheRowsOfAClusterLetExactlyItsRunsSurvive)
{
  group();
  for (int k = 0; k < clusters; ++k) {
    selectCluster(k);
    std::unique_ptr<ParameterSelection> const selection(container.getSelection());
    ASSERT_TRUE(selection);
    std::vector<int> survivors(selection->selectedRuns.begin(), selection->selectedRuns.end());
    std::vector<int> expected;
    for (int run = 0; run < static_cast<int>(labels.size()); ++run)
      if (labels[static_cast<std::size_t>(run)] == k) expected.push_back(run);
    EXPECT_EQ(survivors, expected);
    app::clearSelection(container);
  }
}

TEST_F(ScanClusterRuns, TheChartsFollowTheLargestDifferenceOfAnyCluster)
{
  group();
  const ClusterComparison found = compare();
  ASSERT_EQ(container.ksStatistics.size(), 5u);
  ASSERT_EQ(found.differences.size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(container.ksStatistics[i].p, found.differences[i].pPermutation);
    EXPECT_EQ(container.ksStatistics[i].d, std::fabs(found.differences[i].d));
  }
  EXPECT_LT(container.ksStatistics[3].p, 0.01);
}

TEST_F(ScanClusterRuns, TheChartsAreNamedByDAndAdjustedP)
{
  group();
  const ClusterComparison found = compare();
  app::label(container, found);
  const std::vector<vtkChart*> charts = distributions();
  ASSERT_EQ(charts.size(), 4u);
  ClusterDifference const& k4 = found.differences[3];
  EXPECT_EQ(charts[0]->GetTitle(), app::chartTitle(k4.d, k4.pPermutation, true)) << parametersOnShow()[0];
  EXPECT_THAT(charts[3]->GetTitle(), testing::EndsWith("(n.s.)"));
}

TEST_F(ScanClusterRuns, ParametersInWhichClustersDifferComeFirst)
{
  EXPECT_THAT(parametersOnShow(), ElementsAre("k1", "k2", "k3", "k4"));
  group();
  compare();
  const std::vector<std::string> names = parametersOnShow();
  ASSERT_EQ(names.size(), 4u);
  EXPECT_THAT(std::vector<std::string>(names.begin(), names.begin() + 2), ElementsAre("k4", "k5"));
}

TEST_F(ScanClusterRuns, ComparingTakesASelectionAway)
{
  group();
  selectCluster(1);
  ASSERT_TRUE(app::hasSelection(container));
  compare();
  EXPECT_FALSE(app::hasSelection(container));
  for (vtkChart* cell : distributions())
    EXPECT_EQ(cell->GetNumberOfPlots(), 1 + clusters) << "all runs, and one curve per cluster";
}

TEST_F(ScanClusterRuns, WithoutAParameterThatVariesThereIsNothingToCompare)
{
  ScanShape shape;
  shape.runs = 6;
  shape.times = 4;
  shape.parameter = [](int, int) { return 1.0; };
  shape.bounds = {{1.0, 1.0}};
  app::showScan(container, makeScan(shape), {});
  app::showClusterDistributions(container, {0, 1, 0, 1, 0, 1}, {});
  EXPECT_THAT(container.ksStatistics, IsEmpty());
}

} // namespace
} // namespace runsieve::test
