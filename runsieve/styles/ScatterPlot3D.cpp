#include <runsieve/styles/ScatterPlot3D.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChart.h>
#include <vtkChartXYZ.h>
#include <vtkNew.h>
#include <vtkPlotPoints3D.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkChartXYZ* chart = model.stage.chart3D;
  chart->SetScene(scene);
  chart->ClearPlots();
  model.stage.item = chart;
  model.stage.chart = nullptr;
  const int x = entry0(model.settings.xColumns);
  const int y = entry0(model.settings.yColumns);
  const int z = entry0(model.settings.zColumns);
  if (isNumeric(model.data, x) && isNumeric(model.data, y) && isNumeric(model.data, z) &&
      model.data->GetNumberOfRows() > 0) {
    vtkNew<vtkPlotPoints3D> plot;
    plot->SetInputData(model.data, x, y, z);
    chart->AddPlot(plot);
  }
  chart->SetAxisColor({0, 0, 0, 255});
  chart->RecalculateBounds();
  chart->SetGeometry(vtkRectf(75.0f, 20.0f, 250.0f, 260.0f));
}

} // namespace

const Style scatterPlot3DBuilder = {scatterPlot3D, false, build, nullptr, nullptr};

} // namespace runsieve
