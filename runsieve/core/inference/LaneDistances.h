#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Resamples of the runs of a scan that are compared in one pass, one per lane of a vector.
constexpr std::size_t LANES = 8;

/// A number of each lane, on a cache line of their own: runs are read in the order of a parameter's values.
struct alignas(LANES * sizeof(double)) LaneNumbers
{
  double of[LANES] = {};
};

/// How often each run is in each of LANES resamples, one entry per run: positive for runs that pass there,
/// negative for others, 0 for runs that are not in it.
using LaneCounts = std::vector<LaneNumbers>;

/// The counts of resamples as steps of a distance.
struct LaneSteps
{
  /// One entry per run: a passing run's count times the number of others, and the reverse. Whole numbers, so
  /// that sums are exact, and the same on all machines, as long as the product of the two numbers is below
  /// 2^53.
  std::vector<LaneNumbers> steps;
  double product[LANES] = {}; ///< of the numbers of passing runs and others
};

/// Steps of a parameter that all runs have.
[[nodiscard]] LaneSteps laneSteps(LaneCounts const& counts);

/// What one pass finds for each lane.
struct LaneDistances
{
  /// The two-sample Kolmogorov-Smirnov statistic: the largest distance between the cumulative shares of
  /// passing runs and of others, both stepped over all runs of equal value at once.
  double distance[LANES] = {};
  /// The largest change of that distance, with its sign, from the given one at the same value.
  double change[LANES] = {};
};

/// Compares passing runs and others in each lane; a run counts as often as it is in the resample. In a lane
/// in which no passing run, or no other, has a value the distance is 0 and the change the largest there can
/// be, 1.
///
/// One pass over the runs in the order of the values, and a few more for a parameter that not all runs have.
/// \param steps laneSteps(counts)
/// \param given cumulative share of passing runs less that of others, one per group of equal values
[[nodiscard]] LaneDistances laneDistances(OrderedValues const& ordered, LaneCounts const& counts,
                                          LaneSteps const& steps, std::vector<double> const& given);

/// Cumulative share of passing runs less that of others, one per group of equal values; all 0 if no passing
/// run, or no other, has a value.
/// \param passing 0 or 1 per run
[[nodiscard]] std::vector<double> shareDifferences(OrderedValues const& ordered,
                                                   std::vector<unsigned char> const& passing);

} // namespace runsieve
