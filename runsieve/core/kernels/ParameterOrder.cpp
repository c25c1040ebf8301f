#include <runsieve/core/kernels/ParameterOrder.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace runsieve {

ParameterOrder::ParameterOrder(RunValues const& runs)
{
  std::vector<double> const& values = runs.values();
  std::vector<std::pair<double, std::int32_t>> pairs(values.size());
  for (std::size_t run = 0; run < pairs.size(); ++run)
    pairs[run] = {values[run], static_cast<std::int32_t>(run)};
  auto end = std::partition(pairs.begin(), pairs.end(), [](auto const& p) { return !std::isnan(p.first); });
  std::sort(pairs.begin(), end);
  numbers = static_cast<std::size_t>(end - pairs.begin());
  order.reserve(pairs.size());
  sortedValues.reserve(pairs.size());
  for (auto const& [value, run] : pairs) {
    ties = ties || (!sortedValues.empty() && sortedValues.back() == value);
    sortedValues.push_back(value);
    order.push_back(run);
  }
}

void ParameterOrder::distinctOf(unsigned char const* mask, std::vector<double>& out) const
{
  out.resize(order.size() + 1);
  double* values = out.data();
  std::size_t count = 0;
  // Branch-free: whether a run is marked cannot be predicted.
  if (!ties) {
    for (std::size_t k = 0; k < numbers; ++k) {
      values[count] = sortedValues[k];
      count += mask[order[k]];
    }
  } else {
    double last = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t k = 0; k < numbers; ++k) {
      const double value = sortedValues[k];
      const bool taken = mask[order[k]] != 0 && value != last;
      values[count] = value;
      count += static_cast<std::size_t>(taken);
      last = taken ? value : last;
    }
  }
  if (std::any_of(order.begin() + static_cast<std::ptrdiff_t>(numbers), order.end(),
                  [mask](std::int32_t run) { return mask[run] != 0; }))
    values[count++] = std::numeric_limits<double>::quiet_NaN();
  out.resize(count);
}

} // namespace runsieve
