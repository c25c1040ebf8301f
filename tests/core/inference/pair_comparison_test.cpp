#include <runsieve/core/inference/PairComparison.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
using Marks = std::vector<unsigned char>;

PairSettings settingsOf(std::size_t permutations, unsigned threads = 1)
{
  PairSettings settings;
  settings.permutations = permutations;
  settings.threads = threads;
  return settings;
}

/// What a comparison has found at its end.
struct Found
{
  std::vector<PairResult> pairs;
  double floor = 0.0;
  double correlationFloor = 0.0;
};

Found compared(std::vector<Column> const& columns, Marks const& passing, PairSettings const& settings,
               std::size_t slice = 0)
{
  const std::vector<OrderedValues> orders = ordersOf(columns);
  PairComparison comparison(orders, passing, settings);
  while (!comparison.done()) comparison.advance(slice);
  return {comparison.pairs(), comparison.noiseFloor(), comparison.correlationFloor()};
}

void expectSame(Found const& a, Found const& b)
{
  EXPECT_EQ(a.floor, b.floor);
  ASSERT_EQ(a.pairs.size(), b.pairs.size());
  for (std::size_t i = 0; i < a.pairs.size(); ++i) {
    EXPECT_EQ(a.pairs[i].statistic, b.pairs[i].statistic);
    EXPECT_EQ(a.pairs[i].expected, b.pairs[i].expected);
    EXPECT_EQ(a.pairs[i].p, b.pairs[i].p);
  }
}

/// Parameters of which the second follows the first.
std::vector<Column> correlatedColumns(std::size_t columns, std::size_t runs, std::uint64_t seed)
{
  std::vector<Column> result = uniformColumns(columns, runs, seed);
  for (std::size_t run = 0; run < runs; ++run) result[1][run] = 0.45 * result[0][run] + 0.55 * result[1][run];
  return result;
}

/// Of `scans` scans without an interaction, those with a pair beyond the noise floor.
template <class Columns, class Gate> int falseAlarms(int scans, Columns const& columns, Gate const& gate)
{
  int alarms = 0;
  for (int scan = 0; scan < scans; ++scan) {
    const std::vector<Column> drawn = columns(static_cast<std::uint64_t>(scan));
    const Marks passing = runsWhere(drawn[0].size(), [&](std::size_t run) { return gate(drawn, run); });
    PairSettings settings = settingsOf(99);
    settings.seed = static_cast<std::uint64_t>(scan);
    const Found found = compared(drawn, passing, settings);
    alarms += std::any_of(found.pairs.begin(), found.pairs.end(),
                          [](PairResult const& pair) { return pair.beyondFloor; });
  }
  return alarms;
}

// Of 200 scans at 5 %, more than 20 are false alarms in 0.1 % of seeds, fewer than 2 in 0.05 %.
constexpr int SCANS = 200;
constexpr int MOST_ALARMS = 20;
constexpr int LEAST_ALARMS = 2;

} // namespace

TEST(PairComparison, findsAGateOnASum)
{
  const std::vector<Column> columns = uniformColumns(5, 1000, 1);
  const Found found = compared(
      columns, runsWhere(1000, [&](std::size_t run) { return columns[1][run] + columns[3][run] < 0.8; }),
      settingsOf(199));
  for (PairResult const& pair : found.pairs)
    EXPECT_EQ(pair.beyondFloor, pair.first == 1 && pair.second == 3) << pair.first << pair.second;
  PairResult const& gated = found.pairs[5];
  EXPECT_LT(gated.passing, -0.3);
  EXPECT_EQ(gated.p, 1.0 / 200.0);
  EXPECT_FALSE(gated.byDesign);
}

TEST(PairComparison, findsAGateOnAProduct)
{
  const std::vector<Column> columns = uniformColumns(4, 2000, 2);
  const Found found = compared(
      columns, runsWhere(2000, [&](std::size_t run) { return columns[0][run] * columns[2][run] > 0.3; }),
      settingsOf(199));
  for (PairResult const& pair : found.pairs) EXPECT_EQ(pair.beyondFloor, pair.first == 0 && pair.second == 2);
  EXPECT_LT(found.pairs[1].passing, 0.0);
}

TEST(PairComparison, findsRunsThatPassIfEitherValueIsLowButNotBothThoughNeitherDiffersOnItsOwn)
{
  const std::vector<Column> columns = uniformColumns(4, 400, 3);
  const Found found = compared(
      columns,
      runsWhere(400, [&](std::size_t run) { return (columns[0][run] < 0.5) != (columns[1][run] < 0.5); }),
      settingsOf(199));
  EXPECT_LT(found.pairs[0].passing, -0.6);
  EXPECT_GT(found.pairs[0].others, 0.6);
  for (PairResult const& pair : found.pairs) EXPECT_EQ(pair.beyondFloor, pair.first == 0 && pair.second == 1);
}

TEST(PairComparison, findsNothingInSeparateCutsThoughTheOtherRunsAreCorrelated)
{
  const std::vector<Column> columns = uniformColumns(3, 2000, 4);
  const Found found = compared(
      columns,
      runsWhere(2000, [&](std::size_t run) { return columns[0][run] < 0.5 && columns[1][run] < 0.5; }),
      settingsOf(199));
  EXPECT_LT(found.pairs[0].others, -0.2);
  EXPECT_GT(found.pairs[0].passing - found.pairs[0].others, 0.2);
  EXPECT_FALSE(found.pairs[0].beyondFloor);
  EXPECT_GT(found.pairs[0].p, 0.05);
}

TEST(PairComparison, keepsItsErrorRateUnderSeparateCuts)
{
  const int alarms = falseAlarms(
      SCANS, [](std::uint64_t seed) { return uniformColumns(5, 120, seed); },
      [](std::vector<Column> const& columns, std::size_t run) {
        return columns[0][run] < 0.5 && columns[1][run] < 0.6;
      });
  EXPECT_LE(alarms, MOST_ALARMS);
  EXPECT_GE(alarms, LEAST_ALARMS);
}

TEST(PairComparison, keepsItsErrorRateUnderSeparateCutsOfFewLevels)
{
  const int alarms = falseAlarms(
      SCANS,
      [](std::uint64_t seed) {
        std::vector<Column> columns = uniformColumns(5, 120, 5000 + seed);
        for (Column& column : columns)
          for (double& value : column) value = std::floor(4.0 * value);
        return columns;
      },
      [](std::vector<Column> const& columns, std::size_t run) {
        return columns[0][run] < 2.0 && columns[1][run] > 0.0;
      });
  EXPECT_LE(alarms, MOST_ALARMS);
  EXPECT_GE(alarms, LEAST_ALARMS);
}

TEST(PairComparison, keepsItsErrorRateWithMissingValues)
{
  const int alarms = falseAlarms(
      SCANS,
      [](std::uint64_t seed) {
        std::vector<Column> columns = uniformColumns(4, 100, 9000 + seed);
        for (std::size_t run = 0; run < 100; run += 3) columns[run % 4][run] = NONE;
        return columns;
      },
      [](std::vector<Column> const& columns, std::size_t run) { return run % 2 == 0; });
  EXPECT_LE(alarms, MOST_ALARMS);
  EXPECT_GE(alarms, LEAST_ALARMS);
}

TEST(PairComparison, blamesNoInteractionForACorrelationByDesignThatCutsChange)
{
  const int alarms = falseAlarms(
      SCANS, [](std::uint64_t seed) { return correlatedColumns(3, 300, seed); },
      [](std::vector<Column> const& columns, std::size_t run) {
        return columns[0][run] < 0.5 && columns[1][run] < 0.6;
      });
  EXPECT_LE(alarms, MOST_ALARMS);
}

TEST(PairComparison, tellsCorrelationsByDesignAndWhatCutsLeaveOfThem)
{
  const std::vector<Column> columns = correlatedColumns(3, 4000, 5);
  const Found found = compared(
      columns, runsWhere(4000, [&](std::size_t run) { return columns[0][run] < 0.3; }), settingsOf(99));
  PairResult const& pair = found.pairs[0];
  EXPECT_TRUE(pair.byDesign);
  EXPECT_FALSE(found.pairs[1].byDesign);
  EXPECT_GT(pair.all, 0.55);
  EXPECT_LT(pair.passing, 0.4);
  EXPECT_NEAR(pair.expected, pair.passing, 0.02);
  EXPECT_FALSE(pair.beyondFloor);
  EXPECT_EQ(found.pairs[1].expected, 0.0);
}

TEST(PairComparison, findsAGateOnASumOfParametersCorrelatedByDesign)
{
  const std::vector<Column> columns = correlatedColumns(3, 4000, 6);
  const Found found = compared(
      columns, runsWhere(4000, [&](std::size_t run) { return columns[0][run] + columns[1][run] < 0.8; }),
      settingsOf(99));
  EXPECT_TRUE(found.pairs[0].byDesign);
  EXPECT_TRUE(found.pairs[0].beyondFloor);
  EXPECT_LT(found.pairs[0].passing, found.pairs[0].expected - 0.1);
}

TEST(PairComparison, findsNothingInACopyOfAParameter)
{
  std::vector<Column> columns = uniformColumns(2, 200, 7);
  columns[1] = columns[0];
  const Found found =
      compared(columns, runsWhere(200, [](std::size_t run) { return run % 2 == 0; }), settingsOf(99));
  EXPECT_TRUE(found.pairs[0].byDesign);
  EXPECT_EQ(found.pairs[0].passing, 1.0);
  EXPECT_NEAR(found.pairs[0].statistic, 0.0, 1e-6);
  EXPECT_FALSE(found.pairs[0].beyondFloor);
}

TEST(PairComparison, isTheSameOnAnyNumberOfThreads)
{
  const std::vector<Column> columns = correlatedColumns(6, 300, 8);
  const Marks passing = runsWhere(300, [&](std::size_t run) { return columns[2][run] < columns[3][run]; });
  const Found one = compared(columns, passing, settingsOf(60, 1));
  for (const unsigned threads : {2u, 3u, 8u})
    expectSame(one, compared(columns, passing, settingsOf(60, threads)));
}

TEST(PairComparison, isTheSameInSlicesOfAnySize)
{
  const std::vector<Column> columns = correlatedColumns(4, 200, 9);
  const Marks passing = runsWhere(200, [&](std::size_t run) { return columns[2][run] < 0.4; });
  const Found atOnce = compared(columns, passing, settingsOf(50), 1000);
  for (const std::size_t slice : {1u, 7u, 0u})
    expectSame(atOnce, compared(columns, passing, settingsOf(50, 2), slice));
}

TEST(PairComparison, isDoneAfterAllPieces)
{
  const std::vector<OrderedValues> orders = ordersOf(uniformColumns(2, 20, 1));
  PairComparison comparison(orders, Marks(20, 1), settingsOf(10));
  comparison.advance(5);
  EXPECT_FALSE(comparison.done());
  comparison.advance(100);
  EXPECT_TRUE(comparison.done());
}

TEST(PairComparison, isBeyondTheFloorExactlyWhereItsPIsAtMostTheLevel)
{
  const std::vector<Column> columns = uniformColumns(12, 9, 10);
  Column pFound;
  for (const std::size_t permutations : {19u, 20u, 99u, 137u}) {
    const Found found =
        compared(columns, runsWhere(9, [](std::size_t run) { return run < 6; }), settingsOf(permutations));
    for (PairResult const& pair : found.pairs) {
      EXPECT_EQ(pair.beyondFloor, pair.p <= 0.05);
      pFound.push_back(pair.p);
    }
  }
  EXPECT_LT(*std::min_element(pFound.begin(), pFound.end()), 1.0);
}

TEST(PairComparison, withTooFewPermutationsForTheLevelPutsNothingBeyondTheFloor)
{
  const std::vector<Column> columns = uniformColumns(2, 100, 11);
  const Marks sum = runsWhere(100, [&](std::size_t run) { return columns[0][run] + columns[1][run] < 0.5; });
  const Found found = compared(columns, sum, settingsOf(18));
  EXPECT_EQ(found.floor, std::numeric_limits<double>::infinity());
  EXPECT_FALSE(found.pairs[0].beyondFloor);
  EXPECT_EQ(compared(columns, sum, settingsOf(0)).pairs[0].p, 1.0);
}

TEST(PairComparison, tellsTheFloorAsACorrelation)
{
  const Found found = compared(uniformColumns(4, 101, 12), Marks(101, 1), settingsOf(99));
  EXPECT_DOUBLE_EQ(found.correlationFloor, found.floor / 10.0);
  // Six pairs: between the 5 % point of one pair and Bonferroni's bound of six, of a normal variable.
  EXPECT_GT(found.floor, 1.96);
  EXPECT_LT(found.floor, 3.3);
}

TEST(PairComparison, ofAllRunsPassingHasNoOthers)
{
  const Found found = compared(uniformColumns(2, 30, 13), Marks(30, 1), settingsOf(19));
  EXPECT_TRUE(std::isnan(found.pairs[0].others));
  EXPECT_EQ(found.pairs[0].passing, found.pairs[0].all);
}

TEST(PairComparison, ofNoOrOnePassingRunHasNoStatistics)
{
  const std::vector<Column> columns = uniformColumns(3, 30, 14);
  for (const std::size_t passing : {0u, 1u}) {
    const Found found =
        compared(columns, runsWhere(30, [&](std::size_t run) { return run < passing; }), settingsOf(19));
    for (PairResult const& pair : found.pairs) {
      EXPECT_TRUE(std::isnan(pair.statistic));
      EXPECT_TRUE(std::isnan(pair.p));
      EXPECT_FALSE(pair.beyondFloor);
    }
  }
}

TEST(PairComparison, ofTwoPassingRunsIsNeverBeyondTheFloor)
{
  const Found found = compared(uniformColumns(5, 30, 15),
                               runsWhere(30, [](std::size_t run) { return run < 2; }), settingsOf(99));
  for (PairResult const& pair : found.pairs) {
    EXPECT_EQ(pair.statistic, 1.0);
    EXPECT_EQ(pair.p, 1.0);
  }
}

TEST(PairComparison, leavesOutParametersThatAreConstantAmongThePassingRuns)
{
  std::vector<Column> columns = uniformColumns(3, 60, 16);
  for (double& value : columns[1]) value = value < 0.5 ? 1.0 : 2.0;
  const Found found = compared(
      columns, runsWhere(60, [&](std::size_t run) { return columns[1][run] == 1.0; }), settingsOf(99));
  EXPECT_TRUE(std::isnan(found.pairs[0].p));
  EXPECT_FALSE(std::isnan(found.pairs[1].p));
  EXPECT_TRUE(std::isnan(found.pairs[2].p));
  EXPECT_TRUE(std::isfinite(found.floor));
}

TEST(PairComparison, ofAParameterWithoutValuesIsNotDefined)
{
  std::vector<Column> columns = uniformColumns(3, 40, 17);
  std::fill(columns[2].begin(), columns[2].end(), NONE);
  const Found found =
      compared(columns, runsWhere(40, [](std::size_t run) { return run % 2 == 0; }), settingsOf(39));
  EXPECT_FALSE(std::isnan(found.pairs[0].p));
  EXPECT_TRUE(std::isnan(found.pairs[1].p));
}

TEST(PairComparison, ofInfiniteValuesRanksThem)
{
  std::vector<Column> columns = uniformColumns(2, 50, 18);
  const Marks passing = runsWhere(50, [](std::size_t run) { return run < 25; });
  const Found plain = compared(columns, passing, settingsOf(39));
  *std::max_element(columns[0].begin(), columns[0].end()) = std::numeric_limits<double>::infinity();
  expectSame(plain, compared(columns, passing, settingsOf(39)));
}

TEST(PairComparison, ofNoParametersOrRunsIsEmpty)
{
  EXPECT_TRUE(compared({}, {}, settingsOf(19)).pairs.empty());
  EXPECT_TRUE(compared({{1.0, 2.0}}, {1, 0}, settingsOf(19)).pairs.empty());
  EXPECT_TRUE(std::isnan(compared({{}, {}}, {}, settingsOf(19)).pairs[0].p));
}

TEST(PairComparison, refusesOrdersOfMoreRunsThanTheSetHas)
{
  const std::vector<OrderedValues> orders = ordersOf(uniformColumns(2, 5, 1));
  EXPECT_THROW(PairComparison(orders, Marks(4, 1)), std::invalid_argument);
}

} // namespace runsieve::test
