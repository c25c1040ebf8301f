#include <runsieve/core/compare/StabilityOfComparison.h>

#include "ParameterScan.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using testing::HasSubstr;

constexpr double none = std::numeric_limits<double>::quiet_NaN();

/// Numbers that are spread evenly over 0..1 and know nothing of each other.
Values spread(std::size_t runs, std::uint64_t seed)
{
  Values values(runs);
  std::uint64_t state = seed * 7919 + 1;
  for (double& value : values) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    value = static_cast<double>(state >> 33) / static_cast<double>(std::uint64_t{1} << 31);
  }
  return values;
}

RunSet firstRuns(std::size_t passing, std::size_t runs)
{
  RunSet set(runs);
  for (std::size_t run = 0; run < passing; ++run) set.set(run);
  return set;
}

/// The first quarter of the runs passes. Of "clear" it has the lower tenth, of "faint" all but an upper part.
Scan scanOf(std::size_t runs)
{
  Values clear = spread(runs, 1);
  Values faint = spread(runs, 2);
  for (std::size_t run = 0; run < runs / 4; ++run) {
    clear[run] *= 0.1;
    faint[run] *= 0.77;
  }
  return parameterScan(
      {{"noise", spread(runs, 3)}, {"clear", clear}, {"even", spread(runs, 4)}, {"faint", faint}});
}

StabilityMethod quick()
{
  StabilityMethod method;
  method.resamples = 200;
  method.subsamples = 100;
  return method;
}

struct Found
{
  Comparison comparison;
  ComparisonStability stability;
};

Found found(Scan const& scan, RunSet const& passing, ComparisonMethod const& comparing = {},
            StabilityMethod const& method = quick())
{
  const RunSet all(scan.runs.size(), true);
  Found result{compareParameters(scan, passing, all, comparing), {}};
  result.stability = stabilityOfComparison(scan, passing, all, result.comparison, method);
  return result;
}

Found quarterPasses(std::size_t runs)
{
  return found(scanOf(runs), firstRuns(runs / 4, runs));
}

} // namespace

TEST(StabilityOfComparison, FollowsTheOrderOfTheComparison)
{
  const Found f = quarterPasses(400);
  ASSERT_EQ(f.comparison.parameters[0].name, "clear");
  ASSERT_EQ(f.comparison.parameters[1].name, "faint");
  for (std::size_t i = 0; i < f.comparison.parameters.size(); ++i) {
    const double d = std::fabs(f.comparison.parameters[i].d);
    EXPECT_LE(f.stability.parameters[i].low, d);
    EXPECT_GE(f.stability.parameters[i].high, d);
    EXPECT_NEAR(f.stability.sizes.back().parameters[i].median, d, 1e-14) << "all runs are one sample";
    EXPECT_EQ(f.stability.sizes.back().parameters[i].low, f.stability.sizes.back().parameters[i].high);
  }
  EXPECT_GT(f.stability.parameters[0].low, 0.7);
  EXPECT_EQ(f.stability.parameters[0].topShare, 1.0);
}

TEST(StabilityOfComparison, CountsTheTopOfAsManyAsAreSignificantUnlessToldOtherwise)
{
  const Found f = quarterPasses(400);
  ASSERT_TRUE(f.comparison.parameters[1].significant);
  ASSERT_FALSE(f.comparison.parameters[2].significant);
  EXPECT_EQ(f.stability.method.top, 2u);
  StabilityMethod one = quick();
  one.top = 1;
  const Found told = found(scanOf(400), firstRuns(100, 400), {}, one);
  EXPECT_EQ(told.stability.method.top, 1u);
  EXPECT_EQ(told.stability.parameters[0].topShare, 1.0);
  EXPECT_EQ(told.stability.parameters[1].topShare, 0.0);
}

TEST(StabilityOfComparison, CountsOneAmongTheTopWhereNothingIsSignificant)
{
  const Scan scan = parameterScan({{"a", spread(100, 5)}, {"b", spread(100, 6)}});
  const Found f = found(scan, firstRuns(30, 100));
  EXPECT_EQ(f.stability.method.top, 1u);
  EXPECT_EQ(f.stability.parameters[0].topShare + f.stability.parameters[1].topShare, 1.0);
  EXPECT_EQ(f.stability.verdict, EnoughRuns::NothingDiffers);
  EXPECT_THAT(f.stability.verdictText, HasSubstr("no parameter is significant; d below the noise floor of 0."));
}

TEST(StabilityOfComparison, TakesSharesOfPassingRunsAndOfOthers)
{
  const Found f = quarterPasses(400);
  ASSERT_EQ(f.stability.sizes.size(), 4u);
  EXPECT_EQ(f.stability.sizes[0].share, 0.1);
  EXPECT_EQ(f.stability.sizes[0].passing, 10u);
  EXPECT_EQ(f.stability.sizes[0].others, 30u);
  EXPECT_EQ(f.stability.sizes[3].passing, 100u);
  for (std::size_t i = 1; i < 4; ++i)
    EXPECT_LT(f.stability.sizes[i].noiseFloor, f.stability.sizes[i - 1].noiseFloor);
}

TEST(StabilityOfComparison, HasTheNoiseFloorOfTheComparisonAtAllRuns)
{
  const Found f = quarterPasses(400);
  EXPECT_EQ(f.stability.sizes.back().noiseFloor, f.comparison.noiseFloor);
  ComparisonMethod holm;
  holm.adjustment = Adjustment::Holm;
  holm.permutations = 0;
  const Found own = found(scanOf(400), firstRuns(100, 400), holm);
  ASSERT_TRUE(std::isnan(own.comparison.noiseFloor));
  EXPECT_NEAR(own.stability.sizes.back().noiseFloor, f.comparison.noiseFloor, 0.04) << "of 100 shuffles";
}

TEST(StabilityOfComparison, TellsFromWhichShareOnAllSignificantOnesAreBeyondTheNoise)
{
  const Found f = quarterPasses(4000);
  EXPECT_EQ(f.stability.verdict, EnoughRuns::Enough);
  EXPECT_THAT(f.stability.verdictText, HasSubstr("all 2 significant parameters are beyond the noise floor"));
  std::size_t first = 4;
  while (first > 0 && f.stability.sizes[first - 1].isBeyond(0) && f.stability.sizes[first - 1].isBeyond(1))
    --first;
  ASSERT_LT(first, 3u);
  const char* const shares[] = {"10 %", "25 %", "50 %"};
  EXPECT_THAT(f.stability.verdictText, HasSubstr(shares[first]));
}

TEST(StabilityOfComparison, NamesTheParametersThatFallIntoTheNoiseWithHalfOfTheRuns)
{
  const Found f = quarterPasses(400);
  EXPECT_EQ(f.stability.verdict, EnoughRuns::MoreWouldHelp);
  EXPECT_THAT(f.stability.verdictText,
              testing::AllOf(HasSubstr("at 50 %"), HasSubstr("1 of the 2 significant parameters (\"faint\")"),
                             HasSubstr("more runs would help"), testing::Not(HasSubstr("clear"))));
}

TEST(StabilityOfComparison, CallsDifferencesWithinTheNoiseFloorOfAllRunsHints)
{
  ComparisonMethod lenient;
  lenient.adjustment = Adjustment::None;
  lenient.thresholds = {1.0, 0.0};
  const Scan scan = parameterScan({{"a", spread(100, 5)}, {"b", spread(100, 6)}});
  const RunSet passing = firstRuns(30, 100);
  Comparison comparison = compareParameters(scan, passing, lenient);
  comparison.method.thresholds.largestP = 0.05;
  comparison.noiseFloor = 0.99;
  const ComparisonStability stability =
      stabilityOfComparison(scan, passing, RunSet(100, true), comparison, quick());
  EXPECT_EQ(stability.verdict, EnoughRuns::WithinNoiseFloor);
  EXPECT_THAT(stability.verdictText, HasSubstr("d of all 2 significant parameters ("));
}

TEST(StabilityOfComparison, MakesAsManySubsamplesAsTheThresholdNeeds)
{
  ComparisonMethod strict;
  strict.gatesTried = 20;
  const Found f = found(scanOf(400), firstRuns(100, 400), strict);
  EXPECT_GE(f.stability.method.subsamples, 399u);
  for (ComparisonAtSize const& size : f.stability.sizes) EXPECT_FALSE(std::isnan(size.noiseFloor));
  strict.gatesTried = 100000;
  const Found tooMany = found(scanOf(80), firstRuns(20, 80), strict);
  EXPECT_LE(tooMany.stability.method.subsamples, 2000u);
  EXPECT_TRUE(std::isnan(tooMany.stability.sizes[0].noiseFloor));
  EXPECT_FALSE(tooMany.stability.sizes[0].isBeyond(0));
}

TEST(StabilityOfComparison, LooksAtTextsByTheSharesOfEachText)
{
  Scan scan = parameterScan({{"strain", Values(90)}, {"noise", spread(90, 3)}});
  scan.parameters[0].texts = {"wt", "mu", "ko"};
  // The middle text alone passes: cumulative shares would differ by less.
  for (std::size_t run = 0; run < 90; ++run) scan.parameters[0].values[run] = static_cast<double>(run % 3);
  RunSet passing(90);
  for (std::size_t run = 1; run < 90; run += 3) passing.set(run);
  const Found f = found(scan, passing);
  ASSERT_EQ(f.comparison.parameters[0].name, "strain");
  EXPECT_EQ(f.stability.sizes.back().parameters[0].median, 1.0);
  EXPECT_EQ(f.stability.sizes.back().parameters[0].median, std::fabs(f.comparison.parameters[0].d));
  EXPECT_GT(f.stability.parameters[0].low, 0.7);
  EXPECT_EQ(f.stability.parameters[0].high, 1.0);
}

TEST(StabilityOfComparison, LeavesOutRunsThatTakeNoPart)
{
  Scan scan = scanOf(400);
  const Found without = found(scan, firstRuns(100, 400));
  // More runs, of values that would change all.
  Scan larger = parameterScan({{"noise", Values(500, 9.0)},
                               {"clear", Values(500, 9.0)},
                               {"even", Values(500, 9.0)},
                               {"faint", Values(500, 9.0)}});
  RunSet eligible(500);
  for (std::size_t run = 0; run < 400; ++run) {
    eligible.set(run);
    for (std::size_t p = 0; p < 4; ++p) larger.parameters[p].values[run] = scan.parameters[p].values[run];
  }
  RunSet passing = firstRuns(100, 500);
  passing.set(450);
  const Comparison comparison = compareParameters(larger, passing, eligible);
  const ComparisonStability stability = stabilityOfComparison(larger, passing, eligible, comparison, quick());
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(stability.parameters[i].low, without.stability.parameters[i].low);
    EXPECT_EQ(stability.sizes[0].parameters[i].median, without.stability.sizes[0].parameters[i].median);
  }
}

TEST(StabilityOfComparison, IsTheSameOnAnyNumberOfThreadsAndAnotherWithAnotherSeed)
{
  const Scan scan = scanOf(200);
  const RunSet passing = firstRuns(50, 200);
  const RunSet all(200, true);
  const Comparison comparison = compareParameters(scan, passing);
  auto const lows = [&](unsigned threads, std::uint64_t seed) {
    StabilityMethod method = quick();
    method.seed = seed;
    const ComparisonStability stability =
        stabilityOfComparison(scan, passing, all, comparison, method, {threads, {}});
    Values numbers;
    for (SureDistance const& sure : stability.parameters) numbers.push_back(sure.low);
    for (ComparisonAtSize const& size : stability.sizes)
      for (DistanceAtSize const& d : size.parameters) numbers.push_back(d.low);
    for (std::size_t i = 0; i < 3; ++i) numbers.push_back(stability.sizes[i].noiseFloor);
    return numbers;
  };
  EXPECT_EQ(lows(1, 1), lows(3, 1));
  EXPECT_NE(lows(1, 1), lows(1, 2));
}

TEST(StabilityOfComparison, KnowsNothingIfAllRunsPassOrNone)
{
  for (const std::size_t passing : {0, 20}) {
    const Found f = found(scanOf(20), firstRuns(passing, 20));
    EXPECT_EQ(f.stability.verdict, EnoughRuns::Unknown);
    EXPECT_TRUE(f.stability.sizes.empty());
    ASSERT_EQ(f.stability.parameters.size(), 4u);
    EXPECT_TRUE(std::isnan(f.stability.parameters[0].low));
    EXPECT_TRUE(std::isnan(f.stability.parameters[0].topShare));
  }
}

TEST(StabilityOfComparison, KnowsNothingOfAParameterWithoutValuesOnOneSide)
{
  Scan scan = scanOf(200);
  for (std::size_t run = 0; run < 50; ++run) scan.parameters[2].values[run] = none;
  const Found f = found(scan, firstRuns(50, 200));
  ASSERT_EQ(f.comparison.parameters.back().name, "even");
  EXPECT_TRUE(std::isnan(f.stability.parameters.back().high));
  for (ComparisonAtSize const& size : f.stability.sizes) {
    EXPECT_TRUE(std::isnan(size.parameters.back().median));
    EXPECT_FALSE(size.isBeyond(3));
  }
  EXPECT_FALSE(std::isnan(f.stability.parameters[0].low));
}

TEST(StabilityOfComparison, IsOpenForOnePassingRun)
{
  const Found f = found(scanOf(40), firstRuns(1, 40));
  EXPECT_EQ(f.stability.parameters[0].low, 0.0);
  EXPECT_EQ(f.stability.parameters[0].high, 1.0);
  EXPECT_EQ(f.stability.sizes[0].passing, 1u);
}

TEST(StabilityOfComparison, TakesInfiniteValuesAndMassiveTies)
{
  Values tied(120);
  Values infinite = spread(120, 8);
  for (std::size_t run = 0; run < 120; ++run) tied[run] = run < 30 ? 1.0 : static_cast<double>(run % 2);
  for (std::size_t run = 0; run < 30; ++run) infinite[run] = std::numeric_limits<double>::infinity();
  const Scan scan = parameterScan({{"tied", tied}, {"infinite", infinite}});
  const Found f = found(scan, firstRuns(30, 120));
  ASSERT_EQ(f.comparison.parameters[0].name, "infinite");
  EXPECT_GT(f.stability.parameters[0].low, 0.7);
  EXPECT_EQ(f.stability.parameters[0].high, 1.0);
  EXPECT_NEAR(f.stability.sizes.back().parameters[1].median, 0.5, 1e-14);
}

TEST(StabilityOfComparison, StopsWhenAsked)
{
  const Scan scan = scanOf(200);
  const RunSet passing = firstRuns(50, 200);
  const Comparison comparison = compareParameters(scan, passing);
  int asked = 0;
  const ComparisonWork work{1, [&] { return ++asked > 1; }};
  StabilityMethod method = quick();
  method.resamples = 100000;
  EXPECT_THROW((void)stabilityOfComparison(scan, passing, RunSet(200, true), comparison, method, work),
               ComparisonCancelled);
  EXPECT_EQ(asked, 2);
}

TEST(StabilityOfComparison, RefusesComparisonsOfOtherRunsAndImpossibleMethods)
{
  const Scan scan = scanOf(40);
  const RunSet passing = firstRuns(10, 40);
  const RunSet all(40, true);
  const Comparison comparison = compareParameters(scan, passing);
  auto const look = [&](Comparison const& of, StabilityMethod const& method) {
    (void)stabilityOfComparison(scan, passing, all, of, method);
  };
  Comparison fewer = comparison;
  fewer.parameters.pop_back();
  EXPECT_THROW(look(fewer, quick()), std::invalid_argument);
  Comparison twice = comparison;
  twice.parameters[0].parameter = twice.parameters[1].parameter;
  EXPECT_THROW(look(twice, quick()), std::invalid_argument);
  Comparison beyond = comparison;
  beyond.parameters[0].parameter = 99;
  EXPECT_THROW(look(beyond, quick()), std::invalid_argument);
  StabilityMethod method = quick();
  method.resamples = 0;
  EXPECT_THROW(look(comparison, method), std::invalid_argument);
  method = quick();
  method.confidence = 1.0;
  EXPECT_THROW(look(comparison, method), std::invalid_argument);
  for (std::vector<double> const& shares : {std::vector<double>{0.5, 0.1}, {0.0, 1.0}, {0.5, 1.5}, {none}}) {
    method = quick();
    method.shares = shares;
    EXPECT_THROW(look(comparison, method), std::invalid_argument);
  }
  EXPECT_THROW((void)stabilityOfComparison(scan, RunSet(39), all, comparison, quick()),
               std::invalid_argument);
}

TEST(StabilityOfComparison, WithoutAPartOfTheRunsKnowsNoVerdict)
{
  StabilityMethod method = quick();
  method.shares = {1.0};
  EXPECT_EQ(found(scanOf(400), firstRuns(100, 400), {}, method).stability.verdict, EnoughRuns::Unknown);
  method.shares = {0.5};
  EXPECT_EQ(found(scanOf(4000), firstRuns(1000, 4000), {}, method).stability.verdict, EnoughRuns::Enough);
}

} // namespace runsieve::test
