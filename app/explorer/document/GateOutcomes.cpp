#include "app/explorer/document/GateOutcomes.h"

#include <algorithm>
#include <utility>

namespace runsieve::app {

std::vector<std::string> gatesWithoutEffect(std::vector<NamedGate> const& gates,
                                            std::vector<GateOutcome> const& outcomes)
{
  std::vector<std::string> names;
  for (std::size_t i = 0; i < outcomes.size(); ++i)
    if (gates[i].on && gates[i].gate.kind != GateKind::Cluster && !outcomes[i].error.empty())
      names.push_back(gates[i].name);
  return names;
}

void GateOutcomes::reset(Scan const* opened, GateContext ofGates)
{
  scan = opened;
  context = std::move(ofGates);
  list.clear();
  found.clear();
  through = RunSet(scan ? scan->runs.size() : 0, true);
  asked = false;
}

GateOutcome GateOutcomes::outcomeOf(Gate const& gate) const
{
  GateOutcome outcome;
  try {
    outcome.resolved = resolveGate(gate, *scan);
    outcome.alone = runsThrough(*outcome.resolved, *scan, context);
  } catch (GateError const& error) {
    outcome.resolved.reset();
    outcome.alone = RunSet(scan->runs.size(), true);
    outcome.error = error.what();
  }
  return outcome;
}

void GateOutcomes::retryFaults()
{
  for (std::size_t i = found.size(); i-- > 0;)
    if (!found[i].resolved) {
      found.erase(found.begin() + static_cast<std::ptrdiff_t>(i));
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

void GateOutcomes::apply(std::vector<NamedGate> const& gates, GateJoin how)
{
  if (!scan) return;
  std::vector<GateOutcome> outcomes;
  for (NamedGate const& wanted : gates) {
    auto const known =
        std::find_if(list.begin(), list.end(), [&](NamedGate const& old) { return old.gate == wanted.gate; });
    outcomes.push_back(known == list.end() ? outcomeOf(wanted.gate)
                                           : found[static_cast<std::size_t>(known - list.begin())]);
  }
  list = gates;
  found = std::move(outcomes);
  join = how;
  asked = false;
  through = RunSet(scan->runs.size(), true);
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (counts(i)) {
      if (!asked && join == GateJoin::Any) through = RunSet(scan->runs.size());
      asked = true;
      if (join == GateJoin::All)
        through &= found[i].alone;
      else
        through |= found[i].alone;
    }
    found[i].left = through.count();
  }
}

bool GateOutcomes::sievesBut(std::size_t but) const
{
  for (std::size_t i = 0; i < list.size(); ++i)
    if (i != but && counts(i)) return true;
  return false;
}

RunSet GateOutcomes::passingBut(std::size_t but) const
{
  bool first = true;
  RunSet rest(scan->runs.size(), true);
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i == but || !counts(i)) continue;
    if (first)
      rest = found[i].alone;
    else if (join == GateJoin::All)
      rest &= found[i].alone;
    else
      rest |= found[i].alone;
    first = false;
  }
  return rest;
}

} // namespace runsieve::app
