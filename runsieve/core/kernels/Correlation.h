#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>

namespace runsieve {

/// Writes the deviations of a curve of n values from their mean, and returns the root of their squares' sum.
/// A power of two scales them so that no square leaves the range of a double. Returns 0, and writes zeros,
/// for a curve with which nothing correlates: a constant one, one with a NaN or an infinity, one of fewer
/// than two values.
RUNSIEVE_CORE_EXPORT double centre(double const* curve, std::size_t n, double* deviations);

/// The coefficient of two curves from the sum of products of their deviations and the roots that centre() has
/// returned, in [-1, 1]; 0 where it is not defined.
RUNSIEVE_CORE_EXPORT double correlation(double products, double rootX, double rootY);

/// Pearson's correlation coefficient of two curves of n values, in [-1, 1]; 0 where it is not defined.
RUNSIEVE_CORE_EXPORT double correlation(double const* x, double const* y, std::size_t n);

} // namespace runsieve
