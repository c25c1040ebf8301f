#include <runsieve/core/compare/PairWarnings.h>

#include <runsieve/core/compare/ComparisonWarnings.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace runsieve {

namespace {

using Warnings = std::vector<ComparisonWarning>;

void warnOfFewParameters(Warnings& warnings, std::size_t numbers)
{
  if (numbers >= 2) return;
  warnings.push_back({"few parameters",
                      numbers == 0 ? "no number parameter varies" : "only one number parameter varies",
                      "a pair takes two"});
}

bool varies(ComparedRuns const& runs, std::size_t index, std::vector<std::uint8_t> const& passing)
{
  std::vector<double> const& values = runs.valuesOf(index);
  double first = std::nan("");
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (passing[i] == 0 || std::isnan(values[i])) continue;
    if (std::isnan(first)) first = values[i];
    if (values[i] != first) return true;
  }
  return false;
}

void warnOfConstants(Warnings& warnings, ComparedRuns const& runs, DesignOfRuns const& design,
                     std::vector<std::uint8_t> const& passing)
{
  std::vector<std::string> things;
  for (std::size_t const index : design.numbers)
    if (!varies(runs, index, passing))
      things.push_back(quoted(runs.parameterOf(index).label.name) + " has one value in the runs that pass");
  addWarning(warnings, "constant in passing runs", things, "its pairs have no correlation there");
}

void warnOfCorrelations(Warnings& warnings, std::vector<ParameterPair> const& pairs)
{
  std::vector<ParameterPair const*> byDesign;
  for (ParameterPair const& pair : pairs)
    if (pair.byDesign) byDesign.push_back(&pair);
  std::stable_sort(byDesign.begin(), byDesign.end(), [](ParameterPair const* a, ParameterPair const* b) {
    return std::fabs(a->rAll) > std::fabs(b->rAll);
  });
  std::vector<std::string> things;
  for (ParameterPair const* pair : byDesign)
    things.push_back((things.empty() ? "correlated by design: " : "") + quoted(pair->first) + " and " +
                     quoted(pair->second) + " (" + correlationText(pair->rAll) + ")");
  addWarning(warnings, "correlated by design", things,
             "they are tested against what selecting by each on its own leaves of that; sample them "
             "independently to be sure");
}

} // namespace

std::vector<ComparisonWarning> pairWarningsOf(ComparedRuns const& runs,
                                              std::vector<std::uint8_t> const& passing,
                                              PairComparisons const& comparison)
{
  DesignOfRuns const design = designWithoutCorrelations(runs);
  Warnings warnings;
  warnOfFewParameters(warnings, design.numbers.size());
  warnOfGroups(warnings, comparison.passing, comparison.others);
  if (design.numbers.size() >= 2) {
    warnOfDesign(warnings, design.design);
    if (comparison.passing > 0) warnOfConstants(warnings, runs, design, passing);
    warnOfCorrelations(warnings, comparison.pairs);
  }
  return warnings;
}

} // namespace runsieve
