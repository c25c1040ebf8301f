#include <runsieve/core/inference/AdjustedP.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

/// Positions of the p-values that are not NaN, by ascending value.
std::vector<std::size_t> ascending(std::vector<double> const& p)
{
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < p.size(); ++i)
    if (!std::isnan(p[i])) order.push_back(i);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return p[a] < p[b]; });
  return order;
}

double familySize(std::size_t family, std::size_t tests)
{
  if (family != 0 && family < tests)
    throw std::invalid_argument("a family of tests is not smaller than the p-values of it");
  return static_cast<double>(family == 0 ? tests : family);
}

} // namespace

std::vector<double> holmAdjusted(std::vector<double> const& p, std::size_t family)
{
  std::vector<std::size_t> const order = ascending(p);
  double const n = familySize(family, order.size());
  std::vector<double> adjusted = p;
  double largest = 0.0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    largest = std::max(largest, (n - static_cast<double>(i)) * p[order[i]]);
    adjusted[order[i]] = std::min(1.0, largest);
  }
  return adjusted;
}

std::vector<double> benjaminiHochbergAdjusted(std::vector<double> const& p, std::size_t family)
{
  std::vector<std::size_t> const order = ascending(p);
  double const n = familySize(family, order.size());
  std::vector<double> adjusted = p;
  double smallest = 1.0;
  for (std::size_t i = order.size(); i > 0; --i) {
    smallest = std::min(smallest, n / static_cast<double>(i) * p[order[i - 1]]);
    adjusted[order[i - 1]] = smallest;
  }
  return adjusted;
}

} // namespace runsieve
