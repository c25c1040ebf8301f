#include "app/desk/DeskCommands.h"

#include "app/store/FileEnding.h"
#include "app/store/StoredPlot.h"
#include "app/view/SievedScan.h"

#include <runsieve/core/write/WriteScan.h>

namespace runsieve::app {

int convertPlot(ConvertArguments const& arguments)
{
  const SievedScan sieved(arguments);
  if (fileEnding(arguments.output) == ".rsd")
    writePlot(sieved.stored, arguments.output);
  else
    writeScan(sieved.gated.scan(), arguments.output);
  printNotes(sieved.gated);
  return 0;
}

} // namespace runsieve::app
