#include <runsieve/core/gate/BoxGates.h>

#include <runsieve/core/gate/ParameterName.h>

namespace runsieve {

std::vector<Gate> gatesOf(BoxOfRuns const& box, Scan const& scan)
{
  std::vector<Gate> gates;
  for (BoxParameter const& parameter : box.parameters) {
    if (!parameter.isRestricted) continue;
    Gate gate;
    gate.column = nameOfParameter(scan, parameter.parameter);
    if (parameter.isText) {
      gate.kind = GateKind::Is;
      for (BoxText const& text : parameter.texts)
        if (text.isInside) gate.texts.push_back(text.text);
    } else {
      gate.range = {parameter.low, parameter.high};
    }
    gates.push_back(std::move(gate));
  }
  return gates;
}

} // namespace runsieve
