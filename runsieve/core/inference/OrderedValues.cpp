#include <runsieve/core/inference/OrderedValues.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

OrderedValues orderedValues(double const* values, std::size_t runs)
{
  OrderedValues result;
  result.order.reserve(runs);
  for (std::size_t run = 0; run < runs; ++run)
    if (!std::isnan(values[run])) result.order.push_back(static_cast<std::uint32_t>(run));
  std::stable_sort(result.order.begin(), result.order.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return values[a] < values[b]; });
  for (std::size_t i = 0; i < result.order.size(); ++i)
    if (i + 1 == result.order.size() || values[result.order[i]] < values[result.order[i + 1]])
      result.groupEnds.push_back(static_cast<std::uint32_t>(i + 1));
  return result;
}

} // namespace runsieve
