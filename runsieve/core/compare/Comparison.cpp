#include <runsieve/core/compare/Comparison.h>

#include <runsieve/core/compare/ParameterComparer.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace runsieve {

Comparison compareParameters(Scan const& scan, RunSet const& passing, Thresholds const& thresholds,
                             RunSet const& eligible)
{
  const ParameterComparer comparer(scan, eligible);
  Comparison comparison{comparer.compare(passing, thresholds), comparer.leftOut()};
  rankByDifference(comparison.parameters);
  return comparison;
}

Comparison compareParameters(Scan const& scan, RunSet const& passing, Thresholds const& thresholds)
{
  return compareParameters(scan, passing, thresholds, RunSet(scan.runs.size(), true));
}

bool isSignificant(double p, double d, Thresholds const& thresholds)
{
  return p <= thresholds.largestP && d >= thresholds.smallestD;
}

void rankByDifference(std::vector<ParameterComparison>& parameters)
{
  auto key = [](ParameterComparison const& c) { return std::make_tuple(!c.significant, c.p, -c.d); };
  std::stable_sort(
      parameters.begin(), parameters.end(),
      [&](ParameterComparison const& a, ParameterComparison const& b) { return key(a) < key(b); });
}

double medianOfSorted(double const* values, std::size_t count)
{
  if (count == 0) return std::numeric_limits<double>::quiet_NaN();
  return 0.5 * (values[(count - 1) / 2] + values[count / 2]);
}

} // namespace runsieve
