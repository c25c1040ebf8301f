#pragma once

#include <vector>

namespace runsieve {

/// A limit rounded to the fewest decimal digits with which it still separates the same values; the limit
/// itself if no rounding does. Rounding is to the nearest number of so many digits, so that another one of as
/// few digits may separate them where this needs more.
/// \param values among which it is a limit, in any order; NaN and infinite ones count as they compare
/// \param limit finite \param isLow whether values at or above it are inside, else those at or below it
[[nodiscard]] double roundLimit(std::vector<double> const& values, double limit, bool isLow);

} // namespace runsieve
