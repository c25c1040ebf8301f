#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Resamples of the runs of a scan that are compared in one pass, one per lane of a vector.
constexpr std::size_t LANES = 8;

/// How often each run is in each of LANES resamples: run after run, LANES numbers each; positive for runs
/// that pass there, negative for others, 0 for runs that are not in it.
using LaneCounts = std::vector<double>;

/// Number of passing runs and of others in each lane.
struct LaneSizes
{
  double passing[LANES] = {};
  double others[LANES] = {};
};

[[nodiscard]] LaneSizes laneSizes(LaneCounts const& counts);

/// Writes the two-sample Kolmogorov-Smirnov statistic of each lane: the largest distance between the
/// cumulative shares of passing runs and of others, both stepped over all runs of equal value at once. A
/// run counts as often as it is in the resample. 0 in a lane in which no passing run, or no other, has a
/// value.
///
/// One pass over the runs in the order of the values. Distances are kept as whole numbers, exact as long as
/// the product of the two numbers of runs is below 2^53, so that all machines give the same.
/// \param sizes laneSizes(counts), which saves a pass for a parameter that all runs have
void laneDistances(OrderedValues const& ordered, LaneCounts const& counts, LaneSizes const& sizes,
                   double* distances);

} // namespace runsieve
