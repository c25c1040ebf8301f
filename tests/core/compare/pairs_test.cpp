#include <runsieve/core/compare/Pairs.h>

#include "core/inference/UniformDraws.h"
#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A scan of independent parameters x, y, z.
struct DrawnScan
{
  explicit DrawnScan(std::size_t runs = 600, std::uint64_t seed = 7)
  {
    const std::vector<Column> drawn = uniformColumns(3, runs, seed);
    scan = parameterScan({{"x", drawn[0]}, {"y", drawn[1]}, {"z", drawn[2]}});
  }

  Values const& operator[](std::size_t parameter) const { return scan.parameters[parameter].values; }

  template <class Passes> RunSet where(Passes const& passes) const
  {
    RunSet set(scan.runs.size());
    for (std::size_t run = 0; run < set.runs(); ++run) set.set(run, passes(run));
    return set;
  }

  Scan scan;
};

std::vector<std::string> kindsOf(PairComparisons const& found)
{
  std::vector<std::string> kinds;
  for (ComparisonWarning const& warning : found.warnings) kinds.push_back(warning.kind);
  return kinds;
}

std::string warningOf(PairComparisons const& found, std::string const& kind)
{
  for (ComparisonWarning const& warning : found.warnings)
    if (warning.kind == kind) return warning.text;
  return "";
}

ParameterPair const& pairOf(PairComparisons const& found, std::string const& first, std::string const& second)
{
  for (ParameterPair const& pair : found.pairs)
    if (pair.first == first && pair.second == second) return pair;
  throw std::logic_error("no such pair");
}

TEST(ComparePairs, AGateOnASumIsAnInteraction)
{
  const DrawnScan drawn;
  const PairComparisons found =
      comparePairs(drawn.scan, drawn.where([&](std::size_t i) { return drawn[0][i] + drawn[2][i] < 0.8; }));
  ASSERT_EQ(found.pairs.size(), 3u);
  ParameterPair const& first = found.pairs.front();
  EXPECT_EQ(first.first, "x");
  EXPECT_EQ(first.second, "z");
  EXPECT_EQ(first.firstParameter, 0u);
  EXPECT_EQ(first.secondParameter, 2u);
  EXPECT_LT(first.rPassing, -0.35);
  EXPECT_LT(first.rPassing, -found.noiseFloor);
  EXPECT_FALSE(first.byDesign);
  EXPECT_EQ(first.expected, 0.0);
  EXPECT_EQ(first.p, 1.0 / 1001.0);
  EXPECT_TRUE(first.significant);
  EXPECT_EQ(first.passing, found.passing);
  EXPECT_EQ(first.others, 600 - found.passing);
  for (std::size_t i : {1, 2}) EXPECT_FALSE(found.pairs[i].significant) << found.pairs[i].second;
}

TEST(ComparePairs, EachParameterGatedOnItsOwnIsNone)
{
  const DrawnScan drawn(2000);
  const PairComparisons found = comparePairs(
      drawn.scan, drawn.where([&](std::size_t i) { return drawn[0][i] < 0.5 && drawn[1][i] < 0.5; }));
  ParameterPair const& pair = pairOf(found, "x", "y");
  EXPECT_GT(std::fabs(pair.difference()), 0.25) << "the others are what an L is left of";
  EXPECT_GT(pair.p, 0.05);
  EXPECT_FALSE(pair.significant);
}

TEST(ComparePairs, CorrelationByDesignThatSelectionLeavesIsNone)
{
  const std::size_t runs = 1500;
  const std::vector<Column> drawn = uniformColumns(3, runs, 3);
  const Values& x = drawn[0];
  Values y;
  for (std::size_t i = 0; i < runs; ++i) y.push_back(x[i] + 0.7 * drawn[1][i]);
  const Scan scan = parameterScan({{"x", x}, {"y", y}, {"z", drawn[2]}});
  RunSet passing(runs);
  for (std::size_t i = 0; i < runs; ++i) passing.set(i, x[i] < 0.6);
  const PairComparisons found = comparePairs(scan, passing);
  ParameterPair const& pair = pairOf(found, "x", "y");
  EXPECT_TRUE(pair.byDesign);
  EXPECT_GT(pair.rAll, 0.7);
  EXPECT_NEAR(pair.expected, pair.rPassing, 0.05);
  EXPECT_FALSE(pair.significant);
  EXPECT_THAT(warningOf(found, "correlated by design"),
              HasSubstr("correlated by design: \"x\" and \"y\" (0."));
}

TEST(ComparePairs, SignificantIsBeyondTheNoiseFloor)
{
  const DrawnScan drawn(300, 5);
  for (double const strength : {0.0, 0.05, 0.1, 0.2, 0.4}) {
    const RunSet passing = drawn.where(
        [&](std::size_t i) { return drawn[0][i] < 0.4 + strength * (drawn[1][i] - drawn[2][i]); });
    const PairComparisons found = comparePairs(drawn.scan, passing);
    for (ParameterPair const& pair : found.pairs)
      EXPECT_EQ(std::fabs(pair.rPassing) > found.noiseFloor, pair.significant) << strength << pair.second;
  }
}

TEST(ComparePairs, TheNumberOfThreadsChangesNothing)
{
  const DrawnScan drawn;
  const RunSet passing = drawn.where([&](std::size_t i) { return drawn[0][i] * drawn[1][i] > 0.3; });
  ComparisonWork work;
  work.threads = 1;
  const PairComparisons one = comparePairs(drawn.scan, passing, {}, work);
  work.threads = 3;
  const PairComparisons three = comparePairs(drawn.scan, passing, {}, work);
  EXPECT_EQ(one.noiseFloor, three.noiseFloor);
  for (std::size_t i = 0; i < one.pairs.size(); ++i) {
    EXPECT_EQ(one.pairs[i].statistic, three.pairs[i].statistic);
    EXPECT_EQ(one.pairs[i].p, three.pairs[i].p);
  }
}

TEST(ComparePairs, TheSeedDecidesThePermutations)
{
  const DrawnScan drawn;
  const RunSet passing = drawn.where([&](std::size_t i) { return drawn[0][i] < 0.2; });
  ComparisonMethod method;
  const double floor = comparePairs(drawn.scan, passing, method).noiseFloor;
  EXPECT_EQ(comparePairs(drawn.scan, passing, method).noiseFloor, floor);
  method.seed = 2;
  EXPECT_NE(comparePairs(drawn.scan, passing, method).noiseFloor, floor);
}

TEST(ComparePairs, APNearTheThresholdTakesMorePermutations)
{
  const DrawnScan drawn;
  const RunSet passing = drawn.where([&](std::size_t i) { return drawn[0][i] < 0.2; });
  ComparisonMethod method;
  const PairComparisons first = comparePairs(drawn.scan, passing, method);
  ASSERT_TRUE(first.isSettled);
  EXPECT_EQ(first.permutations, 1000u);
  method.thresholds.largestP = first.pairs.front().p;
  EXPECT_EQ(comparePairs(drawn.scan, passing, method).permutations, 10000u);
  method.mostPermutations = 1000;
  const PairComparisons few = comparePairs(drawn.scan, passing, method);
  EXPECT_EQ(few.permutations, 1000u);
  EXPECT_FALSE(few.isSettled);
  EXPECT_TRUE(few.pairs.front().significant) << "the threshold itself is significant";
}

TEST(ComparePairs, GatesThatWereTriedMultiplyP)
{
  const DrawnScan drawn;
  const RunSet passing = drawn.where([&](std::size_t i) { return drawn[0][i] + drawn[1][i] < 0.8; });
  ComparisonMethod method;
  method.mostPermutations = method.permutations;
  const PairComparisons once = comparePairs(drawn.scan, passing, method);
  method.gatesTried = 10;
  const PairComparisons often = comparePairs(drawn.scan, passing, method);
  EXPECT_DOUBLE_EQ(often.pairs.front().p, 10.0 * once.pairs.front().p);
  EXPECT_GT(often.noiseFloor, once.noiseFloor);
  EXPECT_EQ(often.pairs.back().p, 1.0);
  method.gatesTried = 100;
  EXPECT_TRUE(std::isnan(comparePairs(drawn.scan, passing, method).noiseFloor))
      << "1 of 1001 is more than 0.05 %";
}

TEST(ComparePairs, TextsAndWhatDoesNotVaryAreLeftOut)
{
  Scan scan = parameterScan({{"strain", {0, 1, 0, 1, 0}},
                             {"k", {1, 2, 3, 4, 5}},
                             {"same", {2, 2, 2, nan, 2}},
                             {"m", {5, 3, 4, 1, 2}}});
  scan.parameters[0].texts = {"wild type", "mutant"};
  const PairComparisons found = comparePairs(scan, runSet(5, {0, 1, 2}));
  ASSERT_EQ(found.pairs.size(), 1u);
  EXPECT_EQ(found.pairs[0].firstParameter, 1u);
  EXPECT_EQ(found.pairs[0].secondParameter, 3u);
  ASSERT_EQ(found.leftOut.size(), 2u);
  EXPECT_EQ(found.leftOut[0].name, "strain");
  EXPECT_EQ(found.leftOut[0].reason, "is text");
  EXPECT_EQ(found.leftOut[1].name, "same");
  EXPECT_EQ(found.leftOut[1].reason, "does not vary");
  EXPECT_EQ(found.leftOut[1].parameter, 2u);
}

TEST(ComparePairs, FewerThanTwoNumberParametersAreNoPair)
{
  Scan scan = parameterScan({{"k", {1, 2, 3}}, {"strain", {0, 1, 0}}});
  scan.parameters[1].texts = {"wild type", "mutant"};
  const PairComparisons one = comparePairs(scan, runSet(3, {0}));
  EXPECT_THAT(one.pairs, IsEmpty());
  EXPECT_EQ(warningOf(one, "few parameters"), "only one number parameter varies");
  scan.parameters[0].values = {1, 1, 1};
  EXPECT_EQ(warningOf(comparePairs(scan, runSet(3, {0})), "few parameters"), "no number parameter varies");
}

TEST(ComparePairs, WarnsOfSmallGroups)
{
  const DrawnScan drawn(40);
  const PairComparisons few = comparePairs(drawn.scan, runSet(40, {1, 5, 9}));
  EXPECT_EQ(warningOf(few, "small group"), "only 3 runs pass");
  EXPECT_THAT(kindsOf(comparePairs(drawn.scan, drawn.where([](std::size_t i) { return i % 2 == 0; }))),
              testing::Not(Contains("small group")));
}

TEST(ComparePairs, WhatIsConstantInThePassingRunsHasNoCorrelation)
{
  DrawnScan drawn(60);
  for (std::size_t run = 0; run < 60; ++run) drawn.scan.parameters[1].values[run] = run < 30 ? 2.0 : 3.0;
  const PairComparisons found = comparePairs(drawn.scan, drawn.where([](std::size_t i) { return i < 30; }));
  EXPECT_EQ(warningOf(found, "constant in passing runs"), "\"y\" has one value in the runs that pass");
  EXPECT_EQ(found.pairs.front().second, "z");
  for (std::size_t i : {1, 2}) {
    EXPECT_TRUE(std::isnan(found.pairs[i].rPassing));
    EXPECT_TRUE(std::isnan(found.pairs[i].p));
    EXPECT_FALSE(found.pairs[i].significant);
  }
}

TEST(ComparePairs, WithoutPassingRunsOrWithoutOthersThereIsNoP)
{
  const DrawnScan drawn(50);
  for (bool const all : {false, true}) {
    const PairComparisons found = comparePairs(drawn.scan, RunSet(50, all));
    ASSERT_EQ(found.pairs.size(), 3u);
    EXPECT_EQ(found.permutations, 0u);
    EXPECT_TRUE(std::isnan(found.noiseFloor));
    for (ParameterPair const& pair : found.pairs) {
      EXPECT_TRUE(std::isnan(pair.p));
      EXPECT_EQ(std::isnan(pair.rPassing), !all);
      EXPECT_EQ(std::isnan(pair.rOthers), all);
      EXPECT_FALSE(std::isnan(pair.rAll));
    }
  }
}

TEST(ComparePairs, AScanWithoutRunsHasNoPairs)
{
  EXPECT_THAT(comparePairs(parameterScan({{"a", {}}, {"b", {}}}), RunSet(0)).pairs, IsEmpty());
}

TEST(ComparePairs, MissingAndInfiniteValues)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Scan scan =
      parameterScan({{"k", {1, 2, nan, 4, infinity, 6, 7, 8}}, {"m", {-infinity, 2, 3, nan, 5, 6, 8, 7}}});
  const PairComparisons found = comparePairs(scan, runSet(8, {0, 1, 2, 3, 4}));
  ASSERT_EQ(found.pairs.size(), 1u);
  EXPECT_EQ(found.pairs[0].passing, 3u);
  EXPECT_EQ(found.pairs[0].others, 3u);
  EXPECT_DOUBLE_EQ(found.pairs[0].rPassing, 1.0) << "infinite values are the first and the last";
  EXPECT_DOUBLE_EQ(found.pairs[0].rOthers, 0.5);
}

TEST(ComparePairs, RunsThatTakeNoPartDoNotCount)
{
  DrawnScan drawn(200);
  const RunSet passing = drawn.where([&](std::size_t i) { return i >= 100 || drawn[0][i] < 0.5; });
  const RunSet eligible = drawn.where([](std::size_t i) { return i < 100; });
  const PairComparisons all = comparePairs(drawn.scan, passing, eligible);
  Scan half = parameterScan({{"x", {drawn[0].begin(), drawn[0].begin() + 100}},
                             {"y", {drawn[1].begin(), drawn[1].begin() + 100}},
                             {"z", {drawn[2].begin(), drawn[2].begin() + 100}}});
  RunSet ofHalf(100);
  for (std::size_t i = 0; i < 100; ++i) ofHalf.set(i, passing.contains(i));
  const PairComparisons few = comparePairs(half, ofHalf);
  EXPECT_EQ(all.passing, few.passing);
  EXPECT_EQ(all.others, few.others);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(all.pairs[i].rPassing, few.pairs[i].rPassing);
    EXPECT_EQ(all.pairs[i].p, few.pairs[i].p);
  }
}

TEST(ComparePairs, CanBeStopped)
{
  const DrawnScan drawn;
  ComparisonWork work;
  work.cancelled = [] { return true; };
  EXPECT_THROW((void)comparePairs(drawn.scan, runSet(600, {1, 2, 3, 4}), {}, work), ComparisonCancelled);
}

TEST(ComparePairs, MethodsAndSetsThatDoNotFitAreRefused)
{
  const DrawnScan drawn(20);
  ComparisonMethod method;
  method.adjustment = Adjustment::None;
  method.permutations = 0;
  EXPECT_THROW((void)comparePairs(drawn.scan, runSet(20, {1}), method), std::invalid_argument);
  EXPECT_THROW((void)comparePairs(drawn.scan, RunSet(19)), std::invalid_argument);
}

TEST(ComparePairs, TooManyParametersAreRefused)
{
  std::vector<std::pair<std::string, Values>> parameters;
  for (std::size_t i = 0; i <= mostPairedParameters; ++i)
    parameters.emplace_back("k" + std::to_string(i), Values{1.0, 2.0, 3.0});
  EXPECT_THROW((void)comparePairs(parameterScan(parameters), runSet(3, {0, 1})), std::length_error);
}

TEST(ComparePairs, AtAThresholdOf0Or1NothingHasToBeDecided)
{
  const DrawnScan drawn(200);
  const RunSet half = drawn.where([](std::size_t run) { return run % 2 == 0; });
  for (double const threshold : {0.0, 1.0}) {
    ComparisonMethod method;
    method.thresholds.largestP = threshold;
    const PairComparisons found = comparePairs(drawn.scan, half, method);
    EXPECT_EQ(found.permutations, 1000u) << threshold;
    EXPECT_TRUE(found.isSettled) << threshold;
    EXPECT_EQ(found.pairs[0].significant, threshold == 1.0);
  }
}

} // namespace
} // namespace runsieve::test
