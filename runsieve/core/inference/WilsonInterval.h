#pragma once

#include <cmath>
#include <cstddef>

namespace runsieve {

inline constexpr double normal99 = 2.5758293035489004; ///< two-sided normal quantile of 99 %

struct Interval
{
  double low;
  double high;
};

/// Where a share lies of which `count` of `trials` were seen (Wilson, J. Am. Statist. Assoc. 22, 1927).
/// \param trials at least 1
/// \param z two-sided normal quantile, normal99 for 99 %
[[nodiscard]] inline Interval wilsonInterval(std::size_t count, std::size_t trials, double z)
{
  double const n = static_cast<double>(trials);
  double const share = static_cast<double>(count) / n;
  double const shrunk = 1.0 + z * z / n;
  double const middle = (share + z * z / (2.0 * n)) / shrunk;
  double const half = z / shrunk * std::sqrt(share * (1.0 - share) / n + z * z / (4.0 * n * n));
  return {middle - half, middle + half};
}

} // namespace runsieve
