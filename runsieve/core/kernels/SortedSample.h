#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Sorts ascending. NaN values sort last.
RUNSIEVE_CORE_EXPORT void sortSample(std::vector<double>& values);

/// The distinct values, ascending. All NaN together are one value, which stands last.
RUNSIEVE_CORE_EXPORT std::vector<double> sortedDistinct(double const* values, std::size_t count);

} // namespace runsieve
