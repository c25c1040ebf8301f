#include <runsieve/core/kernels/RankedSample.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve {

ParameterRange rangeOf(std::vector<double> const& sorted, ParameterBound const* bound)
{
  ParameterRange range;
  const double last = sorted.empty() ? 0.0 : sorted.back();
  if (bound) {
    range.lower = bound->lower;
    range.upper = sorted.empty() || bound->upper > last ? bound->upper : last;
  } else if (!sorted.empty()) {
    range.lower = sorted.front();
    range.upper = last;
  }
  const bool open = !(range.upper < std::numeric_limits<double>::infinity());
  range.width = open ? 1.1 * last - range.lower : range.upper - range.lower;
  if (range.width == 0.0) {
    range.lower *= 0.95;
    range.upper *= 1.05;
    range.width = range.upper - range.lower;
    range.degenerate = true;
  }
  return range;
}

std::vector<double> stretchTo(std::vector<double> const& sorted, std::size_t count)
{
  if (sorted.size() == count) return sorted;
  if (sorted.empty()) return std::vector<double>(count, 0.0);
  std::vector<double> stretched(count);
  const double scale =
      count > 1 ? static_cast<double>(sorted.size() - 1) / static_cast<double>(count - 1) : 0.0;
  for (std::size_t j = 0; j < count; ++j) {
    const double position = static_cast<double>(j) * scale;
    const std::size_t below = static_cast<std::size_t>(position);
    const double fraction = position - static_cast<double>(below);
    const double from = sorted[below];
    const double to = below + 1 < sorted.size() ? sorted[below + 1] : from;
    stretched[j] = std::isfinite(from) && std::isfinite(to) ? from + fraction * (to - from) : from;
  }
  return stretched;
}

AlignedSample alignSample(std::vector<double> const& sorted, std::size_t length, ParameterBound const* bound)
{
  if (sorted.empty() && length > 0) return {std::vector<double>(length, 0.0), {0.0, 1.0, 1.0, true}};
  return {stretchTo(sorted, length), rangeOf(sorted, bound)};
}

void spreadValues(std::vector<double> const& sorted, ParameterRange const& range, double* values)
{
  if (!range.degenerate) {
    std::copy(sorted.begin(), sorted.end(), values);
    return;
  }
  const double size = static_cast<double>(sorted.size());
  for (std::size_t j = 0; j < sorted.size(); ++j)
    values[j] = static_cast<double>(j) * range.width / size + range.lower;
}

void rankSample(std::vector<double> const& sorted, ParameterRange const& range, double* rank, double* values)
{
  const std::size_t M = sorted.size();
  for (std::size_t j = 0; j < M; ++j)
    rank[j] =
        range.degenerate ? (j < M / 2 ? 0.0 : 1.0) : static_cast<double>(j + 1) / static_cast<double>(M);
  spreadValues(sorted, range, values);
}

} // namespace runsieve
