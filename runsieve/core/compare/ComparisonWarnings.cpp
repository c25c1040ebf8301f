#include <runsieve/core/compare/ComparisonWarnings.h>

#include <runsieve/core/compare/Pairs.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <string>

namespace runsieve {

namespace {

constexpr std::size_t mostOfAKind = 5;

using Warnings = std::vector<ComparisonWarning>;

std::string nameOf(ComparedRuns const& runs, DesignOfRuns const& design, std::size_t number)
{
  return quoted(runs.parameterOf(design.numbers[number]).label.name);
}

std::vector<OrderedValues> ordersOf(ComparedRuns const& runs, DesignOfRuns const& design)
{
  std::vector<OrderedValues> orders;
  for (std::size_t const index : design.numbers) orders.push_back(runs.parameters()[index].values);
  return orders;
}

void warnOfLevels(Warnings& warnings, ComparedRuns const& runs, DesignOfRuns const& design)
{
  std::vector<std::string> things;
  for (FewLevels const& few : design.levels)
    things.push_back(nameOf(runs, design, few.parameter) + " has " + std::to_string(few.levels) + " values");
  addWarning(warnings, "few levels", things,
             "d moves in steps; p-values and noise floor take that into account");
}

void warnOfCorrelations(Warnings& warnings, ComparedRuns const& runs, DesignOfRuns const& design)
{
  std::vector<std::string> copies;
  std::vector<std::string> correlated;
  for (DesignCorrelation const& pair : design.correlations) {
    std::string const names = nameOf(runs, design, pair.first) + " and " + nameOf(runs, design, pair.second);
    if (pair.copy)
      copies.push_back(names);
    else
      correlated.push_back(names + " (" + correlationText(pair.r) + ")");
  }
  for (std::string& names : copies) names += " order the runs alike";
  addWarning(warnings, "copies", copies, "they cannot be told apart, and count as one test");
  if (!correlated.empty()) correlated.front().insert(0, "correlated by design: ");
  addWarning(warnings, "correlated by design", correlated,
             "a difference in one can be that of the other; sample them independently to tell");
  if (design.numbers.size() > mostPairedParameters)
    warnings.push_back({"many parameters",
                        "correlations by design are not looked for among " +
                            std::to_string(design.numbers.size()) + " parameters",
                        "a difference in one can be that of another; leave some out with --ignore to see"});
}

} // namespace

void addWarning(std::vector<ComparisonWarning>& warnings, char const* kind,
                std::vector<std::string> const& things, char const* advice)
{
  if (things.empty()) return;
  std::string text;
  for (std::size_t i = 0; i < std::min(things.size(), mostOfAKind); ++i)
    text += (i > 0 ? ", " : "") + things[i];
  if (things.size() > mostOfAKind) text += " and " + std::to_string(things.size() - mostOfAKind) + " more";
  warnings.push_back({kind, text, advice});
}

void warnOfGroups(std::vector<ComparisonWarning>& warnings, std::size_t passing, std::size_t others)
{
  auto const told = [](std::size_t count, char const* what) {
    return "only " + std::to_string(count) + (count == 1 ? " run " : " runs ") + what;
  };
  if (passing == 0 && others == 0) {
    addWarning(warnings, "small group", {"no run is compared"},
               "only complete runs are, unless a gate asks for their status");
    return;
  }
  if (passing == 0 || others == 0) {
    addWarning(warnings, "small group", {passing == 0 ? "no run passes" : "every run passes"},
               passing == 0 ? "there is nothing to compare: wider gates, or fewer"
                            : "there is nothing to compare: narrower gates, or more");
    return;
  }
  std::vector<std::string> small;
  if (passing < smallGroup) small.push_back(told(passing, passing == 1 ? "passes" : "pass"));
  if (others < smallGroup) small.push_back(told(others, others == 1 ? "does not pass" : "do not pass"));
  addWarning(warnings, "small group", small,
             "p-values hold, but only large differences can be found: other gates, or more runs");
}

void warnOfDesign(std::vector<ComparisonWarning>& warnings, SampleDesign design)
{
  switch (design) {
  case SampleDesign::SWEEP:
    warnings.push_back({"sweep", "the runs are a sweep of one parameter, not independent draws",
                        "p only tells that the output follows the parameter; look at the curves"});
    break;
  case SampleDesign::LATTICE:
    warnings.push_back({"lattice", "the runs are all combinations of levels, not independent draws",
                        "p-values are rough; sample at random to be sure of small differences"});
    break;
  case SampleDesign::SEQUENCE:
    warnings.push_back({"sequence",
                        "the runs are spread evenly, as by a Sobol' sequence, not independent draws",
                        "p-values are cautious"});
    break;
  case SampleDesign::INDEPENDENT:
  case SampleDesign::LATIN_HYPERCUBE:
    break; // cautious by little
  }
}

std::string correlationText(double r)
{
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", r);
  return text;
}

DesignOfRuns designWithoutCorrelations(ComparedRuns const& runs)
{
  DesignOfRuns design;
  std::vector<double const*> values;
  for (std::size_t i = 0; i < runs.parameters().size(); ++i) {
    if (runs.parameterOf(i).isText()) continue;
    design.numbers.push_back(i);
    values.push_back(runs.valuesOf(i).data());
  }
  design.levels = fewLevels(ordersOf(runs, design), values);
  design.design = sampleDesign(values, runs.members().size());
  // Parameters that don't vary are not among the compared ones, but texts that do are.
  if (design.design == SampleDesign::SWEEP && runs.parameters().size() > 1)
    design.design = SampleDesign::INDEPENDENT;
  return design;
}

DesignOfRuns designOf(ComparedRuns const& runs)
{
  DesignOfRuns design = designWithoutCorrelations(runs);
  std::vector<OrderedValues> const orders = ordersOf(runs, design);
  std::size_t const count = runs.members().size();
  design.correlations =
      orders.size() > mostPairedParameters ? designCopies(orders, count) : designCorrelations(orders, count);
  return design;
}

std::vector<std::size_t> originalsOf(DesignOfRuns const& design, std::size_t parameters)
{
  std::vector<std::size_t> original(parameters);
  std::iota(original.begin(), original.end(), std::size_t(0));
  for (DesignCorrelation const& pair : design.correlations) {
    if (!pair.copy) continue;
    std::size_t& copy = original[design.numbers[pair.second]];
    copy = std::min(copy, design.numbers[pair.first]); // a pair for each two of several copies
  }
  return original;
}

std::vector<ComparisonWarning> warningsOf(ComparedRuns const& runs, DesignOfRuns const& design,
                                          std::size_t passing, std::size_t others)
{
  Warnings warnings;
  warnOfGroups(warnings, passing, others);
  warnOfDesign(warnings, design.design);
  warnOfLevels(warnings, runs, design);
  warnOfCorrelations(warnings, runs, design);
  return warnings;
}

} // namespace runsieve
