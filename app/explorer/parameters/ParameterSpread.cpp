#include "app/explorer/parameters/ParameterSpread.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace runsieve::app {

namespace {

constexpr double wide = 100.0; ///< ratio of two decades

bool isSpreadByRatios(ParameterSpread const& spread, std::vector<double>& values)
{
  if (!(spread.low > 0.0) || spread.high / spread.low <= wide) return false;
  auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  auto const offCentre = [&](bool logarithmic) {
    return std::fabs(AxisMap(spread.low, spread.high, logarithmic).place(*middle) - 0.5);
  };
  return offCentre(true) < offCentre(false);
}

} // namespace

AxisMap ParameterSpread::axis(bool logarithmic) const
{
  const bool useLog = logarithmic && allowsLogarithm();
  return {useLog ? lowestPositive : low, high, useLog};
}

ParameterSpread spreadOf(ScanParameter const& parameter)
{
  ParameterSpread spread;
  std::vector<double> finite;
  finite.reserve(parameter.values.size());
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  double positive = low;
  for (double const value : parameter.values) {
    if (!std::isfinite(value)) continue;
    finite.push_back(value);
    low = std::min(low, value);
    high = std::max(high, value);
    if (value > 0.0) positive = std::min(positive, value);
  }
  spread.present = finite.size();
  if (finite.empty()) return spread;
  spread.low = low;
  spread.high = high;
  if (std::isfinite(positive)) spread.lowestPositive = positive;
  spread.isLogarithmic = isSpreadByRatios(spread, finite);
  return spread;
}

} // namespace runsieve::app
