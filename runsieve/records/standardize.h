#pragma once

#include <runsieve/runsieve_export.h>

#include <vector>

/// Turns values into standard scores in place: their mean is subtracted and the result divided by their
/// standard deviation (n - 1 in its denominator), as R's scale() does. NaN and infinities count for neither
/// and stay. Values without spread, a single one too, become 0.
RUNSIEVE_EXPORT void standardize(std::vector<double>& values);
