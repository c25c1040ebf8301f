#pragma once

#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <array>
#include <cstddef>
#include <vector>

namespace runsieve::app {

/// Quantiles of an output over some runs at each time; NaN at times at which none of them has a value.
struct RunBands
{
  /// 5, 25, 50, 75 and 95 %
  std::array<std::vector<double>, 5> quantiles;
};

/// Quantiles between two values are interpolated linearly (R. J. Hyndman, Y. Fan, American Statistician 50,
/// 1996, definition 7).
[[nodiscard]] RunBands bandsOf(Scan const& scan, std::size_t output, RunSet const& runs);

} // namespace runsieve::app
