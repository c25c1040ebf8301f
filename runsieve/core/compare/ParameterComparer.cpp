#include <runsieve/core/compare/ParameterComparer.h>

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/ComparisonWarnings.h>
#include <runsieve/core/compare/FamilyOfTests.h>

#include <algorithm>
#include <cmath>

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

struct ParameterComparer::Prepared
{
  Prepared(Scan const& scan, RunSet const& eligible)
      : eligible(eligible), runs(scan, eligible), design(designOf(runs))
  {}

  RunSet eligible;
  ComparedRuns runs;
  DesignOfRuns design;
};

ParameterComparer::ParameterComparer(Scan const& scan, RunSet const& eligible)
    : prepared(std::make_unique<Prepared>(scan, eligible))
{}

ParameterComparer::~ParameterComparer() = default;
ParameterComparer::ParameterComparer(ParameterComparer&&) noexcept = default;
ParameterComparer& ParameterComparer::operator=(ParameterComparer&&) noexcept = default;

RunSet const& ParameterComparer::eligible() const
{
  return prepared->eligible;
}

Comparison ParameterComparer::compare(RunSet const& passing, ComparisonMethod const& method,
                                      ComparisonWork const& work) const
{
  checkMethod(method);
  ComparedRuns const& runs = prepared->runs;
  const std::vector<std::uint8_t> mask = runs.maskOf(passing);
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
      adjustFamily({&comparison.parameters}, originalsOf(prepared->design, runs.parameters().size()), method);
  comparison.warnings = warningsOf(runs, prepared->design, comparison.passing, comparison.others);
  rankByDifference(comparison.parameters, method.adjustment);
  return comparison;
}

std::vector<std::pair<double, double>> ParameterComparer::distribution(std::size_t parameter,
                                                                       RunSet const& runs) const
{
  return prepared->runs.distribution(parameter, prepared->runs.maskOf(runs));
}

} // namespace runsieve
