#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// Sorts ascending. NaN values sort last.
void sortSample(std::vector<double>& values);

/// The distinct values, ascending. All NaN together are one value, which stands last.
std::vector<double> sortedDistinct(double const* values, std::size_t count);

} // namespace runsieve
