#include "app/explorer/gates/GateEdits.h"

#include <algorithm>

namespace runsieve::app {

namespace {

auto at(std::vector<NamedGate>& gates, std::size_t place)
{
  return gates.begin() + static_cast<std::ptrdiff_t>(place);
}

} // namespace

void switchGate(Document& document, std::size_t gate, bool on)
{
  document.change(on ? "Switch gate on" : "Switch gate off",
                  [&](State& state) { state.gates[gate].on = on; });
}

void renameGate(Document& document, std::size_t gate, std::string const& name)
{
  if (name.empty() || name == document.state().gates[gate].name) return;
  document.change("Rename gate", [&](State& state) { state.gates[gate].name = name; });
}

void invertGate(Document& document, std::size_t gate)
{
  document.change("Invert gate",
                  [&](State& state) { state.gates[gate].gate.negated = !state.gates[gate].gate.negated; });
}

void moveGate(Document& document, std::size_t gate, std::size_t to)
{
  if (gate == to) return;
  document.change("Move gate in the list", [&](State& state) {
    if (gate < to)
      std::rotate(at(state.gates, gate), at(state.gates, gate + 1), at(state.gates, to + 1));
    else
      std::rotate(at(state.gates, to), at(state.gates, gate), at(state.gates, gate + 1));
  });
  document.selectGate(to);
}

void duplicateGate(Document& document, std::size_t gate)
{
  document.change("Duplicate gate", [&](State& state) {
    NamedGate copy = state.gates[gate];
    copy.name = document.newGateName();
    state.gates.insert(at(state.gates, gate + 1), std::move(copy));
  });
  document.selectGate(gate + 1);
}

void deleteGate(Document& document, std::size_t gate)
{
  document.change("Delete gate", [&](State& state) { state.gates.erase(at(state.gates, gate)); });
  const std::size_t left = document.state().gates.size();
  if (left > 0) document.selectGate(std::min(gate, left - 1));
}

void joinGates(Document& document, GateJoin join)
{
  if (join == document.state().join) return;
  document.change(join == GateJoin::All ? "Pass all gates" : "Pass any gate",
                  [&](State& state) { state.join = join; });
}

void setGateKind(Document& document, std::size_t gate, GateKind kind)
{
  GateKind const now = document.state().gates[gate].gate.kind;
  if (now > GateKind::Crosses || now == kind) return;
  document.change("Change gate", [&](State& state) { state.gates[gate].gate.kind = kind; });
}

} // namespace runsieve::app
