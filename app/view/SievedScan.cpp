#include "app/view/SievedScan.h"

#include "app/gate/Gate.h"
#include "app/gate/GateRows.h"

#include <iostream>

namespace runsieve::app {

SievedScan::SievedScan(std::string const& file, ReadOptions const& read,
                       std::vector<std::string> const& gateTexts)
    : stored(readPlotOrScan(file, read)), scan(stored.scan)
{
  checkOutputNames(*scan);
  for (std::string const& text : gateTexts) gates.push_back(resolveGate(parseGate(text), *scan));
}

std::size_t SievedScan::applyTo(PlotContainer& plot, ViewOptions const& options) const
{
  const QuietLibrary quiet;
  StoredPlot shown = stored;
  if (!gates.empty()) shown.selectedRows = rowsOfGates(gates, *scan);
  if (options.output != stored.view.output) shown.window.valid = false; // it was that of another output
  shown.view = options;
  showPlot(plot, shown);
  if (!sieves()) return scan->trajectoryCount;
  if (!plot.metaData->parameterColumns.empty()) return survivingRuns(plot);
  // Without parameters the library has nothing to compare and does not evaluate the selection.
  return gates.empty() ? scan->trajectoryCount : runsThroughGates(gates, *scan).size();
}

std::vector<std::string> SievedScan::notes() const
{
  std::vector<std::string> lines;
  for (ResolvedGate const& gate : gates)
    if (!gate.note.empty()) lines.push_back(gate.text() + ": " + gate.note);
  return lines;
}

QuietLibrary::QuietLibrary() : former(std::cout.rdbuf(nullptr)) {}

QuietLibrary::~QuietLibrary()
{
  std::cout.rdbuf(former); // clears the state that writing without a buffer has set
}

} // namespace runsieve::app
