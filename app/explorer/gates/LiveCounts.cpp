#include "app/explorer/gates/LiveCounts.h"

#include <runsieve/core/gate/GateRuns.h>

namespace runsieve::app {

namespace {

using Counts = std::vector<std::optional<std::size_t>>;

bool counts(Document const& document, std::size_t gate)
{
  return document.state().gates[gate].on && document.outcomes()[gate].resolved;
}

/// The runs that pass the gate that is being moved alone; nothing if they take long to find.
std::optional<RunSet> movedAlone(Gate const& gate, Scan const& scan)
{
  constexpr std::size_t mostValues = 1'000'000;
  if (gate.kind == GateKind::Cluster) return std::nullopt;
  try {
    const ResolvedGate resolved = resolveGate(gate, scan);
    const std::size_t times = resolved.hasTimes() ? resolved.last - resolved.first + 1 : 1;
    if (times * scan.runs.size() > mostValues) return std::nullopt;
    return runsThrough(resolved, scan);
  } catch (GateError const&) {
    return std::nullopt;
  }
}

Counts standing(Document const& document)
{
  Counts left;
  for (std::size_t i = 0; i < document.state().gates.size(); ++i)
    left.push_back(counts(document, i) ? std::optional(document.outcomes()[i].left) : std::nullopt);
  return left;
}

} // namespace

Counts runsLeft(Document const& document)
{
  Counts left = standing(document);
  std::size_t moved = 0;
  Gate const* gate = document.previewedGate(&moved);
  if (!gate) return left;
  if (moved >= left.size()) {
    left.push_back(document.passing().count());
    return left;
  }
  if (!document.state().gates[moved].on) return left;
  std::size_t last = left.size() - 1;
  while (last > moved && !left[last]) --last;
  for (std::size_t i = moved; i < left.size(); ++i) left[i].reset();
  left[last] = document.passing().count();
  if (last == moved) return left;
  auto const alone = movedAlone(*gate, document.scan());
  if (!alone) return left;
  const bool all = document.state().join == GateJoin::All;
  RunSet through(document.scan().runs.size(), all);
  for (std::size_t i = 0; i < last; ++i) {
    if (i != moved && !counts(document, i)) continue;
    RunSet const& passing = i == moved ? *alone : document.outcomes()[i].alone;
    if (all)
      through &= passing;
    else
      through |= passing;
    if (i >= moved) left[i] = through.count();
  }
  return left;
}

} // namespace runsieve::app
