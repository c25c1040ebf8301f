#include "app/cli/GateReport.h"

#include "app/cli/RankReport.h"

#include <runsieve/core/gate/GateJson.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/ShownText.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace runsieve::app {

void printGates(std::ostream& out, GatedScan const& gated)
{
  std::size_t width = 0;
  for (AppliedGate const& gate : gated.passed.gates)
    width = std::max(width, shownWidth(printable(gate.gate.text())));
  for (AppliedGate const& gate : gated.passed.gates) {
    out << "gate   ";
    printField(out, printable(gate.gate.text()), width, true);
    out << "  " << gate.left << " left";
    if (!gate.gate.note.empty()) out << "   (" << printable(gate.gate.note) << ")";
    out << '\n';
  }
  auto const isOfGate = [&](std::string const& note) {
    return std::any_of(gated.passed.gates.begin(), gated.passed.gates.end(), [&](AppliedGate const& gate) {
      return note == gate.gate.text() + ": " + gate.gate.note;
    });
  };
  for (std::string const& note : gated.notes)
    if (!isOfGate(note)) out << "note   " << printable(note) << '\n';
}

void failWithoutRuns(GatedScan const& gated, std::string const& file)
{
  std::vector<AppliedGate> const& gates = gated.passed.gates;
  std::string message = file + ": no run passes through all gates";
  if (gates.size() > 1 && gated.join == GateJoin::All) {
    auto const last =
        std::find_if(gates.begin(), gates.end(), [](AppliedGate const& g) { return g.left == 0; });
    std::size_t const before = last == gates.begin() ? gated.scan().runs.size() : std::prev(last)->left;
    message += ": " + runsieve::quoted(last->gate.text()) + " lets none of the " + std::to_string(before) +
               " through that are left before it";
  }
  throw std::runtime_error(message);
}

void failWithoutGates(std::string const& command)
{
  throw UsageError(command + ": there is nothing to sieve by: neither gates nor the selection of a stored "
                             "plot; --gate is required");
}

RunsToCompare runsToCompare(GatedScan const& gated, std::string const& command, std::string const& file)
{
  if (!gated.sieves()) failWithoutGates(command);
  if (gated.passed.runs.count() == 0) failWithoutRuns(gated, file);
  RunsToCompare runs{gated.passed.runs, gated.eligible()};
  runs.passing &= runs.eligible;
  if (runs.passing.count() == 0)
    throw std::runtime_error(file + ": no run that passes is complete; a gate \"status complete, short, "
                                    "failed\" compares all");
  return runs;
}

void failWithoutParameters(std::string const& file, RunSet const& eligible, std::string const& therefore)
{
  throw std::runtime_error(
      file + (eligible.count() < 2 ? ": fewer than two runs are complete" : ": no parameter varies") +
      ", so " + therefore);
}

std::string pictureTitle(GatedScan const& gated)
{
  std::string title;
  for (AppliedGate const& gate : gated.passed.gates) title += (title.empty() ? "" : ", ") + gate.gate.text();
  if (gated.sieves()) title += (title.empty() ? "" : " - ") + passingText(gated);
  return title;
}

std::vector<ComparisonWarning> gateWarnings(GatedScan const& gated)
{
  std::vector<ComparisonWarning> warnings;
  for (std::size_t i = 0; i < gated.passed.gates.size(); ++i) {
    std::size_t const passing = gated.passed.gates[i].alone;
    if (passing != 0 && passing != gated.scan().runs.size()) continue;
    warnings.push_back(
        {"gate without effect",
         (passing == 0 ? "no run passes " : "all runs pass ") + runsieve::quoted(formatGate(gated.gates[i])),
         "look at its output, times and range, or leave it out"});
  }
  return warnings;
}

nlohmann::ordered_json gatesAsJson(GatedScan const& gated)
{
  nlohmann::ordered_json gates = nlohmann::ordered_json::array();
  for (AppliedGate const& applied : gated.passed.gates) {
    ResolvedGate const& gate = applied.gate;
    nlohmann::ordered_json entry = nlohmann::ordered_json::parse(toJson(gate.gate));
    if (gate.hasTimes())
      entry["grid_times"] = {gated.scan().times[gate.first], gated.scan().times[gate.last]};
    entry["note"] = gate.note;
    entry["left"] = applied.left;
    gates.push_back(std::move(entry));
  }
  return gates;
}

} // namespace runsieve::app
