#pragma once

namespace runsieve {

/// Two-sample comparison of one parameter.
struct KsStatistics
{
  double p; ///< p-value, at most 1
  double d; ///< statistic, in [0, 1]
};

} // namespace runsieve
