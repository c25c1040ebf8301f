#include <runsieve/core/inference/EvenSpread.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace runsieve {

namespace {

/// How much wider than one stratum the values are scattered around equal steps of a width.
double excess(std::vector<double> const& ascending, double width)
{
  double least = std::numeric_limits<double>::infinity();
  double most = -least;
  for (std::size_t k = 0; k < ascending.size(); ++k) {
    const double place = (ascending[k] - ascending.front()) - static_cast<double>(k) * width;
    least = std::min(least, place);
    most = std::max(most, place);
  }
  return (most - least) / width - 1.0;
}

} // namespace

double unevenness(std::vector<double> const& ascending)
{
  const double range = ascending.size() < 2 ? 0.0 : ascending.back() - ascending.front();
  if (!(range > 0.0 && std::isfinite(range))) return std::numeric_limits<double>::infinity();
  // The scatter around the steps divided by their width has one valley: it is a convex function of 1 / width.
  const auto n = static_cast<double>(ascending.size());
  double lowest =
      (n - 2.0) / range; // strata per unit: neighbouring ends may lie at the far ends of their strata
  double highest = (n + 2.0) / range;
  if (!(lowest >= 0.0 && std::isfinite(highest))) return std::numeric_limits<double>::infinity();
  lowest = std::max(lowest, 0.25 / range);
  for (int step = 0; step < 60; ++step) {
    const double third = (highest - lowest) / 3.0;
    if (excess(ascending, 1.0 / (lowest + third)) <= excess(ascending, 1.0 / (highest - third)))
      highest -= third;
    else
      lowest += third;
  }
  return 0.5 * excess(ascending, 2.0 / (lowest + highest));
}

} // namespace runsieve
