#include <runsieve/core/compare/ParameterComparer.h>

#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A scan of 80 runs with a continuous parameter, one of levels and a text.
Scan mixedScan()
{
  std::mt19937 random(5);
  Values continuous;
  Values levels;
  Values strain;
  for (int run = 0; run < 80; ++run) {
    continuous.push_back(static_cast<double>(random()) / 4294967296.0);
    levels.push_back(random() % 4);
    strain.push_back(random() % 2);
  }
  Scan scan =
      parameterScan({{"k", continuous}, {"level", levels}, {"strain", strain}, {"fixed", Values(80)}});
  scan.parameters[2].texts = {"wild type", "mutant"};
  return scan;
}

void expectEqual(Comparison const& a, Comparison const& b)
{
  ASSERT_EQ(a.parameters.size(), b.parameters.size());
  EXPECT_EQ(a.passing, b.passing);
  EXPECT_EQ(a.others, b.others);
  EXPECT_EQ(a.permutations, b.permutations);
  EXPECT_EQ(a.noiseFloor, b.noiseFloor);
  EXPECT_EQ(a.family, b.family);
  EXPECT_EQ(a.warnings.size(), b.warnings.size());
  ASSERT_EQ(a.leftOut.size(), b.leftOut.size());
  for (std::size_t i = 0; i < a.parameters.size(); ++i) {
    EXPECT_EQ(a.parameters[i].name, b.parameters[i].name);
    EXPECT_EQ(a.parameters[i].d, b.parameters[i].d);
    EXPECT_EQ(a.parameters[i].p, b.parameters[i].p);
    EXPECT_EQ(a.parameters[i].pHolm, b.parameters[i].pHolm);
    EXPECT_EQ(a.parameters[i].pPermutation, b.parameters[i].pPermutation);
    EXPECT_EQ(a.parameters[i].significant, b.parameters[i].significant);
  }
}

TEST(ParameterComparer, GivesTheNumbersOfAComparisonForOneSetAfterTheOther)
{
  const Scan scan = mixedScan();
  RunSet eligible(80, true);
  eligible.set(7, false);
  const ParameterComparer comparer(scan, eligible);
  std::mt19937 random(9);
  for (int round = 0; round < 5; ++round) {
    RunSet passing(80);
    for (std::size_t run = 0; run < 80; ++run) passing.set(run, random() % 3 == 0);
    expectEqual(comparer.compare(passing), compareParameters(scan, passing, eligible));
  }
}

TEST(ParameterComparer, FollowsTheMethodOfEachComparison)
{
  const Scan scan = mixedScan();
  const ParameterComparer comparer(scan, RunSet(80, true));
  ComparisonMethod method;
  method.adjustment = Adjustment::Holm;
  method.permutations = 0;
  EXPECT_EQ(comparer.compare(runSet(80, {1, 2, 3}), method).permutations, 0u);
  EXPECT_GE(comparer.compare(runSet(80, {1, 2, 3})).permutations, 1000u);
}

TEST(ParameterComparer, KnowsWhichRunsTakePart)
{
  const Scan scan = mixedScan();
  const RunSet eligible = runSet(80, {3, 4, 5});
  EXPECT_EQ(ParameterComparer(scan, eligible).eligible(), eligible);
}

TEST(ParameterComparer, GoesOnAfterItWasMoved)
{
  const Scan scan = mixedScan();
  ParameterComparer first(scan, RunSet(80, true));
  const ParameterComparer second = std::move(first);
  EXPECT_EQ(second.compare(runSet(80, {0})).passing, 1u);
}

TEST(ParameterComparer, RefusesSetsOfOtherScans)
{
  const Scan scan = mixedScan();
  EXPECT_THROW(ParameterComparer(scan, RunSet(79, true)), std::invalid_argument);
  const ParameterComparer comparer(scan, RunSet(80, true));
  EXPECT_THROW((void)comparer.compare(RunSet(81)), std::invalid_argument);
  EXPECT_THROW((void)comparer.distribution(0, RunSet(81)), std::invalid_argument);
}

TEST(DistributionOfParameter, CountsEachRunOfTheSetOnce)
{
  const Scan scan = parameterScan({{"k", {2.0, 1.0, 2.0, 5.0, 2.0, 9.0}}});
  const ParameterComparer comparer(scan, RunSet(6, true));
  EXPECT_THAT(comparer.distribution(0, runSet(6, {0, 1, 2, 3})),
              ElementsAre(Pair(1.0, 0.25), Pair(2.0, 0.75), Pair(5.0, 1.0)));
}

TEST(DistributionOfParameter, LeavesOutRunsWithoutAValueAndThoseThatDoNotTakePart)
{
  const Scan scan = parameterScan({{"k", {2.0, nan, 3.0, 5.0}}});
  RunSet eligible(4, true);
  eligible.set(3, false);
  const ParameterComparer comparer(scan, eligible);
  EXPECT_THAT(comparer.distribution(0, RunSet(4, true)), ElementsAre(Pair(2.0, 0.5), Pair(3.0, 1.0)));
  EXPECT_THAT(comparer.distribution(0, runSet(4, {1, 3})), IsEmpty());
}

TEST(DistributionOfParameter, IsEmptyWhereNothingIsCompared)
{
  const Scan scan = mixedScan();
  const ParameterComparer comparer(scan, RunSet(80, true));
  EXPECT_THAT(comparer.distribution(3, RunSet(80, true)), IsEmpty()) << "does not vary";
  EXPECT_THAT(comparer.distribution(0, RunSet(80)), IsEmpty());
  EXPECT_THAT(comparer.distribution(17, RunSet(80, true)), IsEmpty());
}

} // namespace
} // namespace runsieve::test
