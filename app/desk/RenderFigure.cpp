#include "app/desk/DeskCommands.h"

#include "app/cli/FigureGrammar.h"
#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/desk/OffscreenApplication.h"
#include "app/explorer/figure/FigureData.h"
#include "app/explorer/figure/WriteFigure.h"
#include "app/explorer/runs/Extents.h"
#include "app/explorer/session/SessionFile.h"

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/gate/GateText.h>

#include <QFile>

#include <algorithm>
#include <iostream>
#include <memory>
#include <set>
#include <stdexcept>

namespace runsieve::app {

namespace {

std::size_t outputNamed(std::string const& name, Scan const& scan)
{
  if (auto const output = scan.findOutput(name)) return *output;
  throw std::runtime_error("the scan has no output \"" + name + "\"; there are " + outputNames(scan));
}

std::size_t parameterNamed(std::string const& name, Scan const& scan)
{
  if (auto const parameter = scan.findParameter(name)) return *parameter;
  throw std::runtime_error("the scan has no parameter \"" + name + "\"");
}

PinnedRuns runsNamed(std::string const& text, Scan const& scan)
{
  const std::vector<RunKey> keys = keysOfRuns(text);
  std::vector<RunKey> absent;
  const std::vector<std::size_t> runs = orderedRuns(keys, scan, &absent);
  // A range may have gaps, as in a gate on runs.
  if (std::any_of(keys.begin(), keys.end(), [&](RunKey const& key) {
        return std::find(absent.begin(), absent.end(), key) != absent.end();
      }))
    throw std::runtime_error("the scan lacks some of the runs " + text);
  return PinnedRuns(runs);
}

/// What the session in the sieve file of a command keeps besides gates; nothing if there is none.
RestoredState sessionState(RenderArguments const& arguments, Scan const& scan, Session& session)
{
  if (arguments.sieve.empty()) return {};
  session = readSession(QFile::decodeName(arguments.sieve.c_str()));
  return restoredOn(session, scan);
}

/// The output of the first gate, else the first of the scan.
std::vector<std::size_t> usualOutputs(GatedScan const& gated)
{
  if (gated.scan().outputs.empty()) return {};
  for (AppliedGate const& applied : gated.passed.gates)
    if (applied.gate.target == GateTarget::Output) return {applied.gate.column};
  return {gated.opened.output < gated.scan().outputs.size() ? gated.opened.output : 0};
}

AxisMap timeAxisOf(FigureArguments const& asked, Session const& session, Extents const& extents)
{
  if (!asked.timeRange.empty()) {
    auto const [first, last] = rangeOfTimes(asked.timeRange);
    return {first, last};
  }
  std::optional<TypedRange> const& shown =
      session.view.zoomedTime ? session.view.zoomedTime : session.view.timeRange;
  return shown ? AxisMap(shown->low, shown->high) : extents.timeAxis();
}

FigureContent contentOf(std::shared_ptr<GatedScan const> const& shared, RenderArguments const& arguments,
                        FigureOptions& options)
{
  GatedScan const& gated = *shared;
  FigureArguments const& asked = arguments.figure;
  FigureContent content;
  Session session;
  auto const scan = std::shared_ptr<Scan const>(shared, &gated.opened.scan);
  RestoredState const kept = sessionState(arguments, *scan, session);
  ViewState const& view = kept.state.view;
  content.scan = scan;
  for (std::size_t i = 0; i < gated.gates.size(); ++i) {
    std::string name = "Gate " + std::to_string(i + 1);
    std::size_t on = 0;
    for (NamedGate const& gate : session.gates)
      if (gate.on && on++ == i) name = gate.name;
    if (i < asked.gateNames.size()) name = asked.gateNames[i];
    content.gates.push_back({name, gated.gates[i], true});
  }
  if (asked.gateNames.size() > gated.gates.size())
    throw std::runtime_error("--gate-name: " + std::to_string(asked.gateNames.size()) + " names for " +
                             std::to_string(gated.gates.size()) + " gates");
  content.sets = kept.state.sets;
  content.pinned = asked.pins.empty() ? kept.pinned : runsNamed(asked.pins, *scan);
  content.logOutputs = view.logOutputs;
  content.logParameters = view.logParameters;
  content.focus = view.focus;
  Extents extents;
  extents.reset(scan);
  content.time = timeAxisOf(asked, session, extents);
  for (std::string const& name : asked.logOutputs) content.logOutputs[outputNamed(name, *scan)] = true;
  if (arguments.logAxes)
    for (std::size_t i = 0; i < scan->parameters.size(); ++i) content.logParameters[i] = true;
  auto const showPart = [&](std::size_t output, double low, double high) {
    auto const log = content.logOutputs.find(output);
    content.values[output] = AxisMap(low, high, log != content.logOutputs.end() && log->second);
  };
  for (auto const& [output, range] : view.outputRanges) showPart(output, range.low, range.high);
  for (auto const& [name, range] : session.view.zoomedValues)
    if (auto const output = scan->findOutput(name)) showPart(*output, range.low, range.high);
  for (std::string const& text : asked.valueRanges) {
    Gate const range = parseGate(text);
    showPart(outputNamed(range.column, *scan), range.range.low, range.range.high);
  }
  options.runsLook = asked.wholeBands       ? RunsLook::WholeBands
                     : arguments.quantiles  ? RunsLook::Bands
                     : arguments.plainLines ? RunsLook::Lines
                                            : view.runsLook;
  options.parameterLook = asked.scatter       ? ParameterLook::Scatter
                          : arguments.density ? ParameterLook::Densities
                                              : view.parameterLook;
  if (asked.focus == "faded") content.focus = Focus::Faded;
  if (asked.focus == "hidden") content.focus = Focus::Hidden;
  if (asked.focus == "all") content.focus = Focus::All;
  for (std::string const& name : asked.outputs) content.outputs.push_back(outputNamed(name, *scan));
  for (std::string const& name : session.view.outputs)
    if (auto const output = scan->findOutput(name); output && asked.outputs.empty())
      content.outputs.push_back(*output);
  for (std::string const& name : asked.parameters) options.parameters.push_back(parameterNamed(name, *scan));
  return content;
}

FigureOptions optionsOf(FigureArguments const& asked)
{
  FigureOptions options;
  options.width = asked.width.value_or(options.width);
  options.height = asked.height.value_or(options.height);
  options.dpi = asked.dpi.value_or(options.dpi);
  options.family = QString::fromStdString(asked.font);
  options.fontSize = asked.fontSize.value_or(options.fontSize);
  options.lineWidth = asked.lineWidth.value_or(options.lineWidth);
  options.title = QString::fromStdString(asked.title);
  options.gates = !asked.noGates;
  options.legend = !asked.noLegend;
  options.counts = !asked.noCounts;
  options.thresholds = !asked.noThresholds;
  options.scaleBar = !asked.noScaleBar;
  options.ground = !asked.transparent;
  options.strongest = asked.strongest.value_or(options.strongest);
  if (asked.palette == "colour-blind") options.palette = FigurePalette::ColourBlind;
  return options;
}

} // namespace

int renderFigure(RenderArguments const& arguments)
{
  auto const gated = std::make_shared<GatedScan const>(openGated(arguments));
  FigureOptions options = optionsOf(arguments.figure);
  FigureContent content = contentOf(gated, arguments, options);
  if (content.outputs.empty()) content.outputs = usualOutputs(*gated);
  content.sieves = gated->sieves();
  content.passing = gated->passed.runs;
  content.eligible = gated->eligible();
  if (content.sieves)
    content.comparison = std::make_shared<Comparison const>(
        compareParameters(*content.scan, content.passing, content.eligible, gated->method));
  auto const application = offscreenApplication();
  const QString picture = QFile::decodeName(arguments.output.c_str());
  const FigureBytes made = writeFigure(content, options, picture);
  if (arguments.figure.data) writeFigureData(content, options, picture);
  saveSieve(*gated, arguments);
  printNotes(*gated);
  if (made.notes.parametersShown < made.notes.parametersAsked)
    std::cerr << "runsieve: there is room for " << made.notes.parametersShown << " of "
              << made.notes.parametersAsked << " parameters\n";
  if (options.legend && !made.notes.legendShown) std::cerr << "runsieve: there is no room for the legend\n";
  if (content.sieves && content.passing.count() == 0)
    std::cerr << "runsieve: no run passes through all gates\n";
  return 0;
}

} // namespace runsieve::app
