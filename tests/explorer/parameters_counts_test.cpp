#include "DocumentScene.h"

#include "app/explorer/charts/TextBars.h"
#include "app/explorer/parameters/CountDensity.h"
#include "app/explorer/parameters/ParameterSpread.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

using namespace app;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

std::vector<std::uint8_t> everyRun(std::vector<double> const& values)
{
  return std::vector<std::uint8_t>(values.size(), 1);
}

ScanParameter parameterOf(std::vector<double> values)
{
  ScanParameter parameter;
  parameter.values = std::move(values);
  return parameter;
}

/// Values between 0 and 1, many of them near 0.3.
std::vector<double> places(std::size_t size)
{
  std::vector<double> values;
  for (std::size_t i = 0; i < size; ++i) {
    const double sum = scattered(0, i) + scattered(1, i) + scattered(2, i);
    values.push_back(i % 4 == 0 ? scattered(3, i) : 0.1 * sum + 0.15);
  }
  return values;
}

/// By definition, with the same rule for the bandwidth.
double naiveDensity(std::vector<double> const& places, double at)
{
  const auto n = static_cast<double>(places.size());
  std::vector<double> sorted = places;
  std::sort(sorted.begin(), sorted.end());
  double mean = 0.0;
  for (double const x : sorted) mean += x / n;
  double variance = 0.0;
  for (double const x : sorted) variance += (x - mean) * (x - mean) / n;
  const double quartiles = (sorted[3 * sorted.size() / 4] - sorted[sorted.size() / 4]) / 1.34;
  const double h = 1.06 * std::min(quartiles, std::sqrt(variance)) * std::pow(n, -0.2);
  double sum = 0.0;
  for (double const x : sorted)
    for (double const source : {x, -x, 2.0 - x})
      sum += std::exp(-0.5 * (at - source) * (at - source) / h / h);
  return sum / (std::sqrt(2.0 * 3.14159265358979) * h * n);
}

TEST(ColumnCounts, CountRunsOnceAndTellThoseBesideTheAxis)
{
  const std::vector<double> values = {0.0, 0.5, 0.5, 1.0, nan, -2.0, infinite};
  const RunColumns runs(values, AxisMap(0.0, 1.0));
  const ColumnCounts counts(runs, everyRun(values));
  EXPECT_EQ(counts.at(0), 1u);
  EXPECT_EQ(counts.at(RunColumns::columns / 2), 2u);
  EXPECT_EQ(counts.at(RunColumns::columns - 1), 1u);
  EXPECT_EQ(counts.below(), 1u);
  EXPECT_EQ(counts.onAxis(), 4u);
  EXPECT_EQ(counts.total(), 6u);
  EXPECT_FALSE(runs.isOn(4));
  const std::vector<double> shares = counts.cumulated();
  EXPECT_DOUBLE_EQ(shares.front(), 1.0 / 6.0);
  EXPECT_DOUBLE_EQ(shares.back(), 5.0 / 6.0);
}

TEST(ColumnCounts, OfAPartAndTheRestAreThoseOfAll)
{
  const std::vector<double> values = places(500);
  const RunColumns runs(values, AxisMap(0.0, 1.0));
  std::vector<std::uint8_t> some(values.size());
  for (std::size_t i = 0; i < some.size(); i += 3) some[i] = 1;
  ColumnCounts rest(runs, everyRun(values));
  const ColumnCounts part(runs, some);
  rest -= part;
  EXPECT_EQ(part.total(), 167u);
  EXPECT_EQ(rest.total(), 333u);
}

TEST(ColumnCounts, ValuesThatALogarithmicAxisLacksStandBelowIt)
{
  const std::vector<double> values = {0.0, -1.0, 0.1, 10.0};
  const ColumnCounts counts(RunColumns(values, AxisMap(0.1, 10.0, true)), everyRun(values));
  EXPECT_EQ(counts.below(), 2u);
  EXPECT_DOUBLE_EQ(counts.cumulated().front(), 0.5);
}

TEST(CountDensity, IsThatOfTheDefinition)
{
  const std::vector<double> values = places(599);
  const std::vector<double> density =
      densityOf({RunColumns(values, AxisMap(0.0, 1.0)), everyRun(values)}, 101);
  const double peak = *std::max_element(density.begin(), density.end());
  for (std::size_t i = 0; i < density.size(); ++i)
    EXPECT_NEAR(density[i], naiveDensity(values, static_cast<double>(i) / 100.0), 0.01 * peak) << i;
}

TEST(CountDensity, OnALogarithmicAxisIsThatOfTheLogarithms)
{
  std::vector<double> values;
  const std::vector<double> logarithms = places(599);
  for (double const place : logarithms) values.push_back(std::pow(10.0, -3.0 + 5.0 * place));
  const AxisMap axis(1e-3, 1e2, true);
  const std::vector<double> density = densityOf({RunColumns(values, axis), everyRun(values)}, 101);
  const double peak = *std::max_element(density.begin(), density.end());
  for (std::size_t i = 0; i < density.size(); ++i)
    EXPECT_NEAR(density[i], naiveDensity(logarithms, static_cast<double>(i) / 100.0), 0.01 * peak) << i;
}

TEST(CountDensity, OfManyRunsIsNearTheDefinitionTooAndHoldsAllOfThem)
{
  const std::vector<double> values = places(20'000);
  const std::vector<double> density =
      densityOf({RunColumns(values, AxisMap(0.0, 1.0)), everyRun(values)}, 101);
  const double peak = *std::max_element(density.begin(), density.end());
  double area = 0.0;
  for (std::size_t i = 0; i + 1 < density.size(); ++i) area += 0.5 * (density[i] + density[i + 1]) / 100.0;
  EXPECT_NEAR(area, 1.0, 0.01);
  for (std::size_t i = 0; i < density.size(); i += 10)
    EXPECT_NEAR(density[i], naiveDensity(values, static_cast<double>(i) / 100.0), 0.03 * peak) << i;
}

TEST(CountDensity, OfEvenlySpreadRunsDoesNotFallOffAtTheEnds)
{
  std::vector<double> values;
  for (int i = 0; i <= 1000; ++i) values.push_back(i / 1000.0);
  const std::vector<double> density =
      densityOf({RunColumns(values, AxisMap(0.0, 1.0)), everyRun(values)}, 51);
  for (double const value : density) EXPECT_NEAR(value, 1.0, 0.03);
}

TEST(CountDensity, OfFewRunsIsNone)
{
  const std::vector<double> values = {0.1, 0.2, 0.3};
  EXPECT_THAT(densityOf({RunColumns(values, AxisMap(0.0, 1.0)), everyRun(values)}, 11), testing::Each(0.0));
}

TEST(CountDensity, OfRunsAtOneValueIsFinite)
{
  const std::vector<double> values(50, 0.5);
  for (double const value : densityOf({RunColumns(values, AxisMap(0.0, 1.0)), everyRun(values)}, 51))
    EXPECT_TRUE(std::isfinite(value));
}

TEST(ParameterSpread, OfValuesSpreadByRatiosAsksForALogarithmicAxis)
{
  std::vector<double> values;
  for (std::size_t i = 0; i < 200; ++i) values.push_back(std::pow(10.0, -1.5 + 3.0 * scattered(0, i)));
  EXPECT_TRUE(spreadOf(parameterOf(values)).isLogarithmic);
}

TEST(ParameterSpread, OfValuesSpreadByDifferencesAsksForALinearAxisEvenIfOneIsTiny)
{
  std::vector<double> values = {1e-6};
  for (std::size_t i = 0; i < 200; ++i) values.push_back(scattered(0, i) + 0.01);
  EXPECT_FALSE(spreadOf(parameterOf(values)).isLogarithmic);
}

TEST(ParameterSpread, OfLessThanTwoDecadesOrOfValuesThatAreNotPositiveAsksForALinearAxis)
{
  std::vector<double> narrow;
  std::vector<double> withZero = {0.0};
  for (std::size_t i = 0; i < 200; ++i) {
    narrow.push_back(std::pow(10.0, 1.9 * scattered(0, i)));
    withZero.push_back(std::pow(10.0, 4.0 * scattered(0, i)));
  }
  EXPECT_FALSE(spreadOf(parameterOf(narrow)).isLogarithmic);
  EXPECT_FALSE(spreadOf(parameterOf(withZero)).isLogarithmic);
  EXPECT_TRUE(spreadOf(parameterOf(withZero)).allowsLogarithm());
}

TEST(ParameterSpread, OfMissingValuesHasAnAxisAllTheSame)
{
  const ParameterSpread spread = spreadOf(parameterOf({nan, nan, infinite}));
  EXPECT_EQ(spread.present, 0u);
  EXPECT_LT(spread.axis(false).low(), spread.axis(false).high());
  EXPECT_FALSE(spread.allowsLogarithm());
}

TEST(TextRows, AreSharesOfEachGroupInTheOrderOfTheScan)
{
  ScanParameter parameter;
  parameter.texts = {"b", "a"};
  const std::vector<TextRow> rows = textRows(parameter, {{1, 3}, {6, 2}, 4, 8}, 5);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].text, "b");
  EXPECT_DOUBLE_EQ(rows[0].passing, 0.25);
  EXPECT_DOUBLE_EQ(rows[0].others, 0.75);
  EXPECT_DOUBLE_EQ(rows[1].passing, 0.75);
}

TEST(TextRows, OfTooManyTextsAreTheMostFrequentOnesAndTheRest)
{
  ScanParameter parameter;
  parameter.texts = {"rare", "often", "rarer", "mostly"};
  const std::vector<TextRow> rows = textRows(parameter, {{0, 0, 0, 0}, {2, 10, 1, 20}, 0, 33}, 3);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].text, "often");
  EXPECT_EQ(rows[1].text, "mostly");
  EXPECT_TRUE(rows[2].isRest);
  EXPECT_NEAR(rows[2].others, 3.0 / 33.0, 1e-12);
  EXPECT_DOUBLE_EQ(rows[0].passing, 0.0);
}

} // namespace
} // namespace runsieve::test
