#include <runsieve/core/compare/Comparison.h>

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/ComparisonWarnings.h>
#include <runsieve/core/compare/FamilyOfTests.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace runsieve {

namespace {

void takePermutations(Comparison& comparison, PermutationResult const& result)
{
  comparison.permutations = result.permutations;
  comparison.isSettled = result.settled;
  comparison.noiseFloor = result.noiseFloor;
  for (std::size_t i = 0; i < comparison.parameters.size(); ++i) {
    ParameterComparison& parameter = comparison.parameters[i];
    if (std::isnan(parameter.d)) continue;
    parameter.pPermutation = forGatesTried(result.p[i], comparison.method);
    if (parameter.isText) parameter.p = result.alone[i];
  }
}

} // namespace

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
  checkMethod(method);
  const ComparedRuns runs(scan, eligible);
  const std::vector<std::uint8_t> mask = runs.maskOf(passing);
  const DesignOfRuns design = designOf(runs);
  Comparison comparison;
  comparison.method = method;
  comparison.passing = static_cast<std::size_t>(std::count(mask.begin(), mask.end(), 1));
  comparison.others = mask.size() - comparison.passing;
  comparison.parameters = runs.compare(mask, work.threads);
  comparison.leftOut = runs.leftOut();
  const bool comparable = comparison.passing > 0 && comparison.others > 0 && !comparison.parameters.empty();
  if (comparable && method.permutations > 0)
    takePermutations(
        comparison,
        permuted(PermutationTest(runs.parameters(), mask, permutationOptions(method, work)), work));
  comparison.family =
      adjustFamily({&comparison.parameters}, originalsOf(design, runs.parameters().size()), method);
  comparison.warnings = warningsOf(runs, design, comparison.passing, comparison.others);
  rankByDifference(comparison.parameters, method.adjustment);
  return comparison;
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
