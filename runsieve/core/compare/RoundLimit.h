#pragma once

#include <vector>

namespace runsieve {

/// The number of fewest decimal digits that separates the same values as a limit does, of those the nearest
/// to it; the limit itself if there is no shorter one.
/// \param values among which it is a limit, in any order; NaN and infinite ones count as they compare
/// \param limit finite \param isLow whether values at or above it are inside, else those at or below it
[[nodiscard]] double roundLimit(std::vector<double> const& values, double limit, bool isLow);

} // namespace runsieve
