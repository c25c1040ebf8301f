#include "app/explorer/charts/GateLook.h"

#include <stdexcept>

namespace runsieve::app {

bool isOnOutput(Gate const& gate, Scan const& scan, std::size_t output)
{
  try {
    return scan.findOutput(gate.column) == output;
  } catch (std::invalid_argument const&) {
    return false; // several have the name: the gate does not fit either
  }
}

bool excludesInside(Gate const& gate)
{
  return gate.negated != (gate.kind == GateKind::Never);
}

} // namespace runsieve::app
