#include <runsieve/core/compare/BoxWarnings.h>

#include <runsieve/core/compare/ComparisonWarnings.h>
#include <runsieve/core/text/FieldText.h>

#include <string>

namespace runsieve {

namespace {

constexpr double weakQuasiP = 0.05;

std::vector<std::string> fewPassing(BoxOfRuns const& box)
{
  std::size_t const passing = box.all.passing;
  if (passing >= smallGroup) return {};
  return {"only " + std::to_string(passing) + (passing == 1 ? " run passes" : " runs pass")};
}

std::vector<std::string> withoutValues(BoxOfRuns const& box)
{
  std::vector<std::string> things;
  for (BoxParameter const& parameter : box.parameters)
    if (parameter.missing > 0)
      things.push_back(std::to_string(parameter.missing) +
                       (parameter.missing == 1 ? " run has" : " runs have") + " no value of " +
                       quoted(parameter.name));
  return things;
}

/// Limits that chance makes look as good.
std::vector<std::string> weakLimits(BoxOfRuns const& box)
{
  std::vector<std::string> things;
  auto const look = [&](std::string const& what, double quasiP) {
    if (quasiP > weakQuasiP) things.push_back(what);
  };
  for (BoxParameter const& parameter : box.parameters) {
    if (!parameter.isRestricted) continue;
    std::string const of = " of " + quoted(parameter.name);
    if (parameter.isText) look("the texts" + of, parameter.quasiP);
    look("the lower limit" + of, parameter.quasiPLow);
    look("the upper limit" + of, parameter.quasiPHigh);
  }
  if (!things.empty()) things.front().insert(0, "quasi-p above 0.05: ");
  return things;
}

std::vector<std::string> unstable(BoxOfRuns const& box)
{
  std::vector<std::string> things;
  std::size_t const halves = box.method.resamples;
  for (BoxParameter const& parameter : box.parameters)
    if (parameter.isRestricted && 2 * parameter.restrictedIn < halves)
      things.push_back(quoted(parameter.name) + " is restricted in " +
                       std::to_string(parameter.restrictedIn) + " of " + std::to_string(halves) +
                       " random halves of the runs");
  return things;
}

} // namespace

std::vector<ComparisonWarning> warningsOf(BoxOfRuns const& box)
{
  std::vector<ComparisonWarning> warnings;
  addWarning(warnings, "small group", fewPassing(box),
             "the limits of a box of so few are those of single runs: other gates, or more runs");
  addWarning(warnings, "missing values", withoutValues(box),
             "they lie outside of each box that restricts it, and go with its first limit");
  addWarning(warnings, "weak limits", weakLimits(box),
             "chance makes such limits look as good; a box without them is easier to tell");
  addWarning(warnings, "not stable", unstable(box),
             "whether the box restricts it depends on the runs that happened to be drawn; simulate more");
  return warnings;
}

} // namespace runsieve
