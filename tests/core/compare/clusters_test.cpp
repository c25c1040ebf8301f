#include <runsieve/core/compare/Clusters.h>

#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Sizes = std::vector<std::size_t>;

constexpr double pi = 3.14159265358979323846;

/// A wave with some cycles in 16 times, from a start on.
Values wave(int cycles, double start)
{
  Values values;
  for (int t = 0; t < 16; ++t) values.push_back(0.1 + std::sin(start + 2 * pi * cycles * t / 16));
  return values;
}

TEST(ClusterRuns, GroupsTimeCoursesByTheirShapeNotTheirSize)
{
  const Scan scan =
      curveScan({{0, 1, 2, 4}, {9, 5, 3, 2}, {100, 102, 104, 108}, {8, 4, 2, 1}, {0, 10, 21, 40}});
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Curves, 2), ElementsAre(0, 1, 0, 1, 0));
}

TEST(ClusterRuns, GroupsTheOutputThatIsNamed)
{
  Scan scan = curveScan({{0, 1, 2}, {0, 1, 2}, {2, 1, 0}});
  const Values other = {5, 4, 1, 1, 4, 5, 9, 7, 0};
  std::copy(other.begin(), other.end(), scan.addOutput(labelled("B")));
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Curves, 2), ElementsAre(0, 0, 1));
  EXPECT_THAT(clusterRuns(scan, 1, ClusterMode::Curves, 2), ElementsAre(0, 1, 0));
  EXPECT_THROW((void)clusterRuns(scan, 2, ClusterMode::Curves, 2), std::out_of_range);
}

TEST(ClusterRuns, TheMagnitudeTellsFrequenciesApartWhereverTheyStart)
{
  const Scan scan =
      curveScan({wave(1, 0.3), wave(3, 1.0), wave(1, 2.0), wave(3, 5.0), wave(3, 2.5), wave(1, 4)});
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Magnitude, 2), ElementsAre(0, 1, 0, 1, 1, 0));
}

TEST(ClusterRuns, ThePhaseTellsPulsesAtDifferentTimesApart)
{
  std::vector<Values> pulses;
  for (int place : {1, 2, 4, 4, 1, 2, 1}) {
    Values curve;
    for (int t = 0; t < 7; ++t) curve.push_back(t == place ? 1.0 : 0.001 * t * (place + 1));
    pulses.push_back(curve);
  }
  EXPECT_THAT(clusterRuns(curveScan(pulses), 0, ClusterMode::Phase, 3, 1), ElementsAre(0, 1, 2, 2, 0, 1, 0));
}

TEST(ClusterRuns, RunsWithoutAShapeJoinTheFirstCluster)
{
  const Scan scan =
      curveScan({{0, 1, 2, 4}, {9, 5, 3, 2}, {3, 3, 3, 3}, {1, std::nan(""), 0, 2}, {8, 4, 2, 1}});
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Curves, 2, 1), ElementsAre(0, 1, 0, 0, 1));
}

TEST(ClusterRuns, ThereAreNoMoreClustersThanRuns)
{
  const Scan scan = curveScan({{0, 1, 2}, {2, 1, 0}});
  for (ClusterMode mode : {ClusterMode::Curves, ClusterMode::Phase, ClusterMode::Magnitude})
    for (int label : clusterRuns(scan, 0, mode, 1000000000)) EXPECT_LT(label, 2);
}

TEST(ClusterRuns, BelowOneClusterNothingIsGrouped)
{
  const Scan scan = curveScan({{0, 1, 2}, {2, 1, 0}});
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Curves, 0), IsEmpty());
  EXPECT_THAT(clusterRuns(scan, 0, ClusterMode::Phase, -1), IsEmpty());
}

TEST(ClusterRuns, ValuesThatAreNoNumbersAreNoTrouble)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Scan scan = curveScan({{1, 2, 4}, {4, std::nan(""), 2}, {infinity, 2, 3}, {5, 2, -infinity}});
  for (ClusterMode mode : {ClusterMode::Curves, ClusterMode::Phase, ClusterMode::Magnitude})
    EXPECT_EQ(clusterRuns(scan, 0, mode, 2).size(), 4u);
}

TEST(ClusterStarts, AreManyForFewRuns)
{
  EXPECT_EQ(clusterStarts(0), 10);
  EXPECT_EQ(clusterStarts(20000), 10);
  EXPECT_EQ(clusterStarts(50000), 4);
  EXPECT_EQ(clusterStarts(1000000), 1);
}

TEST(ClusterSizes, CountsTheRunsOfEachCluster)
{
  EXPECT_THAT(clusterSizes({}), IsEmpty());
  EXPECT_EQ(clusterSizes({2, 0, 0, 2, 2}), Sizes({2, 0, 3}));
  EXPECT_EQ(clusterSizes({-1, 0, -1}), Sizes({1})) << "runs without a cluster";
}

TEST(CompareClusters, ComparesEachClusterAsASetOfItsRuns)
{
  const Scan scan =
      parameterScan({{"a", {1, 2, 3, 11, 12, 13, 21, 22, 23}}, {"b", {5, 1, 9, 4, 7, 2, 3, 8, 6}}});
  const std::vector<int> labels = {0, 0, 0, 3, 3, 3, 1, 1, -1};
  const Thresholds thresholds{0.5, 0.2};
  const ClusterComparison found = compareClusters(scan, labels, thresholds);
  ASSERT_EQ(found.clusters.size(), 4u);
  EXPECT_THAT(found.clusters[2], IsEmpty()) << "it has no runs";
  for (int k : {0, 1, 3}) {
    RunSet runs(9);
    for (std::size_t run = 0; run < 9; ++run) runs.set(run, labels[run] == k);
    const Comparison expected = compareParameters(scan, runs, thresholds);
    auto const& cluster = found.clusters[static_cast<std::size_t>(k)];
    ASSERT_EQ(cluster.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(cluster[i].name, expected.parameters[i].name);
      EXPECT_EQ(cluster[i].p, expected.parameters[i].p);
      EXPECT_EQ(cluster[i].d, expected.parameters[i].d);
      EXPECT_EQ(cluster[i].significant, expected.parameters[i].significant);
    }
  }
}

TEST(CompareClusters, TellsWhatIsLeftOut)
{
  const Scan scan = parameterScan({{"a", {1, 1, 1}}, {"b", {1, 2, 3}}});
  const ClusterComparison found = compareClusters(scan, {0, 1, 1});
  ASSERT_EQ(found.leftOut.size(), 1u);
  EXPECT_EQ(found.leftOut[0].name, "a");
  ASSERT_EQ(found.differences.size(), 1u);
  EXPECT_EQ(found.differences[0].name, "b");
}

TEST(CompareClusters, LabelsOfAnotherScanAreRefused)
{
  const Scan scan = parameterScan({{"a", {1, 2, 3}}});
  EXPECT_THROW((void)compareClusters(scan, {0, 1}), std::invalid_argument);
  EXPECT_THROW((void)compareClusters(scan, {0, 1, 3}), std::invalid_argument);
  EXPECT_THROW((void)compareClusters(scan, {0, 1, std::numeric_limits<int>::max()}), std::invalid_argument);
}

TEST(StrongestDifferences, HoldTheSmallestPOfAllClustersTimesTheirNumber)
{
  auto entry = [](std::string const& name, double p, double d, std::size_t parameter) {
    return ParameterComparison{name, p, d, 0.0, 0.0, false, parameter};
  };
  const auto found = strongestDifferences({{entry("b", 0.2, 0.5, 4), entry("a", 0.6, 0.1, 1)},
                                           {},
                                           {entry("a", 0.5, 0.2, 1), entry("b", 0.2, 0.7, 4)}});
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].name, "a");
  EXPECT_EQ(found[0].p, 1.0) << "no more than 1";
  EXPECT_EQ(found[0].d, 0.2);
  EXPECT_EQ(found[1].name, "b");
  EXPECT_DOUBLE_EQ(found[1].p, 0.6) << "an empty cluster counts";
  EXPECT_EQ(found[1].d, 0.7) << "the largest of equal p";
  EXPECT_EQ(found[1].parameter, 4u);
}

} // namespace
} // namespace runsieve::test
