#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// Sorts ascending. NaN values sort last.
void sortSample(std::vector<double>& values);

/// The distinct values, ascending. Neighbours that are equal are skipped before the sort: the rows of a run
/// stand together and carry the same parameter value. Each NaN counts as distinct unless it follows another
/// NaN.
std::vector<double> sortedDistinct(double const* values, std::size_t count);

} // namespace runsieve
