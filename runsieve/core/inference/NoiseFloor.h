#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace runsieve {

/// The statistic beyond which a permutation test has p <= level, where p = (1 + number of permutations at or
/// above the statistic) / (1 + permutations): beyond the floor and p <= level are the same. Infinite if the
/// permutations are too few for the level.
/// \param maxima largest statistic of each permutation
[[nodiscard]] inline double noiseFloorOf(std::vector<double> maxima, double level)
{
  const double size = static_cast<double>(maxima.size());
  // So many permutations may reach a statistic beyond the floor. The margin covers the rounding of the
  // product.
  const double allowed = std::floor(level * (1.0 + size) * (1.0 + 1e-12)) - 1.0;
  if (!(allowed >= 0.0)) return std::numeric_limits<double>::infinity();
  if (allowed >= size) return -std::numeric_limits<double>::infinity();
  std::sort(maxima.begin(), maxima.end());
  return maxima[maxima.size() - 1 - static_cast<std::size_t>(allowed)];
}

} // namespace runsieve
