#include <runsieve/core/inference/RankCorrelation.h>
#include <runsieve/core/inference/SeparateSelection.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

using Marks = std::vector<unsigned char>;

double separateOf(std::vector<Column> const& columns, Marks const& passing)
{
  const std::vector<OrderedValues> orders = ordersOf(columns);
  return separateCorrelation(orders[0], parameterBins(orders[0], passing), orders[1],
                             parameterBins(orders[1], passing), passing);
}

std::vector<Column> correlatedColumns(std::size_t runs, std::uint64_t seed)
{
  std::vector<Column> columns = uniformColumns(2, runs, seed);
  for (std::size_t run = 0; run < runs; ++run) columns[1][run] += columns[0][run];
  return columns;
}

} // namespace

TEST(ParameterBins, endWhereACutOfTheParameterLies)
{
  const Column column = uniformColumns(1, 1000, 1)[0];
  const Marks passing =
      runsWhere(1000, [&](std::size_t run) { return column[run] > 0.3137 && column[run] < 0.7291; });
  const ParameterBins bins = parameterBins(orderedValues(column.data(), 1000), passing);
  std::vector<int> members(bins.bins);
  std::vector<int> passingMembers(bins.bins);
  for (std::size_t run = 0; run < 1000; ++run) {
    ++members.at(bins.bin[run]);
    passingMembers[bins.bin[run]] += passing[run];
  }
  for (std::size_t b = 0; b < bins.bins; ++b)
    EXPECT_TRUE(passingMembers[b] == 0 || passingMembers[b] == members[b]) << b;
  EXPECT_GT(bins.bins, 50u);
  EXPECT_LT(bins.bins, 70u);
}

TEST(ParameterBins, keepRunsWithoutAValueOut)
{
  const Column column = {1.0, std::numeric_limits<double>::quiet_NaN(), 2.0};
  const ParameterBins bins = parameterBins(orderedValues(column.data(), 3), {1, 1, 0});
  EXPECT_EQ(bins.bin[1], ParameterBins::NONE);
  EXPECT_EQ(bins.bins, 2u);
  EXPECT_EQ(parameterBins(OrderedValues(), {}).bins, 0u);
}

TEST(SeparateCorrelation, isThatOfAllRunsIfAllPass)
{
  const std::vector<Column> columns = correlatedColumns(300, 2);
  EXPECT_NEAR(separateOf(columns, Marks(300, 1)), rankCorrelation(columns[0].data(), columns[1].data(), 300),
              1e-9);
}

TEST(SeparateCorrelation, isThatOfThePassingRunsIfCutsOfEachParameterDecide)
{
  const std::vector<Column> columns = correlatedColumns(2000, 3);
  const Marks passing =
      runsWhere(2000, [&](std::size_t run) { return columns[0][run] > 0.4 && columns[1][run] < 1.2; });
  const std::vector<OrderedValues> orders = ordersOf(columns);
  EXPECT_NEAR(separateOf(columns, passing), rankCorrelation(orders[0], orders[1], passing), 1e-4);
}

TEST(SeparateCorrelation, isNearThatOfThePassingRunsIfChancesOfEachParameterDecide)
{
  const std::vector<Column> columns = correlatedColumns(20000, 4);
  RandomStream random(8, 8);
  const Marks passing = runsWhere(20000, [&](std::size_t run) {
    return uniform(random) < columns[0][run] * columns[0][run] * (1.0 - columns[1][run] / 2.0);
  });
  const std::vector<OrderedValues> orders = ordersOf(columns);
  const double expected = separateOf(columns, passing);
  EXPECT_NEAR(expected, rankCorrelation(orders[0], orders[1], passing), 0.04);
  EXPECT_LT(expected, rankCorrelation(columns[0].data(), columns[1].data(), 20000) - 0.05);
}

TEST(SeparateCorrelation, isNotDefinedIfNoRunPasses)
{
  EXPECT_TRUE(std::isnan(separateOf(correlatedColumns(50, 5), Marks(50, 0))));
  EXPECT_TRUE(std::isnan(separateOf({{}, {}}, {})));
}

} // namespace runsieve::test
