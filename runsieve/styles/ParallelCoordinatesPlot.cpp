#include <runsieve/styles/ParallelCoordinatesPlot.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChartParallelCoordinates.h>
#include <vtkPlotParallelCoordinates.h>
#include <vtkTable.h>
#include <vtkTextProperty.h>

namespace runsieve {

namespace {

void colorLines(vtkPlotParallelCoordinates* plot, StyleModel const& model)
{
  const int column = model.settings.colorColumn;
  const bool colored = !model.settings.useSolidColor && isNumeric(model.data, column);
  plot->SetScalarVisibility(colored);
  if (hasColumn(model.data, column)) plot->SelectColorArray(static_cast<vtkIdType>(column));
}

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkChartParallelCoordinates* chart = model.stage.parallel;
  if (!chart) return; // a copy has none
  chart->SetScene(scene);
  model.stage.item = chart;
  chart->ClearPlots();
  vtkPlot* plot = chart->GetPlot(0);
  plot->SetInputData(model.data);
  colorLines(vtkPlotParallelCoordinates::SafeDownCast(plot), model);
  if (model.settings.yColumns.size() >= 3) {
    chart->SetColumnVisibilityAll(false);
    for (int column : model.settings.yColumns)
      if (hasColumn(model.data, column)) chart->SetColumnVisibility(columnName(model.data, column), true);
  } else {
    chart->SetColumnVisibilityAll(true);
  }
  for (vtkIdType i = 0; i < chart->GetNumberOfAxes(); ++i)
    chart->GetAxis(static_cast<int>(i))->GetTitleProperties()->SetOrientation(-45.0);
}

} // namespace

const Style parallelCoordinatesBuilder = {parallelCoordinatesPlot, false, build, nullptr, nullptr};

} // namespace runsieve
