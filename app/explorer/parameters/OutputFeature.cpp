#include "app/explorer/parameters/OutputFeature.h"

#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/ParameterSpread.h"

#include <limits>

namespace runsieve::app {

namespace {

ScanParameter lastValues(Scan const& scan, std::size_t output)
{
  ScanParameter feature;
  feature.values.reserve(scan.runs.size());
  for (std::size_t run = 0; run < scan.runs.size(); ++run) {
    const std::size_t end = scan.runs[run].end;
    feature.values.push_back(end > 0 ? scan.valuesOf(output, run)[end - 1]
                                     : std::numeric_limits<double>::quiet_NaN());
  }
  return feature;
}

} // namespace

bool OutputFeature::update()
{
  if (!document.isOpen() || document.state().view.outputs.empty()) return false;
  const std::size_t wanted = document.state().view.outputs.front();
  auto const& logs = document.state().view.logOutputs;
  auto const found = logs.find(wanted);
  const bool wantsLog = found != logs.end() && found->second;
  if (scan == document.sharedScan() && output == wanted && logarithmic == wantsLog) return true;
  scan = document.sharedScan();
  output = wanted;
  logarithmic = wantsLog;
  ++number;
  const ScanParameter feature = lastValues(*scan, output);
  const AxisMap all = spreadOf(feature).axis(logarithmic);
  constexpr double room = 0.04;
  shown = all.widened(room);
  places = RunColumns(feature.values, shown);
  return true;
}

QString OutputFeature::title() const
{
  if (!scan || output >= scan->outputs.size()) return {};
  return "last " + titleOf(scan->outputs[output].label);
}

} // namespace runsieve::app
