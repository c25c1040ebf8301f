#include "app/cli/Commands.h"

#include "app/cli/FigureDataFiles.h"
#include "app/cli/OutputFiles.h"
#include "app/desk/Desk.h"

namespace runsieve::app {

int runRender(RenderArguments const& arguments)
{
  if (arguments.figure.wanted)
    checkFigureName("render", arguments.output);
  else
    checkPictureName("render", arguments.output);
  std::vector<std::string> outputs = {arguments.output};
  if (arguments.figure.data)
    for (std::string const& file : figureDataFiles(arguments.output, {true, true})) outputs.push_back(file);
  checkOutputs("render", arguments, outputs);
  return desk().render(arguments);
}

} // namespace runsieve::app
