#include <runsieve/core/inference/SizeCurve.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {

namespace {

using Marks = std::vector<unsigned char>;
using Found = std::vector<SizePoint>;

SizeCurveSettings settingsOf(std::size_t subsamples, std::vector<double> shares = {0.1, 0.25, 0.5, 1.0})
{
  SizeCurveSettings settings;
  settings.subsamples = subsamples;
  settings.shares = std::move(shares);
  settings.threads = 1;
  return settings;
}

Found curveOf(std::vector<Column> const& columns, Marks const& passing, SizeCurveSettings const& settings,
              std::size_t slice = 0)
{
  const std::vector<ComparedParameter> compared = comparedNumbers(columns);
  SizeCurve curve(compared, passing, settings);
  while (!curve.done()) curve.advance(slice);
  return curve.points();
}

/// Parameters of which the first differs by a distance of 0.3 between the first quarter of the runs and the
/// rest.
std::vector<Column> columnsOf(std::size_t columns, std::size_t runs)
{
  std::vector<Column> result = uniformColumns(columns, runs, 21);
  for (std::size_t run = 0; run < runs / 4; ++run) result[0][run] *= 0.7;
  return result;
}

Marks firstQuarter(std::size_t runs)
{
  return runsWhere(runs, [&](std::size_t run) { return run < runs / 4; });
}

void expectSame(Found const& a, Found const& b)
{
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].floor, b[i].floor);
    for (std::size_t p = 0; p < a[i].parameters.size(); ++p) {
      EXPECT_EQ(a[i].parameters[p].low, b[i].parameters[p].low);
      EXPECT_EQ(a[i].parameters[p].median, b[i].parameters[p].median);
      EXPECT_EQ(a[i].parameters[p].high, b[i].parameters[p].high);
    }
  }
}

} // namespace

TEST(SizeCurve, showsADifferenceRiseAboveAFloorThatFallsWithMoreRuns)
{
  const Found found = curveOf(columnsOf(4, 800), firstQuarter(800), settingsOf(100));
  ASSERT_EQ(found.size(), 4u);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_LT(found[i].floor, found[i - 1].floor);
  EXPECT_LT(found[0].parameters[0].low, found[0].floor);
  EXPECT_GT(found[3].parameters[0].low, found[3].floor);
  EXPECT_LT(found[3].parameters[1].high, found[3].floor);
}

TEST(SizeCurve, takesTheShareOfPassingRunsAndOfOthers)
{
  const Found found = curveOf(columnsOf(1, 100), firstQuarter(100), settingsOf(8));
  EXPECT_EQ(found[0].passing, 3u);
  EXPECT_EQ(found[0].others, 8u);
  EXPECT_EQ(found[2].passing, 13u);
  EXPECT_EQ(found[2].others, 38u);
  EXPECT_EQ(found[3].passing, 25u);
  EXPECT_EQ(found[3].others, 75u);
}

TEST(SizeCurve, ofAllRunsHasOneDistance)
{
  const Found found = curveOf(columnsOf(2, 200), firstQuarter(200), settingsOf(20, {1.0}));
  for (DistanceRange const& range : found[0].parameters) {
    EXPECT_EQ(range.low, range.high);
    EXPECT_EQ(range.low, range.median);
    EXPECT_GT(range.low, 0.0);
  }
}

TEST(SizeCurve, hasTheKnownFloorOfOneParameter)
{
  const Found found = curveOf(uniformColumns(1, 2000, 5), firstQuarter(2000), settingsOf(400, {1.0}));
  // Kolmogorov's limit at 5 %, 1.358 sqrt(1 / n + 1 / m).
  EXPECT_NEAR(found[0].floor, 1.358 * std::sqrt(1.0 / 500 + 1.0 / 1500), 0.008);
}

TEST(SizeCurve, isTheSameOnAnyNumberOfThreads)
{
  const std::vector<Column> columns = columnsOf(3, 120);
  SizeCurveSettings settings = settingsOf(30);
  const Found one = curveOf(columns, firstQuarter(120), settings);
  for (const unsigned threads : {2u, 3u, 8u}) {
    settings.threads = threads;
    expectSame(one, curveOf(columns, firstQuarter(120), settings));
  }
}

TEST(SizeCurve, isTheSameInSlicesOfAnySize)
{
  const std::vector<Column> columns = columnsOf(3, 120);
  const Found atOnce = curveOf(columns, firstQuarter(120), settingsOf(30), 1000);
  for (const std::size_t slice : {1u, 3u, 0u})
    expectSame(atOnce, curveOf(columns, firstQuarter(120), settingsOf(30), slice));
}

TEST(SizeCurve, takesAtLeastOneRunOfEachSide)
{
  const Found found = curveOf(columnsOf(1, 8), firstQuarter(8), settingsOf(8, {0.01}));
  EXPECT_EQ(found[0].passing, 1u);
  EXPECT_EQ(found[0].others, 1u);
  EXPECT_EQ(found[0].parameters[0].median, 1.0);
}

TEST(SizeCurve, ofAllRunsPassingOrNoneIsFlat)
{
  for (const unsigned char mark : {0, 1}) {
    const Found found = curveOf(columnsOf(1, 40), Marks(40, mark), settingsOf(40));
    EXPECT_EQ(found[3].parameters[0].high, 0.0);
    EXPECT_EQ(found[3].floor, 0.0);
  }
}

TEST(SizeCurve, ofNoRunsParametersSharesOrSubsamplesIsEmpty)
{
  EXPECT_EQ(curveOf({{}}, {}, settingsOf(8, {0.5}))[0].passing, 0u);
  EXPECT_TRUE(curveOf({}, Marks(5, 1), settingsOf(8))[0].parameters.empty());
  EXPECT_TRUE(curveOf(columnsOf(1, 8), firstQuarter(8), settingsOf(8, {})).empty());
  const Found none = curveOf(columnsOf(1, 8), firstQuarter(8), settingsOf(0));
  EXPECT_EQ(none[0].parameters[0].median, 0.0);
  EXPECT_EQ(none[0].floor, std::numeric_limits<double>::infinity());
}

TEST(SizeCurve, refusesSharesOutsideZeroToOne)
{
  const std::vector<ComparedParameter> compared = comparedNumbers(columnsOf(1, 8));
  for (const double share : {0.0, -0.5, 1.5, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_THROW(SizeCurve(compared, firstQuarter(8), settingsOf(8, {share})), std::invalid_argument);
}

} // namespace runsieve::test
