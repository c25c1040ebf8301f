#include "app/cli/Commands.h"

#include "app/cli/OutputFiles.h"
#include "app/desk/Desk.h"

namespace runsieve::app {

int runRender(RenderArguments const& arguments)
{
  if (!isPictureName(arguments.output))
    throw UsageError("render: the name of the picture must end in .png or .pdf");
  checkOutputs("render", arguments, {arguments.output});
  return desk().render(arguments);
}

} // namespace runsieve::app
