#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// The runs that have a value of one parameter, in the order of that value. Found once per scan, it turns
/// every comparison of two sets of runs into one pass.
struct OrderedValues
{
  std::vector<std::uint32_t> order; ///< positions of runs, by ascending value, then by position
  /// For each group of runs with equal values, one past its last place in `order`; ascending, so that the
  /// last is the number of runs. -0.0 and 0.0 are equal.
  std::vector<std::uint32_t> groupEnds;

  /// Whether some runs share a value.
  [[nodiscard]] bool tied() const { return groupEnds.size() < order.size(); }
};

/// \param values one per run; runs whose value is NaN are left out
[[nodiscard]] OrderedValues orderedValues(double const* values, std::size_t runs);

} // namespace runsieve
