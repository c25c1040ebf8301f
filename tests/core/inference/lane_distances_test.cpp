#include <runsieve/core/inference/LaneDistances.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

/// Share of the runs, counted as often as they are in a lane, whose value is chosen.
template <class Choice>
double shareOf(Column const& values, LaneCounts const& counts, std::size_t lane, double sign,
               Choice const& isChosen)
{
  double chosen = 0.0;
  double all = 0.0;
  for (std::size_t run = 0; run < values.size(); ++run) {
    const double count = std::max(sign * counts[run].of[lane], 0.0);
    if (std::isnan(values[run])) continue;
    all += count;
    if (isChosen(values[run])) chosen += count;
  }
  return all > 0.0 ? chosen / all : 0.0;
}

double differenceAt(Column const& values, LaneCounts const& counts, std::size_t lane, double value,
                    Steps steps)
{
  const auto isChosen = [&](double other) {
    return steps == Steps::CUMULATIVE ? other <= value : other == value;
  };
  return shareOf(values, counts, lane, 1.0, isChosen) - shareOf(values, counts, lane, -1.0, isChosen);
}

/// Compares what is found with shares that are counted value by value.
void expectShares(Steps steps)
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
    const ComparedParameter parameter{orderedValues(column.data(), runs), steps};
    const std::vector<double> given = shareDifferences(parameter, passing);
    LaneCounts once(runs);
    for (std::size_t run = 0; run < runs; ++run) once[run].of[0] = passing[run] ? 1.0 : -1.0;
    const LaneDistances found = laneDistances(parameter, counts, laneSteps(counts), given);
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      double distance = 0.0;
      double change = 0.0;
      for (const double value : column) {
        if (std::isnan(value)) continue;
        const double difference = differenceAt(column, counts, lane, value, steps);
        distance = std::max(distance, std::abs(difference));
        change = std::max(change, std::abs(difference - differenceAt(column, once, 0, value, steps)));
      }
      EXPECT_NEAR(found.distance[lane], distance, 1e-14);
      EXPECT_NEAR(found.change[lane], change, 1e-14);
    }
  }
}

} // namespace

TEST(LaneDistances, areThoseOfCumulativeSharesCountedValueByValue)
{
  expectShares(Steps::CUMULATIVE);
}

TEST(LaneDistances, areThoseOfTheSharesOfEachTextCountedTextByText)
{
  expectShares(Steps::EACH_GROUP);
}

TEST(LaneDistances, areZeroWithTheLargestChangeWhereOneSideHasNoRuns)
{
  const ComparedParameter parameter{orderedValues(Column{1.0, 2.0}.data(), 2)};
  LaneCounts counts(2);
  counts[0].of[0] = 1.0;
  const LaneDistances found = laneDistances(parameter, counts, laneSteps(counts), {0.0, 0.0});
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    EXPECT_EQ(found.distance[lane], 0.0);
    EXPECT_EQ(found.change[lane], 1.0);
  }
}

} // namespace runsieve::test
