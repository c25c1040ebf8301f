#include "app/cli/GateReport.h"

#include <runsieve/core/gate/GateJson.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace runsieve::app {

void printGates(std::ostream& out, GatedScan const& gated)
{
  std::size_t width = 0;
  for (AppliedGate const& gate : gated.passed.gates) width = std::max(width, gate.gate.text().size());
  for (AppliedGate const& gate : gated.passed.gates) {
    std::string const text = gate.gate.text();
    out << "gate   " << text << std::string(width - text.size(), ' ') << "  " << gate.left << " left";
    if (!gate.gate.note.empty()) out << "   (" << gate.gate.note << ")";
    out << '\n';
  }
  auto const isOfGate = [&](std::string const& note) {
    return std::any_of(gated.passed.gates.begin(), gated.passed.gates.end(), [&](AppliedGate const& gate) {
      return note == gate.gate.text() + ": " + gate.gate.note;
    });
  };
  for (std::string const& note : gated.notes)
    if (!isOfGate(note)) out << "note   " << note << '\n';
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

void failWithoutCompleteRuns(std::string const& file)
{
  throw std::runtime_error(file + ": no run that passes is complete; a gate \"status complete, short, "
                                  "failed\" compares all");
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
  for (Gate const& gate : gated.gates) {
    std::size_t const passing = applyGates({gate}, gated.scan(), GateJoin::All, gateContext()).runs.count();
    if (passing != 0 && passing != gated.scan().runs.size()) continue;
    warnings.push_back(
        {"gate without effect",
         (passing == 0 ? "no run passes " : "all runs pass ") + runsieve::quoted(formatGate(gate)),
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
