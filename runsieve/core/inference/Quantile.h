#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace runsieve {

/// The quantile of an ascending sample, between neighbouring values in proportion (type 7 of Hyndman and Fan,
/// Am. Stat. 50, 1996, which R and NumPy take by default).
/// \param sorted not empty
/// \param share from 0 to 1
[[nodiscard]] inline double quantileOf(std::vector<double> const& sorted, double share)
{
  const double position = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(position);
  if (below + 1 >= sorted.size()) return sorted.back();
  return sorted[below] + (position - std::floor(position)) * (sorted[below + 1] - sorted[below]);
}

} // namespace runsieve
