#include "app/cli/Commands.h"

#include "app/cli/OutputFiles.h"
#include "app/desk/Desk.h"

namespace runsieve::app {

int runRender(RenderArguments const& arguments)
{
  checkPictureName("render", arguments.output);
  checkOutputs("render", arguments, {arguments.output});
  return desk().render(arguments);
}

} // namespace runsieve::app
