#include "app/cli/Commands.h"

#include "app/gate/Gate.h"
#include "app/gate/GateRows.h"
#include "app/scan/ScanWriter.h"
#include "app/store/FileEnding.h"
#include "app/store/StoredPlot.h"

#include <iostream>

namespace runsieve::app {

namespace {

void select(StoredPlot& plot, std::vector<std::string> const& gateTexts)
{
  if (gateTexts.empty()) return;
  std::vector<ResolvedGate> gates;
  for (std::string const& text : gateTexts) {
    gates.push_back(resolveGate(parseGate(text), *plot.scan));
    if (!gates.back().note.empty())
      std::cerr << "runsieve: " << gates.back().text() << ": " << gates.back().note << '\n';
  }
  plot.selectedRows = rowsOfGates(gates, *plot.scan);
  if (plot.view.output == gates.front().column) return;
  plot.view.output = gates.front().column;
  plot.window.valid = false; // it was that of another output
}

} // namespace

int runConvert(ConvertArguments const& arguments)
{
  const std::string target = fileEnding(arguments.output);
  if (target != ".rsd" && target != ".csv")
    throw UsageError("convert: the name of the new file must end in .rsd (plot) or .csv (text)");
  if (target == ".csv" && !arguments.gates.empty())
    throw UsageError("convert: a text file holds no selection; --gate goes with .rsd");
  StoredPlot plot = readPlotOrScan(arguments.file, arguments.read);
  checkOutputNames(*plot.scan);
  select(plot, arguments.gates);
  if (target == ".rsd")
    writePlot(plot, arguments.output);
  else
    writeScan(*plot.scan, arguments.output);
  return 0;
}

} // namespace runsieve::app
