#include <runsieve/core/inference/Stability.h>

#include "RecordedRuns.h"
#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::test {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
using Marks = std::vector<unsigned char>;
using Found = std::vector<DistanceStability>;

StabilitySettings settingsOf(std::size_t resamples, std::size_t top = 0, unsigned threads = 1)
{
  StabilitySettings settings;
  settings.resamples = resamples;
  settings.top = top;
  settings.threads = threads;
  return settings;
}

Found stabilityOf(std::vector<Column> const& columns, Marks const& passing, StabilitySettings const& settings,
                  std::size_t slice = 0)
{
  const std::vector<ComparedParameter> compared = comparedNumbers(columns);
  Stability stability(compared, passing, settings);
  while (!stability.done()) stability.advance(slice);
  return stability.parameters();
}

void expectSame(Found const& a, Found const& b)
{
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t p = 0; p < a.size(); ++p) {
    EXPECT_EQ(a[p].lower, b[p].lower);
    EXPECT_EQ(a[p].upper, b[p].upper);
    EXPECT_EQ(a[p].topShare, b[p].topShare);
  }
}

/// One parameter; its passing runs, the first of all, reach up to 1 - distance, the others up to 1.
Column cutColumn(std::size_t passing, std::size_t runs, double distance, std::uint64_t seed)
{
  Column column = uniformColumns(1, runs, seed)[0];
  for (std::size_t run = 0; run < passing; ++run) column[run] *= 1.0 - distance;
  return column;
}

Marks firstRuns(std::size_t passing, std::size_t runs)
{
  return runsWhere(runs, [&](std::size_t run) { return run < passing; });
}

/// Of 200 scans, those whose interval does not hold the true distance.
int misses(std::size_t passing, std::size_t runs, double distance)
{
  int missed = 0;
  for (std::uint64_t scan = 0; scan < 200; ++scan) {
    const DistanceStability found =
        stabilityOf({cutColumn(passing, runs, distance, scan)}, firstRuns(passing, runs), settingsOf(200))[0];
    missed += found.lower > distance || found.upper < distance;
  }
  return missed;
}

} // namespace

TEST(Stability, knowsTheDistancesThatRFindsWithTiesMissingAndInfiniteValues)
{
  const RecordedRuns recorded = recordedRuns();
  ASSERT_EQ(recorded.distances.size(), 4u);
  const Found found = stabilityOf(recorded.columns, recorded.passing, settingsOf(8));
  for (std::size_t p = 0; p < 4; ++p) EXPECT_NEAR(found[p].distance, recorded.distances[p], 1e-14);
}

TEST(Stability, coversTheTrueDistance)
{
  // More than 20 of 200 miss in 0.1 % of seeds at an error of 5 %.
  EXPECT_LE(misses(30, 120, 0.0), 20);
  EXPECT_LE(misses(30, 120, 0.1), 20);
  EXPECT_LE(misses(30, 120, 0.4), 20);
}

TEST(Stability, hasNarrowerIntervalsForMoreRunsAndWiderOnesForMoreConfidence)
{
  auto widthOf = [](std::size_t runs, double confidence) {
    StabilitySettings settings = settingsOf(400);
    settings.confidence = confidence;
    const DistanceStability found =
        stabilityOf({cutColumn(runs / 4, runs, 0.3, 1)}, firstRuns(runs / 4, runs), settings)[0];
    EXPECT_LT(found.lower, found.distance);
    EXPECT_GT(found.upper, found.distance);
    return found.upper - found.lower;
  };
  EXPECT_LT(widthOf(4000, 0.95), 0.5 * widthOf(400, 0.95));
  EXPECT_GT(widthOf(400, 0.99), widthOf(400, 0.8));
}

TEST(Stability, keepsAParameterThatStandsOutAmongTheTop)
{
  std::vector<Column> columns = uniformColumns(6, 400, 3);
  columns[4] = cutColumn(100, 400, 0.6, 3);
  const Found one = stabilityOf(columns, firstRuns(100, 400), settingsOf(200, 1));
  EXPECT_EQ(one[4].topShare, 1.0);
  EXPECT_EQ(one[0].topShare, 0.0);
}

TEST(Stability, sharesTheTopAmongParametersThatDifferAlike)
{
  std::vector<Column> columns;
  for (std::uint64_t p = 0; p < 4; ++p) columns.push_back(cutColumn(200, 800, p < 3 ? 0.3 : 0.0, 50 + p));
  const Found found = stabilityOf(columns, firstRuns(200, 800), settingsOf(400, 2));
  double sum = 0.0;
  for (std::size_t p = 0; p < 3; ++p) {
    EXPECT_GT(found[p].topShare, 0.02);
    EXPECT_LT(found[p].topShare, 1.0);
    sum += found[p].topShare;
  }
  EXPECT_EQ(found[3].topShare, 0.0);
  EXPECT_DOUBLE_EQ(sum, 2.0);
}

TEST(Stability, putsTheFormerOfEqualParametersAmongTheTop)
{
  const Column column = cutColumn(20, 60, 0.3, 4);
  const Found found = stabilityOf({column, column}, firstRuns(20, 60), settingsOf(40, 1));
  EXPECT_EQ(found[0].topShare, 1.0);
  EXPECT_EQ(found[1].topShare, 0.0);
}

TEST(Stability, putsAllAmongATopOfMoreParametersThanThereAre)
{
  for (DistanceStability const& found :
       stabilityOf(uniformColumns(3, 40, 5), firstRuns(10, 40), settingsOf(20, 99)))
    EXPECT_EQ(found.topShare, 1.0);
}

TEST(Stability, isTheSameOnAnyNumberOfThreads)
{
  std::vector<Column> columns = uniformColumns(5, 200, 6);
  columns[2][7] = NONE;
  const Found one = stabilityOf(columns, firstRuns(60, 200), settingsOf(99, 2, 1));
  for (const unsigned threads : {2u, 3u, 8u})
    expectSame(one, stabilityOf(columns, firstRuns(60, 200), settingsOf(99, 2, threads)));
}

TEST(Stability, isTheSameInSlicesOfAnySize)
{
  const std::vector<Column> columns = uniformColumns(5, 200, 7);
  const Found atOnce = stabilityOf(columns, firstRuns(60, 200), settingsOf(100, 2), 1000);
  for (const std::size_t slice : {1u, 5u, 0u})
    expectSame(atOnce, stabilityOf(columns, firstRuns(60, 200), settingsOf(100, 2, 2), slice));
}

TEST(Stability, doesNotDependOnResamplesBeyondThoseAskedFor)
{
  const std::vector<Column> columns = {cutColumn(20, 50, 0.8, 8)};
  const Found nine = stabilityOf(columns, firstRuns(20, 50), settingsOf(9));
  const Found ten = stabilityOf(columns, firstRuns(20, 50), settingsOf(10));
  EXPECT_GT(nine[0].lower, 0.0);
  EXPECT_NE(nine[0].lower, ten[0].lower);
}

TEST(Stability, ofSeparateRangesIsSure)
{
  Column column = uniformColumns(1, 60, 9)[0];
  for (std::size_t run = 0; run < 30; ++run) column[run] += 2.0;
  const DistanceStability found = stabilityOf({column}, firstRuns(30, 60), settingsOf(100))[0];
  EXPECT_EQ(found.distance, 1.0);
  EXPECT_EQ(found.upper, 1.0);
  EXPECT_GT(found.lower, 0.5);
}

TEST(Stability, ofEqualValuesIsNoDistance)
{
  const DistanceStability found = stabilityOf({Column(50, 3.0)}, firstRuns(20, 50), settingsOf(50))[0];
  EXPECT_EQ(found.distance, 0.0);
  EXPECT_EQ(found.lower, 0.0);
}

TEST(Stability, knowsNothingIfAllOrNoRunsPass)
{
  for (const std::size_t passing : {0u, 40u}) {
    const DistanceStability found =
        stabilityOf(uniformColumns(1, 40, 10), firstRuns(passing, 40), settingsOf(20))[0];
    EXPECT_EQ(found.distance, 0.0);
    EXPECT_EQ(found.lower, 0.0);
    EXPECT_EQ(found.upper, 1.0);
  }
}

TEST(Stability, knowsNothingOfFewerThanThreeRunsOnASide)
{
  for (const std::size_t passing : {1u, 2u, 38u, 39u}) {
    const DistanceStability found =
        stabilityOf({cutColumn(passing, 40, 0.5, 11)}, firstRuns(passing, 40), settingsOf(100))[0];
    EXPECT_EQ(found.lower, 0.0) << passing;
    EXPECT_EQ(found.upper, 1.0) << passing;
  }
}

TEST(Stability, ofTextsDoesNotDependOnTheirOrder)
{
  // 23 of 30 passing runs have one text, and 30 of 90 others, all of which have one of three.
  Column column(120);
  for (std::size_t run = 0; run < 120; ++run) column[run] = static_cast<double>(run % 3);
  for (std::size_t run = 0; run < 30; ++run) column[run] = run % 2 == 0 ? 1.0 : static_cast<double>(run % 4);
  auto found = [&](std::vector<double> const& numbers) {
    Column numbered(120);
    for (std::size_t run = 0; run < 120; ++run)
      numbered[run] = numbers[static_cast<std::size_t>(column[run])];
    const std::vector<ComparedParameter> compared = {
        {orderedValues(numbered.data(), numbered.size()), Steps::EACH_GROUP}};
    Stability stability(compared, firstRuns(30, 120), settingsOf(200, 1));
    while (!stability.done()) stability.advance();
    return stability.parameters();
  };
  const Found first = found({0.0, 1.0, 2.0, 3.0});
  expectSame(first, found({2.0, 0.0, 3.0, 1.0}));
  const double share = 23.0 / 30.0;
  EXPECT_NEAR(first[0].distance, share - 1.0 / 3.0, 1e-14);
  EXPECT_LT(first[0].lower, first[0].distance);
  const double error = std::sqrt(share * (1.0 - share) / 30.0 + 2.0 / 9.0 / 90.0);
  EXPECT_NEAR(first[0].upper, first[0].distance + 1.959963985 * error, 1e-8);
}

TEST(Stability, leavesOutRunsWithoutAValue)
{
  Column with = cutColumn(30, 90, 0.4, 12);
  Column shorter;
  for (std::size_t run = 0; run < 90; ++run) {
    if (run % 3 == 0)
      with[run] = NONE;
    else
      shorter.push_back(with[run]);
  }
  const DistanceStability all = stabilityOf({with}, firstRuns(30, 90), settingsOf(800))[0];
  const DistanceStability some = stabilityOf({shorter}, firstRuns(20, 60), settingsOf(800))[0];
  EXPECT_EQ(all.distance, some.distance);
  EXPECT_EQ(all.upper, some.upper);
  EXPECT_NEAR(all.lower, some.lower, 0.05);
}

TEST(Stability, ofAParameterWithoutValuesIsNotKnown)
{
  const DistanceStability found = stabilityOf({Column(20, NONE)}, firstRuns(10, 20), settingsOf(8, 1))[0];
  EXPECT_EQ(found.distance, 0.0);
  EXPECT_EQ(found.upper, 1.0);
}

TEST(Stability, ofNoRunsOrParametersIsEmpty)
{
  EXPECT_TRUE(stabilityOf({}, {}, settingsOf(10)).empty());
  EXPECT_EQ(stabilityOf({{}}, {}, settingsOf(10))[0].upper, 1.0);
}

TEST(Stability, withoutResamplesKnowsTheDistanceOnly)
{
  const Found found = stabilityOf({cutColumn(20, 60, 0.5, 13)}, firstRuns(20, 60), settingsOf(0, 1));
  EXPECT_GT(found[0].distance, 0.3);
  EXPECT_EQ(found[0].lower, 0.0);
  EXPECT_EQ(found[0].upper, 1.0);
  EXPECT_EQ(found[0].topShare, 0.0);
}

TEST(Stability, refusesAConfidenceOutsideZeroToOneAndOrdersOfMoreRuns)
{
  const std::vector<ComparedParameter> compared = comparedNumbers(uniformColumns(1, 5, 1));
  for (const double confidence : {0.0, 1.0, -1.0, NONE}) {
    StabilitySettings settings;
    settings.confidence = confidence;
    EXPECT_THROW(Stability(compared, Marks(5, 1), settings), std::invalid_argument);
  }
  EXPECT_THROW(Stability(compared, Marks(4, 1)), std::invalid_argument);
}

} // namespace runsieve::test
