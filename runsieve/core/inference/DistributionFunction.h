#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace runsieve {

/// The empirical distribution function of marked runs: each value that one of them has, ascending, with the
/// share of the marked runs that have it or a smaller one; the last share is 1. Empty if none has a value.
/// \param values one per run \param mask one per run, 1 for marked runs
[[nodiscard]] std::vector<std::pair<double, double>>
distributionFunction(OrderedValues const& ordered, double const* values, std::uint8_t const* mask);

} // namespace runsieve
