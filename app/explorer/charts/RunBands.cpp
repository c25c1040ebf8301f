#include "app/explorer/charts/RunBands.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::app {

namespace {

constexpr std::array<double, 5> shares = {0.05, 0.25, 0.5, 0.75, 0.95};

/// Of values in ascending order.
double quantile(std::vector<double> const& sorted, double share)
{
  if (sorted.empty()) return std::numeric_limits<double>::quiet_NaN();
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  const double part = place - static_cast<double>(below);
  return sorted[below] + part * (sorted[above] - sorted[below]);
}

} // namespace

RunBands bandsOf(Scan const& scan, std::size_t output, RunSet const& runs)
{
  const std::vector<std::size_t> members = runs.members();
  RunBands bands;
  std::vector<double> values;
  for (std::size_t time = 0; time < scan.times.size(); ++time) {
    values.clear();
    for (std::size_t const run : members)
      if (const double value = scan.valuesOf(output, run)[time]; std::isfinite(value))
        values.push_back(value);
    std::sort(values.begin(), values.end());
    for (std::size_t i = 0; i < shares.size(); ++i) bands.quantiles[i].push_back(quantile(values, shares[i]));
  }
  return bands;
}

} // namespace runsieve::app
