#pragma once

#include "app/explorer/charts/AxisMap.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace runsieve::app {

/// Times at which the points of a run are drawn. A scan of a single time has no lines: its runs are dashes
/// about that time, each of two points with the same value.
inline std::vector<double> drawnTimes(std::vector<double> const& times, AxisMap const& axis)
{
  if (times.size() != 1) return times;
  constexpr double half = 0.03; // of the axis
  const double middle = axis.place(times.front());
  return {axis.value(middle - half), axis.value(middle + half)};
}

/// The place among the values of a run of a point that is drawn.
inline std::size_t drawnValue(std::size_t point, std::size_t times)
{
  return std::min(point, times - 1);
}

} // namespace runsieve::app
