#include "app/desk/DeskCommands.h"

#include "app/render/OffscreenView.h"
#include "app/view/StabilityChart.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

namespace runsieve::app {

void drawStabilityPicture(RankArguments const& arguments, Comparison const& comparison,
                          ComparisonStability const& stability)
{
  OffscreenView view(arguments.width, arguments.height);
  vtkNew<StabilityChart> chart;
  chart->show(comparison, stability);
  view.scene()->AddItem(chart);
  view.save(arguments.stabilityPicture);
}

} // namespace runsieve::app
