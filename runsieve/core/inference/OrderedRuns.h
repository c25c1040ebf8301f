#pragma once

#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace runsieve {

/// \throw std::invalid_argument if an order names a run beyond `runs`
inline void checkRuns(OrderedValues const& ordered, std::size_t runs)
{
  for (const std::uint32_t run : ordered.order)
    if (run >= runs) throw std::invalid_argument("a parameter has more runs than the set");
}

inline void checkRuns(std::vector<OrderedValues> const& orders, std::size_t runs)
{
  for (OrderedValues const& ordered : orders) checkRuns(ordered, runs);
}

/// Positions of the runs whose mark is 1, or of those whose mark is 0, ascending.
[[nodiscard]] inline std::vector<std::uint32_t> runsMarked(std::vector<unsigned char> const& marks, bool mark)
{
  std::vector<std::uint32_t> runs;
  for (std::size_t run = 0; run < marks.size(); ++run)
    if ((marks[run] != 0) == mark) runs.push_back(static_cast<std::uint32_t>(run));
  return runs;
}

} // namespace runsieve
