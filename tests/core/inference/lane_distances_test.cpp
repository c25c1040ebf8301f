#include <runsieve/core/inference/LaneDistances.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

/// Share of the runs, counted as often as they are in a lane, up to a value.
double shareUpTo(Column const& values, LaneCounts const& counts, std::size_t lane, double sign, double value)
{
  double upTo = 0.0;
  double all = 0.0;
  for (std::size_t run = 0; run < values.size(); ++run) {
    const double count = std::max(sign * counts[run].of[lane], 0.0);
    if (std::isnan(values[run])) continue;
    all += count;
    if (values[run] <= value) upTo += count;
  }
  return all > 0.0 ? upTo / all : 0.0;
}

double differenceAt(Column const& values, LaneCounts const& counts, std::size_t lane, double value)
{
  return shareUpTo(values, counts, lane, 1.0, value) - shareUpTo(values, counts, lane, -1.0, value);
}

} // namespace

TEST(LaneDistances, areThoseOfCumulativeSharesCountedValueByValue)
{
  constexpr std::size_t runs = 60;
  RandomStream random(4, 4);
  std::vector<Column> columns = uniformColumns(3, runs, 1);
  for (double& value : columns[1]) value = std::floor(5.0 * value);
  for (std::size_t run = 0; run < runs; run += 4) columns[2][run] = std::numeric_limits<double>::quiet_NaN();
  LaneCounts counts(runs);
  for (std::size_t run = 0; run < runs; ++run)
    for (double& count : counts[run].of) count = (run < 20 ? 1.0 : -1.0) * random.below(4);
  const std::vector<unsigned char> passing = runsWhere(runs, [](std::size_t run) { return run < 20; });
  for (Column const& column : columns) {
    const OrderedValues ordered = orderedValues(column.data(), runs);
    const std::vector<double> given = shareDifferences(ordered, passing);
    LaneCounts once(runs);
    for (std::size_t run = 0; run < runs; ++run) once[run].of[0] = passing[run] ? 1.0 : -1.0;
    const LaneDistances found = laneDistances(ordered, counts, laneSteps(counts), given);
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      double distance = 0.0;
      double change = 0.0;
      for (const double value : column) {
        if (std::isnan(value)) continue;
        const double difference = differenceAt(column, counts, lane, value);
        distance = std::max(distance, std::abs(difference));
        change = std::max(change, std::abs(difference - differenceAt(column, once, 0, value)));
      }
      EXPECT_NEAR(found.distance[lane], distance, 1e-14);
      EXPECT_NEAR(found.change[lane], change, 1e-14);
    }
  }
}

TEST(LaneDistances, areZeroWithTheLargestChangeWhereOneSideHasNoRuns)
{
  const OrderedValues ordered = orderedValues(Column{1.0, 2.0}.data(), 2);
  LaneCounts counts(2);
  counts[0].of[0] = 1.0;
  const LaneDistances found = laneDistances(ordered, counts, laneSteps(counts), {0.0, 0.0});
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    EXPECT_EQ(found.distance[lane], 0.0);
    EXPECT_EQ(found.change[lane], 1.0);
  }
}

} // namespace runsieve::test
