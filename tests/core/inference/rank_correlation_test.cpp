#include <runsieve/core/inference/RankCorrelation.h>

#include "RecordedRuns.h"
#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

double correlated(Column const& x, Column const& y)
{
  return rankCorrelation(x.data(), y.data(), x.size());
}

} // namespace

TEST(RankCorrelation, isThatOfRWithTiesMissingAndInfiniteValues)
{
  const RecordedRuns recorded = recordedRuns();
  ASSERT_EQ(recorded.correlations.size(), 18u);
  const std::vector<OrderedValues> orders = ordersOf(recorded.columns);
  const std::size_t runs = recorded.passing.size();
  for (Truth const& truth : recorded.correlations) {
    const std::vector<unsigned char> members = runsWhere(runs, [&](std::size_t run) {
      return truth.group == "all" || (truth.group == "passing") == (recorded.passing[run] == 1);
    });
    EXPECT_NEAR(rankCorrelation(orders[truth.first], orders[truth.second], members), truth.r, 1e-13)
        << truth.group << truth.first << truth.second;
    const PairCorrelations all = rankCorrelations(orders, members);
    EXPECT_NEAR(all.r[pairPlace(truth.second, truth.first)], truth.r, 1e-13)
        << truth.group << truth.first << truth.second;
  }
}

TEST(RankCorrelation, isOneForAnyRisingAndMinusOneForAnyFallingFunction)
{
  const Column x = {0.1, 3.0, 2.0, 2.0, -7.0};
  const Column cubes = {0.001, 27.0, 8.0, 8.0, -343.0};
  const Column opposites = {-0.1, -3.0, -2.0, -2.0, 7.0};
  EXPECT_EQ(correlated(x, cubes), 1.0);
  EXPECT_EQ(correlated(x, opposites), -1.0);
}

TEST(RankCorrelation, isNotDefinedForFewerThanTwoDifferentValues)
{
  EXPECT_TRUE(std::isnan(correlated({}, {})));
  EXPECT_TRUE(std::isnan(correlated({1.0}, {2.0})));
  EXPECT_TRUE(std::isnan(correlated({1.0, 2.0, 3.0}, {5.0, 5.0, 5.0})));
  EXPECT_TRUE(std::isnan(correlated({1.0, NONE, 3.0}, {NONE, 5.0, NONE})));
}

TEST(RankCorrelation, ranksInfiniteValuesOutside)
{
  EXPECT_EQ(correlated({-INFINITE, 0.0, INFINITE}, {1.0, 2.0, 3.0}), 1.0);
  EXPECT_EQ(correlated({INFINITE, INFINITE, 0.0}, {2.0, 2.0, 1.0}), 1.0);
}

TEST(RankCorrelation, leavesOutRunsThatLackOneOfTheValues)
{
  EXPECT_EQ(correlated({1.0, 2.0, 9.0, 3.0, NONE}, {1.0, 2.0, NONE, 3.0, 0.0}), 1.0);
}

TEST(RankCorrelations, ofAllPairsAreThoseOfEachPair)
{
  std::vector<Column> columns = uniformColumns(5, 200, 3);
  for (double& value : columns[2]) value = std::floor(3.0 * value);
  const std::vector<OrderedValues> orders = ordersOf(columns);
  const std::vector<unsigned char> members = runsWhere(200, [](std::size_t run) { return run % 3 > 0; });
  const PairCorrelations all = rankCorrelations(orders, members);
  for (std::size_t i = 1; i < 5; ++i)
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_EQ(all.r[pairPlace(i, j)], rankCorrelation(orders[i], orders[j], members));
      EXPECT_EQ(all.n[pairPlace(i, j)], 133.0);
    }
}

TEST(RankCorrelations, countTheRunsThatHaveBothValues)
{
  const std::vector<OrderedValues> orders = ordersOf({{1, 2, NONE, 4, 5}, {NONE, 2, 3, 1, 5}});
  const PairCorrelations all = rankCorrelations(orders, {1, 1, 1, 1, 0});
  EXPECT_EQ(all.n[0], 2.0);
  EXPECT_EQ(all.r[0], -1.0);
}

TEST(RankCorrelations, ofParametersThatLackTheSameRunsAreThoseOfTheOthers)
{
  std::vector<Column> columns = uniformColumns(2, 50, 4);
  const std::vector<unsigned char> some = runsWhere(50, [](std::size_t run) { return run % 5 > 0; });
  const double expected = rankCorrelations(ordersOf(columns), some).r[0];
  for (Column& column : columns)
    for (std::size_t run = 0; run < 50; run += 5) column[run] = NONE;
  const PairCorrelations all = rankCorrelations(ordersOf(columns), std::vector<unsigned char>(50, 1));
  EXPECT_DOUBLE_EQ(all.r[0], expected);
  EXPECT_EQ(all.n[0], 40.0);
}

TEST(RankCorrelations, ofOneParameterOrNoneAreNone)
{
  EXPECT_TRUE(rankCorrelations({}, {}).r.empty());
  EXPECT_TRUE(rankCorrelations(ordersOf({{1.0, 2.0}}), {1, 1}).r.empty());
}

TEST(RankTable, holdsDoubledRanksAroundZero)
{
  RankTable table = rankTable(ordersOf({{5.0, 1.0, 5.0, 2.0, 9.0}}), {1, 1, 1, 1, 0});
  EXPECT_EQ(table.ranks, (std::vector<double>{2.0, -3.0, 2.0, -1.0}));
  EXPECT_TRUE(table.present.empty());
}

} // namespace runsieve::test
