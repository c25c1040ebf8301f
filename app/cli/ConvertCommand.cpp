#include "app/cli/Commands.h"

#include "app/cli/OutputFiles.h"
#include "app/desk/Desk.h"
#include "app/store/FileEnding.h"

#include <runsieve/core/write/WriteScan.h>

namespace runsieve::app {

int runConvert(ConvertArguments const& arguments)
{
  const std::string target = fileEnding(arguments.output);
  if (target != ".rsd" && target != ".csv")
    throw UsageError("convert: the name of the new file must end in .rsd (plot) or .csv (text)");
  if (target == ".csv" && arguments.hasGates())
    throw UsageError("convert: a text file holds no selection; --gate goes with .rsd");
  // A stored plot may take its own place: the scan in it stays.
  if (target == ".csv" || !isStoredPlot(arguments.file))
    checkOutputs("convert", arguments, {arguments.output});
  if (target == ".rsd" || isStoredPlot(arguments.file)) return desk().convert(arguments);
  writeScan(openScan(arguments.file, arguments.read).scan, arguments.output);
  return 0;
}

} // namespace runsieve::app
