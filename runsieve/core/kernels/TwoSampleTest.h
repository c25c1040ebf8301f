#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>

namespace runsieve {

/// Two-sample Kolmogorov-Smirnov comparison of one parameter.
struct TwoSampleTest
{
  double p; ///< p-value, at most 1
  double d; ///< statistic, in [0, 1]
};

/// The statistic of two ascending samples as KolmogorovSmirnov::statistic() walks them; 0 if one is empty.
RUNSIEVE_CORE_EXPORT double sortedStatistic(double const* a, std::size_t nA, double const* b, std::size_t nB);

/// The p-value of a statistic of samples of nA and nB values, at their effective size nA nB / (nA + nB),
/// rounded down.
RUNSIEVE_CORE_EXPORT TwoSampleTest testOf(double statistic, std::size_t nA, std::size_t nB);

} // namespace runsieve
