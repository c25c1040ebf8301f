#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstdint>
#include <limits>

namespace runsieve {

/// How one parameter differs between the runs that pass and the others. A number that is not defined, or is
/// beyond the range of doubles, is NaN.
///
/// F is the empirical distribution function: the share of the runs with at most a value. It steps once for
/// all runs that share a value.
struct SampleComparison
{
  static constexpr double UNDEFINED = std::numeric_limits<double>::quiet_NaN();

  std::uint32_t passing = 0; ///< passing runs that have a value
  std::uint32_t others = 0;  ///< other runs that have a value

  double passingMedian = UNDEFINED; ///< the mean of the two middle values of an even number; NaN without runs
  double othersMedian = UNDEFINED;  ///< likewise

  /// The two-sided two-sample Kolmogorov-Smirnov statistic (Smirnov, Bull. Moscow Univ. 2, 1939) as an exact
  /// integer: F of the others less F of the passing, times passing * others, where its magnitude is largest.
  /// Positive where the passing runs are the larger ones there. 0 if a side is empty.
  std::int64_t difference = 0;
  double d = UNDEFINED;     ///< difference / (passing * others), in [-1, 1]; NaN if a side is empty
  double value = UNDEFINED; ///< where it stands; the lowest of several such values; NaN if d is 0 or NaN

  /// The area between both distribution functions (the Wasserstein-1 distance) over the range of all compared
  /// runs, in [0, 1]; NaN if a side is empty, all values are equal, or one is infinite.
  double area = UNDEFINED;
  /// Median of the passing less that of the others, over the interquartile range of all compared runs.
  /// Quartiles are those of type 7 (Hyndman and Fan, Am. Stat. 50, 1996). NaN if a side is empty, or if the
  /// interquartile range is 0 or infinite.
  double medianShift = UNDEFINED;
  /// The range of the passing over that of all compared runs, in [0, 1]; NaN if none passes, all values are
  /// equal, or one is infinite.
  double rangeShare = UNDEFINED;
};

/// Compares in one pass over the ordered runs; those left out of `ordered` are not compared.
///
/// \param ordered the order of `values`, of all runs or of any part of them
/// \param values one per run
/// \param passes one per run: 0 for the others
[[nodiscard]] SampleComparison compareSamples(OrderedValues const& ordered, double const* values,
                                              std::uint8_t const* passes);

} // namespace runsieve
