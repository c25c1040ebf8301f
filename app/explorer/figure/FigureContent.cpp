#include "app/explorer/figure/FigureContent.h"

#include "app/explorer/document/Document.h"
#include "app/explorer/runs/Extents.h"

#include <algorithm>
#include <utility>

namespace runsieve::app {

RunSet FigureContent::selected() const
{
  return sieves ? passing : RunSet(scan->runs.size());
}

bool FigureContent::showsTime(double at) const
{
  constexpr double rounding = 1e-9;
  const double place = time.place(at);
  return place >= -rounding && place <= 1.0 + rounding;
}

AxisMap FigureContent::valueAxis(std::size_t output) const
{
  auto const known = values.find(output);
  if (known != values.end()) return known->second;
  Extents extents;
  extents.reset(scan);
  auto const log = logOutputs.find(output);
  return extents.axis(output, log != logOutputs.end() && log->second);
}

std::vector<std::size_t> FigureContent::shownOutputs(std::vector<std::size_t> const& wanted) const
{
  std::vector<std::size_t> shown;
  for (std::size_t const output : wanted.empty() ? outputs : wanted)
    if (scan && output < scan->outputs.size() && shown.size() < ViewState::mostOutputs)
      shown.push_back(output);
  return shown;
}

std::vector<std::size_t> FigureContent::shownParameters(std::vector<std::size_t> const& listed,
                                                        std::size_t strongest) const
{
  std::vector<std::size_t> shown;
  if (!scan) return shown;
  for (std::size_t const parameter : listed)
    if (parameter < scan->parameters.size()) shown.push_back(parameter);
  if (!listed.empty()) return shown;
  if (comparison) {
    for (ParameterComparison const& compared : comparison->parameters) shown.push_back(compared.parameter);
  } else {
    for (std::size_t i = 0; i < scan->parameters.size(); ++i) shown.push_back(i);
  }
  if (shown.size() > strongest) shown.resize(strongest);
  return shown;
}

ParameterComparison const* FigureContent::numbersOf(std::size_t parameter) const
{
  if (!comparison) return nullptr;
  auto const& all = comparison->parameters;
  auto const found = std::find_if(
      all.begin(), all.end(), [&](ParameterComparison const& each) { return each.parameter == parameter; });
  return found == all.end() ? nullptr : &*found;
}

FigureContent figureContentOf(Document const& document, AxisMap const& time,
                              std::map<std::size_t, AxisMap> values)
{
  FigureContent content;
  if (!document.isOpen()) return content;
  State const& state = document.state();
  content.scan = document.sharedScan();
  for (NamedGate const& gate : state.gates)
    if (gate.on) content.gates.push_back(gate);
  content.sieves = document.sieves();
  content.passing = document.passing();
  content.eligible = document.eligible();
  if (Comparison const* compared = document.comparison())
    content.comparison = std::make_shared<Comparison const>(*compared);
  for (NamedSet const& set : state.sets)
    if (set.shown) content.sets.push_back(set);
  content.pinned = document.pins();
  content.outputs = state.view.outputs;
  content.time = time;
  content.values = std::move(values);
  content.logOutputs = state.view.logOutputs;
  content.logParameters = state.view.logParameters;
  content.focus = state.view.focus;
  return content;
}

} // namespace runsieve::app
