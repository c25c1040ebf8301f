#include <runsieve/core/compare/Comparison.h>

#include <runsieve/core/compare/ParameterComparer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace runsieve {

RunSet completeRuns(Scan const& scan)
{
  RunSet complete(scan.runs.size());
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    complete.set(run, scan.runs[run].status == RunStatus::Complete);
  return complete;
}

Comparison compareParameters(Scan const& scan, RunSet const& passing, RunSet const& eligible,
                             ComparisonMethod const& method, ComparisonWork const& work)
{
  return ParameterComparer(scan, eligible).compare(passing, method, work);
}

Comparison compareParameters(Scan const& scan, RunSet const& passing, ComparisonMethod const& method,
                             ComparisonWork const& work)
{
  return compareParameters(scan, passing, RunSet(scan.runs.size(), true), method, work);
}

char const* pSourceName(PSource source)
{
  constexpr std::array<char const*, 3> names = {"exact", "asymptotic", "permutation"};
  return names.at(static_cast<std::size_t>(source));
}

double adjustedP(ParameterComparison const& comparison, Adjustment adjustment)
{
  switch (adjustment) {
  case Adjustment::Permutation:
    return comparison.pPermutation;
  case Adjustment::Holm:
    return comparison.pHolm;
  case Adjustment::BenjaminiHochberg:
    return comparison.pBenjaminiHochberg;
  case Adjustment::None:
    break;
  }
  return comparison.p;
}

bool isSignificant(double p, double d, Thresholds const& thresholds)
{
  return p <= thresholds.largestP && std::fabs(d) >= thresholds.smallestD;
}

void rankByDifference(std::vector<ParameterComparison>& parameters, Adjustment adjustment)
{
  constexpr double last = 2.0;
  auto const orLast = [](double value) { return std::isnan(value) ? last : value; };
  auto const key = [&](ParameterComparison const& c) {
    return std::make_tuple(!c.significant, orLast(adjustedP(c, adjustment)), orLast(-std::fabs(c.d)));
  };
  std::stable_sort(
      parameters.begin(), parameters.end(),
      [&](ParameterComparison const& a, ParameterComparison const& b) { return key(a) < key(b); });
}

} // namespace runsieve
