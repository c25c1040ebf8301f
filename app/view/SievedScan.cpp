#include "app/view/SievedScan.h"

#include "app/gate/Gate.h"
#include "app/gate/GateRows.h"

#include <iostream>

namespace runsieve::app {

SievedScan::SievedScan(std::string const& file, ReadOptions const& read,
                       std::vector<std::string> const& gateTexts)
    : scan(readScan(file, read))
{
  checkOutputNames(*scan);
  for (std::string const& text : gateTexts) gates.push_back(resolveGate(parseGate(text), *scan));
}

std::size_t SievedScan::applyTo(PlotContainer& plot, ViewOptions const& options) const
{
  const QuietLibrary quiet;
  showScan(plot, scan, options);
  if (gates.empty()) return scan->trajectoryCount;
  selectRows(plot, rowsOfGates(gates, *scan));
  // Without parameters the library has nothing to compare and does not evaluate the selection.
  return plot.metaData->parameterColumns.empty() ? runsThroughGates(gates, *scan).size()
                                                 : survivingRuns(plot);
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
