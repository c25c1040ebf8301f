#include "app/explorer/gates/GateLabel.h"

#include "app/explorer/gates/GateKinds.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/gate/ResolvedGate.h>

namespace runsieve::app {

namespace {

/// The gate with the bare name of its column if that means the same.
Gate withBareName(Gate const& gate, Scan const& scan)
{
  if (gate.kind == GateKind::Status || gate.kind == GateKind::Runs) return gate;
  try {
    const ResolvedGate meant = resolveGate(gate, scan);
    Gate bare = gate;
    bare.column = meant.target == GateTarget::Output ? scan.outputs[meant.column].label.name
                                                     : scan.parameters[meant.column].label.name;
    const ResolvedGate found = resolveGate(bare, scan);
    return found.target == meant.target && found.column == meant.column ? bare : gate;
  } catch (GateError const&) {
    return gate;
  }
}

} // namespace

std::string gateLabel(Gate const& gate, Scan const& scan)
{
  std::string text = formatGate(withBareName(gate, scan));
  if (!hasValues(gate.kind)) return text;
  const std::string high = "..inf"; // the range stands at the end
  if (text.size() > high.size() && text.compare(text.size() - high.size(), high.size(), high) == 0)
    text.erase(text.size() - 3);
  const std::string low = " in -inf..";
  const std::size_t range = text.rfind(low);
  if (range != std::string::npos && text.find(' ', range + low.size()) == std::string::npos)
    text.replace(range, low.size(), " in ..");
  return text;
}

} // namespace runsieve::app
