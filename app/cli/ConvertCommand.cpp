#include "app/cli/Commands.h"

#include "app/gate/Gate.h"
#include "app/gate/GateRows.h"
#include "app/scan/ScanWriter.h"
#include "app/store/StoredPlot.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>

namespace runsieve::app {

namespace {

/// The ending of a file name in small letters, with its dot.
std::string ending(std::string const& path)
{
  std::string text = std::filesystem::path(path).extension().string();
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

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
  plot.view.output = gates.front().column;
}

} // namespace

int runConvert(ConvertArguments const& arguments)
{
  const std::string target = ending(arguments.output);
  if (target != ".rsd" && target != ".csv")
    throw UsageError("convert: the name of the new file must end in .rsd (plot) or .csv (text)");
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
