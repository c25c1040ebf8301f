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

TEST(ClusterRuns, ARunThatFailedDoesNotSpoilTheGroupsOfTheOthers)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  std::vector<Values> curves = {{nan, nan, nan, nan}};
  for (int run = 0; run < 20; ++run) {
    curves.push_back({0.0, 1.0 + run, 2.0 + run, 4.0 + run});
    curves.push_back({9.0 + run, 5.0, 3.0, 2.0});
  }
  for (ClusterMode const mode : {ClusterMode::Curves, ClusterMode::Magnitude, ClusterMode::Phase}) {
    std::vector<Values> const whole(curves.begin() + 1, curves.end());
    std::vector<int> wanted = clusterRuns(curveScan(whole), 0, mode, 2, 10);
    wanted.insert(wanted.begin(), 0);
    EXPECT_EQ(clusterRuns(curveScan(curves), 0, mode, 2, 10), wanted);
  }
  EXPECT_THAT(clusterSizes(clusterRuns(curveScan(curves), 0, ClusterMode::Curves, 2)), ElementsAre(21, 20));
}

TEST(ClusterRuns, StopWhenTheyAreToldTo)
{
  std::vector<Values> curves;
  for (int run = 0; run < 30; ++run) curves.push_back(wave(1 + run % 5, 0.1 * run));
  const Scan scan = curveScan(curves);
  int asked = 0;
  ComparisonWork work;
  work.cancelled = [&] { return ++asked > 4; };
  EXPECT_THROW((void)clusterRuns(scan, 0, ClusterMode::Curves, 4, 1000, work), ComparisonCancelled);
  EXPECT_LT(asked, 12) << "further starts are left out";
  work.cancelled = [] { return false; };
  EXPECT_EQ(clusterRuns(scan, 0, ClusterMode::Curves, 4, 3, work),
            clusterRuns(scan, 0, ClusterMode::Curves, 4, 3));
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

ComparisonMethod methodOf(double largestP, double smallestD)
{
  ComparisonMethod method;
  method.thresholds = {largestP, smallestD};
  return method;
}

TEST(CompareClusters, ComparesEachClusterAsASetOfItsRuns)
{
  const Scan scan =
      parameterScan({{"a", {1, 2, 3, 11, 12, 13, 21, 22, 23}}, {"b", {5, 1, 9, 4, 7, 2, 3, 8, 6}}});
  const std::vector<int> labels = {0, 0, 0, 3, 3, 3, 1, 1, -1};
  const ComparisonMethod method = methodOf(0.5, 0.2);
  const ClusterComparison found = compareClusters(scan, labels, method);
  ASSERT_EQ(found.clusters.size(), 4u);
  EXPECT_THAT(found.clusters[2], IsEmpty()) << "it has no runs";
  EXPECT_EQ(found.family, 6u) << "two parameters in three clusters";
  for (int k : {0, 1, 3}) {
    RunSet runs(9);
    for (std::size_t run = 0; run < 9; ++run) runs.set(run, labels[run] == k);
    const Comparison expected = compareParameters(scan, runs, method);
    for (ParameterComparison const& c : found.clusters[static_cast<std::size_t>(k)]) {
      auto const same = std::find_if(expected.parameters.begin(), expected.parameters.end(),
                                     [&](ParameterComparison const& e) { return e.name == c.name; });
      ASSERT_NE(same, expected.parameters.end());
      EXPECT_EQ(c.p, same->p);
      EXPECT_EQ(c.d, same->d);
      EXPECT_EQ(c.medianPassing, same->medianPassing);
      EXPECT_GE(c.pHolm, same->pHolm) << "the family is larger";
      EXPECT_EQ(c.significant, isSignificant(c.pPermutation, c.d, method.thresholds));
    }
  }
}

/// 60 runs in three clusters, of which the last has larger values of "a".
struct ThreeClusters : testing::Test
{
  Scan scan;
  std::vector<int> labels;

  ThreeClusters()
  {
    Values a;
    Values b;
    for (int run = 0; run < 60; ++run) {
      labels.push_back(run % 3);
      a.push_back((run * 37) % 60 + (run % 3 == 2 ? 60.0 : 0.0));
      b.push_back((run * 23) % 60);
    }
    scan = parameterScan({{"b", b}, {"same", Values(60, 1.0)}, {"a", a}});
  }
};

TEST_F(ThreeClusters, TheLargestDifferenceOfEachParameterIsTold)
{
  const ClusterComparison found = compareClusters(scan, labels);
  ASSERT_EQ(found.differences.size(), 2u);
  ClusterDifference const& b = found.differences[0];
  ClusterDifference const& a = found.differences[1];
  EXPECT_EQ(b.name, "b");
  EXPECT_EQ(b.parameter, 0u);
  EXPECT_EQ(a.name, "a");
  EXPECT_EQ(a.parameter, 2u);
  EXPECT_EQ(a.cluster, 2u);
  EXPECT_EQ(a.d, 1.0);
  EXPECT_DOUBLE_EQ(a.pPermutation, 1.0 / (1.0 + static_cast<double>(found.permutations)));
  EXPECT_TRUE(a.significant);
  EXPECT_GT(b.pPermutation, 0.05);
  EXPECT_FALSE(b.significant);
  EXPECT_LE(b.p, b.pPermutation) << "alone it is less of a surprise to be had";
}

TEST_F(ThreeClusters, AParameterInAClusterIsJudgedAmongAllOfThem)
{
  const ClusterComparison found = compareClusters(scan, labels);
  for (auto const& cluster : found.clusters)
    for (ParameterComparison const& c : cluster)
      EXPECT_EQ(c.pPermutation <= 0.05, std::fabs(c.d) > found.noiseFloor) << c.name;
  ClusterDifference const& a = found.differences[1];
  EXPECT_EQ(found.clusters[2].front().name, "a");
  EXPECT_EQ(found.clusters[2].front().pPermutation, a.pPermutation) << "it is the largest";
}

TEST_F(ThreeClusters, WithoutPermutationsHolmDecides)
{
  ComparisonMethod method;
  method.permutations = 0;
  method.adjustment = Adjustment::Holm;
  const ClusterComparison found = compareClusters(scan, labels, method);
  EXPECT_THAT(found.differences, IsEmpty());
  EXPECT_TRUE(found.clusters[2].front().significant);
  EXPECT_EQ(found.clusters[2].front().name, "a");
}

TEST(CompareClusters, ASingleClusterDiffersFromNothing)
{
  const ClusterComparison found = compareClusters(parameterScan({{"a", {1, 2, 3}}}), {0, 0, 0});
  ASSERT_EQ(found.clusters.size(), 1u);
  EXPECT_TRUE(std::isnan(found.clusters[0].at(0).d));
  EXPECT_THAT(found.differences, IsEmpty());
}

TEST_F(ThreeClusters, OnlyRunsThatTakePartAreCompared)
{
  // Of the first cluster the runs of low "a" take no part: without them nothing sets it apart.
  RunSet eligible(60, true);
  for (std::size_t run = 0; run < 60; run += 7) eligible.set(run, false);
  const ClusterComparison found = compareClusters(scan, labels, eligible);
  Scan others;
  std::vector<int> labelsOfOthers;
  Values a;
  Values b;
  for (std::size_t const run : eligible.members()) {
    labelsOfOthers.push_back(labels[run]);
    b.push_back(scan.parameters[0].values[run]);
    a.push_back(scan.parameters[2].values[run]);
  }
  const ClusterComparison expected =
      compareClusters(parameterScan({{"b", b}, {"same", Values(b.size(), 1.0)}, {"a", a}}), labelsOfOthers);
  EXPECT_EQ(found.compared, eligible.count());
  EXPECT_EQ(found.noiseFloor, expected.noiseFloor);
  ASSERT_EQ(found.clusters.size(), 3u);
  for (std::size_t k = 0; k < 3; ++k) {
    ASSERT_EQ(found.clusters[k].size(), expected.clusters[k].size());
    for (std::size_t i = 0; i < found.clusters[k].size(); ++i) {
      EXPECT_EQ(found.clusters[k][i].passing, expected.clusters[k][i].passing);
      EXPECT_EQ(found.clusters[k][i].d, expected.clusters[k][i].d);
      EXPECT_EQ(found.clusters[k][i].pPermutation, expected.clusters[k][i].pPermutation);
    }
  }
}

TEST_F(ThreeClusters, AClusterOfWhichNoRunTakesPartIsEmpty)
{
  RunSet eligible(60);
  for (std::size_t run = 0; run < 60; ++run) eligible.set(run, labels[run] != 1);
  const ClusterComparison found = compareClusters(scan, labels, eligible);
  ASSERT_EQ(found.clusters.size(), 3u);
  EXPECT_THAT(found.clusters[1], IsEmpty());
  EXPECT_EQ(found.clusters[0].size(), 2u);
  EXPECT_EQ(found.compared, 40u);
}

/// 60 runs in three clusters, the last of another strain than the others.
struct ClustersOfStrains : ThreeClusters
{
  ClustersOfStrains()
  {
    ScanParameter strain;
    strain.label = labelled("strain");
    strain.texts = {"WT", "mut"};
    for (int const label : labels) strain.values.push_back(label == 2 ? 1.0 : 0.0);
    scan.parameters.push_back(strain);
  }

  [[nodiscard]] static ParameterComparison const& strainIn(std::vector<ParameterComparison> const& cluster)
  {
    return *std::find_if(cluster.begin(), cluster.end(), [](auto const& c) { return c.name == "strain"; });
  }
};

TEST_F(ClustersOfStrains, TextsHaveAPInEachClusterAndCountAsTests)
{
  for (Adjustment const adjustment :
       {Adjustment::Holm, Adjustment::BenjaminiHochberg, Adjustment::None, Adjustment::Permutation}) {
    ComparisonMethod method;
    method.adjustment = adjustment;
    const ClusterComparison found = compareClusters(scan, labels, method);
    ParameterComparison const& strain = strainIn(found.clusters[2]);
    EXPECT_EQ(std::fabs(strain.d), 1.0);
    EXPECT_DOUBLE_EQ(strain.p, 1.0 / (1.0 + static_cast<double>(found.permutations)));
    EXPECT_TRUE(strain.significant) << adjustmentName(adjustment);
    EXPECT_EQ(found.family, 9u) << "three parameters in three clusters";
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
  EXPECT_THROW((void)compareClusters(scan, {0, 1, 1}, RunSet(2, true)), std::invalid_argument);
  EXPECT_THROW((void)compareClusters(scan, {0, 1}), std::invalid_argument);
  EXPECT_THROW((void)compareClusters(scan, {0, 1, 3}), std::invalid_argument);
  EXPECT_THROW((void)compareClusters(scan, {0, 1, std::numeric_limits<int>::max()}), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
