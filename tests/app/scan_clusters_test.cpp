#include "ShownClusters.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>

namespace runsieve::test {
namespace {

using app::clusterRuns;
using app::clusterSizes;
using app::compareClusters;
using app::RankedParameter;
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

bool same(RankedParameter const& a, RankedParameter const& b)
{
  return a.name == b.name && a.p == b.p && a.d == b.d && a.medianPassing == b.medianPassing &&
         a.medianOthers == b.medianOthers && a.significant == b.significant;
}

/// The entry of a parameter; its name must be among them.
RankedParameter const& entryOf(std::string const& name, std::vector<RankedParameter> const& ranked)
{
  return *std::find_if(ranked.begin(), ranked.end(), [&](auto const& r) { return r.name == name; });
}

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

TEST_F(ScanClusterRuns, ComparesEachClusterAsASelectionOfItsRuns)
{
  group();
  const auto comparisons = compare();
  ASSERT_EQ(comparisons.size(), 3u);
  for (int k = 0; k < clusters; ++k) {
    PlotScene other;
    app::showScan(other.container, shaped.scan, {});
    app::selectRows(other.container, rowsOfCluster(labels, k, ShapedScan::times));
    const std::vector<RankedParameter> expected = app::rankedParameters(other.container);
    std::vector<RankedParameter> const& found = comparisons[static_cast<std::size_t>(k)];
    ASSERT_EQ(expected.size(), 5u);
    EXPECT_TRUE(std::equal(found.begin(), found.end(), expected.begin(), expected.end(), same)) << k;
  }
}

TEST_F(ScanClusterRuns, ThePValueIsTheSmallestOfAllClustersTimesTheirNumber)
{
  group();
  const auto comparisons = compare();
  ASSERT_EQ(container.ksStatistics.size(), 5u);
  int capped = 0;
  for (std::size_t i = 0; i < 5; ++i) {
    const std::string name = "k" + std::to_string(i + 1);
    double smallest = 1.0;
    for (auto const& ranked : comparisons) smallest = std::min(smallest, entryOf(name, ranked).p);
    EXPECT_DOUBLE_EQ(container.ksStatistics[i].p, std::min(1.0, 3.0 * smallest)) << name;
    capped += 3.0 * smallest > 1.0;
  }
  EXPECT_LT(container.ksStatistics[3].p, 1e-6);
  group(20);
  const auto finer = compare();
  ASSERT_EQ(finer.size(), clusterSizes(labels).size());
  for (auto const& statistics : container.ksStatistics) {
    EXPECT_LE(statistics.p, 1.0);
    capped += statistics.p == 1.0;
  }
  EXPECT_GT(capped, 0) << "the limit of 1 has been of use";
}

TEST_F(ScanClusterRuns, TheStatisticIsThatOfTheClusterThatDiffersMost)
{
  group();
  const auto comparisons = compare();
  RankedParameter best = entryOf("k4", comparisons[0]);
  for (auto const& ranked : comparisons)
    if (entryOf("k4", ranked).p < best.p) best = entryOf("k4", ranked);
  EXPECT_EQ(container.ksStatistics[3].d, best.d);
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

TEST_F(ScanClusterRuns, TheThresholdsOfThePlotCount)
{
  app::ViewOptions options;
  options.pThreshold = 0.5;
  options.ksThreshold = 0.3;
  showScan(options);
  group();
  int bySize = 0;
  for (auto const& ranked : compare())
    for (RankedParameter const& parameter : ranked) {
      EXPECT_EQ(parameter.significant, parameter.p <= 0.5 && parameter.d >= 0.3) << parameter.name;
      bySize += parameter.p <= 0.5 && parameter.d < 0.3;
    }
  EXPECT_GT(bySize, 0) << "the second threshold has been of use";
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
  EXPECT_THAT(compareClusters(container, {0, 1, 0, 1, 0, 1}), IsEmpty());
}

} // namespace
} // namespace runsieve::test
