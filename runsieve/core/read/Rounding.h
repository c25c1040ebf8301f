#pragma once

#include <algorithm>
#include <cmath>

namespace runsieve {

/// Share of a number by which rounding may change it, as when a time is added up or printed with ten digits.
inline constexpr double relativeRounding = 1e-9;

/// Whether two numbers are one but for rounding.
[[nodiscard]] inline bool equalButForRounding(double a, double b)
{
  return a == b || (std::isfinite(a) && std::isfinite(b) &&
                    std::fabs(a - b) <= relativeRounding * std::max(std::fabs(a), std::fabs(b)));
}

} // namespace runsieve
