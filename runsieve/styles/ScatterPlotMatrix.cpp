#include <runsieve/styles/ScatterPlotMatrix.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkChart.h>
#include <vtkScatterPlotMatrix.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

void showColumn(vtkScatterPlotMatrix* matrix, vtkTable* table, int column)
{
  if (hasColumn(table, column)) matrix->SetColumnVisibility(columnName(table, column), true);
}

void showColumnsInUse(vtkScatterPlotMatrix* matrix, StyleModel const& model)
{
  const int x = entry0(model.settings.xColumns);
  const int y = entry0(model.settings.yColumns);
  matrix->SetColumnVisibilityAll(false);
  showColumn(matrix, model.data, x);
  showColumn(matrix, model.data, y);
  for (int column : model.settings.parameterColumns) showColumn(matrix, model.data, column);
  // The active plot is found only in a layout that is up to date.
  matrix->Update();
  matrix->SetActivePlot({x, y});
}

void showAllColumns(vtkScatterPlotMatrix* matrix, vtkTable* table)
{
  matrix->SetColumnVisibilityAll(true);
  // The size does not follow the number of columns by itself.
  const auto n = static_cast<int>(table->GetNumberOfColumns());
  matrix->SetSize({0, 0});
  matrix->SetSize({n, n});
  matrix->Modified();
  matrix->Update();
}

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkScatterPlotMatrix* matrix = model.stage.scatterMatrix;
  matrix->SetScene(scene);
  model.stage.item = matrix;
  // A table without rows would be ignored, and the former one stay on show.
  const bool hasRows = model.data->GetNumberOfRows() > 0;
  matrix->SetInput(hasRows ? model.data : nullptr);
  matrix->SetVisible(hasRows);
  model.stage.chart = nullptr;
  if (hasRows && model.settings.getLimitColumVisibility())
    showColumnsInUse(matrix, model);
  else if (hasRows)
    showAllColumns(matrix, model.data);
  setGridMarginsTurned(matrix, model.stage.margins);
}

void applyPointSize(StyleModel& model, double size)
{
  vtkScatterPlotMatrix* matrix = model.stage.scatterMatrix;
  matrix->SetPlotMarkerSize(vtkScatterPlotMatrix::ACTIVEPLOT, static_cast<float>(1.5 * size));
  matrix->SetPlotMarkerSize(vtkScatterPlotMatrix::SCATTERPLOT, static_cast<float>(size));
}

} // namespace

const Style scatterPlotMatrixBuilder = {scatterPlotMatrixStyle, false, build, nullptr, applyPointSize};

} // namespace runsieve
