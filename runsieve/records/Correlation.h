#pragma once

#include <cstddef>

namespace runsieve {

/// Pearson's correlation coefficient of two curves of n values, in [-1, 1]. 0 where it is not defined: for a
/// constant curve, a NaN or an infinity, and for fewer than two values.
double correlation(double const* x, double const* y, std::size_t n);

} // namespace runsieve
