#pragma once

#include <runsieve/core/inference/ComparedParameter.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Resamples of the runs of a scan that are compared in one pass, one per lane of a vector.
constexpr std::size_t LANES = 8;

/// A number of each lane, on a cache line of their own: runs are read in the order of a parameter's values.
struct alignas(LANES * sizeof(double)) LaneRow
{
  double of[LANES] = {};
};

/// How often each run is in each of LANES resamples, one entry per run: positive for runs that pass there,
/// negative for others, 0 for runs that are not in it.
using LaneCounts = std::vector<LaneRow>;

/// The counts of resamples as steps of a distance.
struct LaneSteps
{
  /// One entry per run: a passing run's count times the number of others, and the reverse. Whole numbers, so
  /// that sums are exact, and the same on all machines, as long as the product of the two numbers is below
  /// 2^53.
  std::vector<LaneRow> steps;
  double product[LANES] = {}; ///< of the numbers of passing runs and others
};

/// Steps of a parameter that all runs have.
[[nodiscard]] LaneSteps laneSteps(LaneCounts const& counts);

/// What one pass finds for each lane.
struct LaneDistances
{
  /// The largest distance between the shares of passing runs and of others: between the cumulative ones, both
  /// stepped over all runs of equal value at once, the two-sample Kolmogorov-Smirnov statistic; between those
  /// of each group of equal values for Steps::EACH_GROUP.
  double distance[LANES] = {};
  /// The largest change of that distance, with its sign, from the given one at the same value.
  double change[LANES] = {};
};

/// Compares passing runs and others in each lane; a run counts as often as it is in the resample. In a lane
/// in which no passing run, or no other, has a value the distance is 0 and the change 1, so that no
/// lower end of an interval is above 0.
///
/// One pass over the runs in the order of the values, and a few more for a parameter that not all runs have.
/// \param steps laneSteps(counts)
/// \param given shareDifferences() of the data, or as many zeros
[[nodiscard]] LaneDistances laneDistances(ComparedParameter const& parameter, LaneCounts const& counts,
                                          LaneSteps const& steps, std::vector<double> const& given);

/// Share of passing runs less that of others, one per group of equal values, cumulative or of each group; all
/// 0 if no passing run, or no other, has a value.
/// \param passing 0 or 1 per run
[[nodiscard]] std::vector<double> shareDifferences(ComparedParameter const& parameter,
                                                   std::vector<unsigned char> const& passing);

} // namespace runsieve
