#include "app/cli/Commands.h"

#include "app/cli/OutputFiles.h"
#include "app/desk/Desk.h"

namespace runsieve::app {

int runRender(RenderArguments const& arguments)
{
  if (arguments.figure.wanted)
    checkFigureName("render", arguments.output);
  else
    checkPictureName("render", arguments.output);
  checkOutputs("render", arguments, {arguments.output});
  return desk().render(arguments);
}

} // namespace runsieve::app
