#include <runsieve/styles/NotYetImplemented.h>

#include <runsieve/records/PlotMetaData.h>

#include <vtkChart.h>
#include <vtkContextScene.h>

namespace runsieve {

namespace {

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkChart* chart = model.stage.chart;
  if (!chart || model.stage.roles.of(chart).place == ChartPlace::cell) chart = model.stage.alone();
  // The next redraw finds its scene through the item.
  if (!chart->GetScene()) chart->SetScene(scene);
  model.stage.item = chart;
  model.settings.plotTitle = "Not yet implemented";
  chart->SetTitle(model.settings.plotTitle);
}

} // namespace

/// The number is that of the first style that has no builder; it stands for all of them.
const Style notYetImplementedBuilder = {barPlot, false, build, nullptr, nullptr};

} // namespace runsieve
