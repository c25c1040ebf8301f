#include "app/explorer/runs/Extents.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace runsieve::app {

namespace {

constexpr double room = 0.04; ///< at each end of an axis of values

Extent extentOf(double const* values, std::size_t count)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Extent found{infinity, -infinity, infinity};
  for (std::size_t i = 0; i < count; ++i) {
    const double value = values[i];
    if (!std::isfinite(value)) continue;
    found.low = std::min(found.low, value);
    found.high = std::max(found.high, value);
    if (value > 0.0) found.lowestPositive = std::min(found.lowestPositive, value);
  }
  if (found.low > found.high) return {};
  if (found.lowestPositive == infinity) found.lowestPositive = 0.0;
  return found;
}

} // namespace

void Extents::reset(std::shared_ptr<Scan const> opened)
{
  scan = std::move(opened);
  known.clear();
}

Extent const& Extents::of(std::size_t output) const
{
  auto place = known.find(output);
  if (place == known.end()) {
    const bool isThere = scan && output < scan->outputs.size();
    place =
        known.emplace(output, isThere ? extentOf(scan->outputs[output].values.get(), scan->rows()) : Extent())
            .first;
  }
  return place->second;
}

AxisMap Extents::axis(std::size_t output, bool logarithmic) const
{
  Extent const& extent = of(output);
  if (!logarithmic || extent.lowestPositive <= 0.0) return AxisMap(extent.low, extent.high).widened(room);
  // Values that only just miss 0 would make an axis of hundreds of decades.
  constexpr double mostDecades = 1e-12;
  return AxisMap(std::max(extent.lowestPositive, extent.high * mostDecades), extent.high, true).widened(room);
}

AxisMap Extents::timeAxis() const
{
  if (!scan || scan->times.empty()) return {};
  return {scan->times.front(), scan->times.back()};
}

} // namespace runsieve::app
