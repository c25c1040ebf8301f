#pragma once

#include <vector>

namespace runsieve {

/// How far a sample is from an even one: the smallest s for which there are a start and a width of strata so
/// that the k-th of n ascending values, counted from 0, lies between the strata's ends k - s and k + 1 + s. 0
/// or less if each of n strata of equal width holds one value, as in a Latin hypercube (McKay, Beckman and
/// Conover, Technometrics 21, 1979); about the root of n for independent draws. Infinite for an infinite
/// value or a single one.
[[nodiscard]] double unevenness(std::vector<double> const& ascending);

} // namespace runsieve
