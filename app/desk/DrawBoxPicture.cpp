#include "app/desk/DeskCommands.h"

#include "app/desk/BoxChart.h"
#include "app/render/OffscreenView.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

namespace runsieve::app {

void drawBoxPicture(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title)
{
  OffscreenView view(arguments.width, arguments.height);
  vtkNew<BoxChart> chart;
  chart->show(box, title);
  view.scene()->AddItem(chart);
  view.save(arguments.picture);
}

} // namespace runsieve::app
