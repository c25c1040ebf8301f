#include "app/explorer/charts/AxisMap.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double largest = 1e300;     ///< of an end: the length of an axis must be a number
constexpr double smallest = 1e-300;   ///< of an end of a logarithmic axis
constexpr double shortest = 1e-12;    ///< axis, compared with its ends: below, floats have no ticks between
constexpr double decadesBelow = 1e-6; ///< where a logarithmic axis begins whose low end is not positive

void moveApart(double& low, double& high)
{
  const double size = std::max(std::fabs(low), std::fabs(high));
  if (high - low > shortest * size) return;
  const double middle = 0.5 * low + 0.5 * high;
  const double room = size > 0.0 ? std::max(0.5 * size * 0.1, smallest) : 0.5;
  low = middle - room;
  high = middle + room;
}

} // namespace

AxisMap::AxisMap(double low, double high, bool isLogarithmic) : logarithmic(isLogarithmic)
{
  if (!std::isfinite(low)) low = 0.0;
  if (!std::isfinite(high)) high = low + 1.0;
  if (low > high) std::swap(low, high);
  first = std::clamp(low, -largest, largest);
  last = std::clamp(high, -largest, largest);
  if (logarithmic) {
    last = last > smallest ? last : 1.0;
    first = first > smallest ? first : last * decadesBelow;
    if (last / first < 1.0 + 1e-9) {
      last *= 1.1;
      first /= 1.1;
    }
    begin = std::log10(first);
    length = std::log10(last) - begin;
  } else {
    moveApart(first, last);
    begin = first;
    length = last - first;
  }
}

double AxisMap::place(double value) const
{
  if (!logarithmic) return (value - begin) / length;
  return value > 0.0 ? (std::log10(value) - begin) / length : std::numeric_limits<double>::quiet_NaN();
}

double AxisMap::value(double place) const
{
  const double position = begin + place * length;
  return logarithmic ? std::pow(10.0, position) : position;
}

AxisMap AxisMap::part(double fromPlace, double toPlace) const
{
  return {value(fromPlace), value(toPlace), logarithmic};
}

} // namespace runsieve::app
