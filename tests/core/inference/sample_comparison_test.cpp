#include <runsieve/core/inference/SampleComparison.h>

#include "core/inference/DrawnSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

using Values = std::vector<double>;
using Mask = std::vector<std::uint8_t>;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double LARGEST = std::numeric_limits<double>::max();

SampleComparison compare(Values const& values, Mask const& passes)
{
  return compareSamples(orderedValues(values.data(), values.size()), values.data(), passes.data());
}

void expectSame(double found, double truth)
{
  if (std::isnan(truth))
    EXPECT_TRUE(std::isnan(found)) << found;
  else
    EXPECT_NEAR(found, truth, 1e-11 * std::abs(truth) + 1e-14);
}

} // namespace

TEST(SampleComparison, isThatOfR)
{
  TruthTable const samples("two_sample_p.csv");
  TruthTable const r("sample_comparison_r.csv");
  ASSERT_EQ(r.size(), 200u);
  for (std::size_t row = 0; row < r.size(); ++row) {
    SCOPED_TRACE(row);
    auto const sampleRow = static_cast<std::size_t>(r.number(row, "case")) - 1;
    SampleComparison const found = DrawnSamples(samples, sampleRow).compared();
    EXPECT_EQ(found.passing, samples.number(sampleRow, "passing"));
    EXPECT_EQ(found.others, samples.number(sampleRow, "others"));
    expectSame(found.passingMedian, r.number(row, "passing_median"));
    expectSame(found.othersMedian, r.number(row, "others_median"));
    expectSame(found.d, r.number(row, "d"));
    expectSame(found.value, r.number(row, "value"));
    expectSame(found.area, r.number(row, "area"));
    expectSame(found.medianShift, r.number(row, "median_shift"));
    expectSame(found.rangeShare, r.number(row, "range_share"));
  }
}

TEST(SampleComparison, describesSamplesByHand)
{
  // Passing 2, 5, 6; others 1, 2, 3, 4.
  SampleComparison const found = compare({1, 2, 3, 4, 2, 5, 6}, {0, 0, 0, 0, 1, 1, 1});
  EXPECT_EQ(found.passing, 3u);
  EXPECT_EQ(found.others, 4u);
  EXPECT_EQ(found.passingMedian, 5.0);
  EXPECT_EQ(found.othersMedian, 2.5);
  EXPECT_EQ(found.difference, 8); // at 4 all others and one of three
  EXPECT_DOUBLE_EQ(found.d, 2.0 / 3.0);
  EXPECT_EQ(found.value, 4.0);
  // Means differ by 13/3 - 10/4, and the passing ones are larger everywhere.
  EXPECT_DOUBLE_EQ(found.area, (13.0 / 3.0 - 2.5) / 5.0);
  EXPECT_DOUBLE_EQ(found.medianShift, 2.5 / 2.5); // quartiles 2 and 4.5
  EXPECT_DOUBLE_EQ(found.rangeShare, 4.0 / 5.0);
}

TEST(SampleComparison, isPositiveForLargerPassingRunsAndNegativeForSmallerOnes)
{
  EXPECT_EQ(compare({1, 2, 3, 4}, {0, 0, 1, 1}).d, 1.0);
  EXPECT_EQ(compare({1, 2, 3, 4}, {1, 1, 0, 0}).d, -1.0);
  EXPECT_EQ(compare({1, 2, 3, 4}, {1, 1, 0, 0}).medianShift, -2.0 / 1.5);
  EXPECT_EQ(compare({1, 2, 3, 4}, {1, 1, 0, 0}).area, 2.0 / 3.0);
}

TEST(SampleComparison, standsAtTheLowestOfSeveralValues)
{
  // One half at 1 in one direction, at 3 in the other.
  SampleComparison const found = compare({1, 2, 3, 4, 2.5, 2.6}, {1, 0, 0, 1, 0, 0});
  EXPECT_EQ(found.difference, -4);
  EXPECT_EQ(found.d, -0.5);
  EXPECT_EQ(found.value, 1.0);
}

TEST(SampleComparison, stepsRunsOfEqualValueTogether)
{
  SampleComparison const found = compare({1, 1, 2, 2}, {1, 0, 0, 1});
  EXPECT_EQ(found.difference, 0);
  EXPECT_EQ(found.d, 0.0);
  EXPECT_EQ(found.area, 0.0);
  EXPECT_TRUE(std::isnan(found.value));
}

TEST(SampleComparison, leavesOutRunsWithoutAValueOrAPlaceInTheOrder)
{
  Values const values{NOT_A_NUMBER, 1, 2, 100};
  Mask const passes{1, 0, 1, 1};
  OrderedValues ordered = orderedValues(values.data(), 3); // not the last run
  SampleComparison const found = compareSamples(ordered, values.data(), passes.data());
  EXPECT_EQ(found.passing, 1u);
  EXPECT_EQ(found.others, 1u);
  EXPECT_EQ(found.passingMedian, 2.0);
  EXPECT_EQ(found.rangeShare, 0.0);
}

TEST(SampleComparison, ofValuesThatAreAllEqualHasNoUnits)
{
  SampleComparison const found = compare({7, 7, 7}, {1, 0, 0});
  EXPECT_EQ(found.d, 0.0);
  EXPECT_EQ(found.passingMedian, 7.0);
  EXPECT_TRUE(std::isnan(found.area));
  EXPECT_TRUE(std::isnan(found.medianShift));
  EXPECT_TRUE(std::isnan(found.rangeShare));
}

TEST(SampleComparison, hasNoShiftIfHalfOfTheRunsShareAValue)
{
  SampleComparison const found = compare({1, 2, 2, 2, 2, 9}, {0, 0, 0, 0, 1, 1});
  EXPECT_EQ(found.passingMedian, 5.5);
  EXPECT_TRUE(std::isnan(found.medianShift));
  EXPECT_FALSE(std::isnan(found.area));
}

TEST(SampleComparison, ofOneSideOnlyDescribesThatSide)
{
  SampleComparison const all = compare({1, 2, 4}, {1, 1, 1});
  EXPECT_EQ(all.passing, 3u);
  EXPECT_EQ(all.others, 0u);
  EXPECT_EQ(all.passingMedian, 2.0);
  EXPECT_EQ(all.rangeShare, 1.0);
  EXPECT_EQ(all.difference, 0);
  for (double const undefined : {all.othersMedian, all.d, all.value, all.area, all.medianShift})
    EXPECT_TRUE(std::isnan(undefined));

  SampleComparison const none = compare({1, 2, 4}, {0, 0, 0});
  EXPECT_EQ(none.othersMedian, 2.0);
  for (double const undefined :
       {none.passingMedian, none.d, none.value, none.area, none.medianShift, none.rangeShare})
    EXPECT_TRUE(std::isnan(undefined));
}

TEST(SampleComparison, ofNoRunsIsUndefined)
{
  SampleComparison const found = compare({}, {});
  EXPECT_EQ(found.passing + found.others, 0u);
  EXPECT_TRUE(std::isnan(found.d));
  EXPECT_TRUE(std::isnan(found.rangeShare));
  EXPECT_TRUE(std::isnan(compare({NOT_A_NUMBER}, {1}).passingMedian));
}

TEST(SampleComparison, ofOneRunHasAMedianOnly)
{
  SampleComparison const found = compare({3}, {1});
  EXPECT_EQ(found.passingMedian, 3.0);
  EXPECT_TRUE(std::isnan(found.d));
  EXPECT_TRUE(std::isnan(found.rangeShare));
}

TEST(SampleComparison, ordersInfiniteValuesButHasNoRangeToMeasureThemBy)
{
  SampleComparison const found = compare({-INFINITE, 1, 2, INFINITE}, {0, 0, 1, 1});
  EXPECT_EQ(found.d, 1.0);
  EXPECT_EQ(found.value, 1.0);
  EXPECT_EQ(found.passingMedian, INFINITE);
  EXPECT_EQ(found.othersMedian, -INFINITE);
  EXPECT_TRUE(std::isnan(found.area));
  EXPECT_TRUE(std::isnan(found.medianShift));
  EXPECT_TRUE(std::isnan(found.rangeShare));
  EXPECT_TRUE(std::isnan(compare({-INFINITE, INFINITE}, {1, 1}).passingMedian));
  // Infinite ends, finite quartiles.
  EXPECT_EQ(compare({-INFINITE, 1, 2, 3, INFINITE}, {0, 0, 0, 1, 0}).medianShift, 1.5 / 2.0);
  EXPECT_TRUE(std::isnan(compare({INFINITE, INFINITE}, {1, 0}).area));
  // Finite values of the passing are no share of an infinite range.
  EXPECT_TRUE(std::isnan(compare({-INFINITE, 1, 2}, {0, 1, 1}).rangeShare));
}

TEST(SampleComparison, holdsOverTheWholeRangeOfNumbers)
{
  SampleComparison const found = compare({-LARGEST, -LARGEST, LARGEST, LARGEST}, {0, 0, 1, 1});
  EXPECT_EQ(found.passingMedian, LARGEST);
  EXPECT_EQ(found.area, 1.0);
  EXPECT_EQ(found.medianShift, 1.0);
  EXPECT_EQ(found.rangeShare, 0.0);
  double const least = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(compare({0, least}, {0, 1}).area, 1.0);
}

TEST(SampleComparison, hasAnAreaOfAtMostOneThoughItsSumIsRounded)
{
  // A hundred steps of 3/4 of a unit in the last place of the sum, each of which counts as a whole one.
  Values values{-2.0};
  for (int step = 100; step > 0; --step) values.push_back(1.0 - 3.0 * step * 0x1p-53);
  values.resize(values.size() + 100000, 1.0);
  Mask passes(values.size(), 1);
  passes.front() = 0;
  EXPECT_EQ(compare(values, passes).area, 1.0);
}

TEST(SampleComparison, ofVeryUnequalSizesCountsEachRunOnce)
{
  Values values;
  for (int i = 0; i < 100000; ++i) values.push_back(i);
  Mask passes(values.size());
  passes[25000] = 1;
  SampleComparison const found = compare(values, passes);
  EXPECT_EQ(found.passing, 1u);
  EXPECT_EQ(found.others, 99999u);
  EXPECT_EQ(found.difference, 25000 - 99999); // from that run on
  EXPECT_EQ(found.value, 25000.0);
}

} // namespace runsieve::test
