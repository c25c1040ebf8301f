#include <runsieve/stats/ParameterOrder.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
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
  for (std::size_t run = 0; run < pairs.size(); ++run) pairs[run] = {runValue[run], static_cast<std::int32_t>(run)};
  auto end = std::partition(pairs.begin(), pairs.end(), [](auto const& p) { return !std::isnan(p.first); });
  std::sort(pairs.begin(), end);
  order.reserve(pairs.size());
  sortedValues.reserve(pairs.size());
  for (auto const& [value, run] : pairs) {
    sortedValues.push_back(value);
    order.push_back(run);
  }
}

void ParameterOrder::distinctOf(unsigned char const* mask, std::vector<double>& out) const
{
  out.resize(order.size() + 1);
  std::size_t count = 0;
  double* values = out.data();
  for (std::size_t k = 0; k < order.size(); ++k) {
    const double value = sortedValues[k];
    // Branch-free: whether a run is marked cannot be predicted.
    const bool repeated = count > 0 && values[count - 1] == value;
    values[count] = value;
    count += static_cast<std::size_t>(mask[order[k]] & static_cast<unsigned char>(!repeated));
  }
  out.resize(count);
}

bool ParameterOrder::agreesWith(RowSpans const& rows, double const* gathered, long long stride) const
{
  for (RowSpan span : rows.spans()) {
    long long row = span.first;
    long long left = span.count;
    while (left > 0) {
      const long long run = row / stride;
      const long long part = std::min(left, (run + 1) * stride - row);
      if (!allEqual(gathered, part, runValue[static_cast<std::size_t>(run)])) return false;
      gathered += part;
      row += part;
      left -= part;
    }
  }
  return true;
}

} // namespace runsieve
