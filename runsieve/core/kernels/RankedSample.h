#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// The range over which a parameter's distribution is shown.
struct ParameterRange
{
  double lower = 0.0;
  double upper = 0.0; ///< may be infinite
  double width = 0.0; ///< finite also for an infinite upper end, unless the data are not
  bool degenerate =
      false; ///< all values coincide with an empty range, which was widened by 5 % to both sides
};

/// Declared bounds of a parameter.
struct ParameterBound
{
  double lower;
  double upper;
};

/// The range of a sorted sample. With a bound, its lower end stands and its upper end gives way to larger
/// values; without one (null) the sample's ends are taken. An empty sample has the bound itself, or 0.
RUNSIEVE_CORE_EXPORT ParameterRange rangeOf(std::vector<double> const& sorted, ParameterBound const* bound);

/// Brings a sample of distinct values to `count` values by interpolating its quantile function; a sample of
/// that size is returned as it is. Samples of parameters on a lattice have fewer distinct values than others
/// in the same table; interpolated they keep their shape, and the two-sample walk, which meets no long runs
/// of ties, stays meaningful. An empty sample becomes zeros.
RUNSIEVE_CORE_EXPORT std::vector<double> stretchTo(std::vector<double> const& sorted, std::size_t count);

/// A sample at the length that all parameters share, with its range.
struct AlignedSample
{
  std::vector<double> sorted;
  ParameterRange range;
};

/// Brings a sample of distinct values to a common length. One without values among others that have some
/// becomes a step in the middle, the same for every set of runs.
RUNSIEVE_CORE_EXPORT AlignedSample alignSample(std::vector<double> const& sorted, std::size_t length,
                                               ParameterBound const* bound);

/// The sorted values of a sample as they are shown and compared; an array of sorted.size() values. Those of a
/// degenerate range are spread evenly over the widened range.
RUNSIEVE_CORE_EXPORT void spreadValues(std::vector<double> const& sorted, ParameterRange const& range,
                                       double* values);

/// Ranks and sorted values of a sample; arrays of sorted.size() values. A degenerate range shows a single
/// step in the middle of the widened range.
RUNSIEVE_CORE_EXPORT void rankSample(std::vector<double> const& sorted, ParameterRange const& range,
                                     double* rank, double* values);

} // namespace runsieve
