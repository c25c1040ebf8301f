#include <runsieve/core/kernels/ParameterOrder.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace runsieve {

namespace {

bool allEqual(double const* values, long long count, double value)
{
  std::uint64_t expected;
  std::memcpy(&expected, &value, sizeof expected);
  std::uint64_t difference = 0;
  for (long long i = 0; i < count; ++i) {
    std::uint64_t bits;
    std::memcpy(&bits, values + i, sizeof bits);
    difference |= bits ^ expected;
  }
  return difference == 0;
}

} // namespace

ParameterOrder::ParameterOrder(double const* column, long long rows, long long stride)
{
  const long long runs = (rows + stride - 1) / stride;
  runValue.resize(static_cast<std::size_t>(runs));
  constant = true;
  for (long long run = 0; run < runs; ++run) {
    const long long first = run * stride;
    const double value = column[first];
    runValue[static_cast<std::size_t>(run)] = value;
    constant = constant && allEqual(column + first, std::min(stride, rows - first), value);
  }

  std::vector<std::pair<double, std::int32_t>> pairs(runValue.size());
  for (std::size_t run = 0; run < pairs.size(); ++run)
    pairs[run] = {runValue[run], static_cast<std::int32_t>(run)};
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

bool ParameterOrder::agreesWith(std::vector<RunPart> const& parts, double const* gathered) const
{
  for (RunPart part : parts) {
    if (!allEqual(gathered, part.count, runValue[static_cast<std::size_t>(part.run)])) return false;
    gathered += part.count;
  }
  return true;
}

std::vector<RunPart> runParts(RowSpans const& rows, long long stride)
{
  std::vector<RunPart> parts;
  parts.reserve(rows.spans().size());
  long long run = 0;
  for (RowSpan span : rows.spans()) {
    long long row = span.first;
    const long long end = span.first + span.count;
    if (row >= (run + 1) * stride) run = row / stride;
    for (; row < end; ++run) {
      const long long part = std::min(end, (run + 1) * stride) - row;
      parts.push_back({static_cast<std::int32_t>(run), static_cast<std::int32_t>(part)});
      row += part;
    }
    --run; // the next span may begin in the same run
  }
  return parts;
}

} // namespace runsieve
