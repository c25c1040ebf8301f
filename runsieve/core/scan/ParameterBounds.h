#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace runsieve {

/// Smallest and largest value of a parameter column, which is constant within each run; NaN is left out.
/// (NaN, NaN) if there is no other value.
[[nodiscard]] inline std::pair<double, double> boundsOfRuns(double const* column, std::size_t runs,
                                                            std::size_t times)
{
  double low = std::numeric_limits<double>::quiet_NaN();
  double high = low;
  for (std::size_t row = 0; row < runs * times; row += times) {
    low = std::fmin(low, column[row]);
    high = std::fmax(high, column[row]);
  }
  return {low, high};
}

} // namespace runsieve
