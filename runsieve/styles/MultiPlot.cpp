#include <runsieve/styles/MultiPlot.h>

#include <runsieve/charts/ChartLooks.h>
#include <runsieve/charts/PaddedRange.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ChartParts.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkDoubleArray.h>
#include <vtkPlot.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

/// The cell of the large chart, in both directions.
int largeCell(int parameters)
{
  return parameters / 2;
}

void addBlackPoints(vtkChart* chart, vtkTable* table, int x, int y)
{
  vtkPlot* points = addPointPlot(chart);
  setPlotInput(points, table, x, y);
  points->SetColor(0, 0, 0, 255);
}

void buildPair(StyleModel& model, int i, int j)
{
  std::vector<int> const& parameters = model.settings.parameterColumns;
  const int x = parameters[static_cast<std::size_t>(i)];
  const int y = parameters[parameters.size() - 1 - static_cast<std::size_t>(j)];
  vtkChart* chart = model.stage.cell({i, j}, ChartPart::pair);
  makeSelectable(chart, model.stage.link);
  addBlackPoints(chart, model.data, x, y);
  setParameterAxes(chart, model, x, y, j == 0, i == 0);
}

void buildLargeChart(StyleModel& model, int n)
{
  const int corner = largeCell(n);
  const int span = (n + 1) / 2;
  vtkChart* chart = model.stage.mainCell({corner, corner}, ChartPart::largePair);
  makeSelectable(chart, model.stage.link);
  model.stage.matrix->SetChartSpan({corner, corner}, {span, span});
  const int x = entry0(model.settings.xColumns);
  addBlackPoints(chart, model.data, x, entry0(model.settings.yColumns));
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  setPaddedRange(bottom, doubleColumn(model.data, x));
  setTickTexts(bottom, model);
  setTitles(chart, model);
}

void build(StyleModel& model, vtkContextScene* scene)
{
  const int n = static_cast<int>(model.settings.parameterColumns.size());
  model.stage.matrix->SetScene(scene);
  model.stage.item = model.stage.matrix;
  model.stage.layOutGrid({n, n});
  setGridMarginsTurned(model.stage.matrix, model.stage.margins);
  if (n == 0) return;
  for (int i = 0; i <= n - 2; ++i)
    for (int j = 0; j <= n - 2 - i; ++j) buildPair(model, i, j);
  buildLargeChart(model, n);
  model.stage.makeCellsReachable();
}

void applyMargins(ChartStage& stage)
{
  // The gutters lie the other way round than in a redraw: kept so.
  setGridMargins(stage.matrix, stage.margins);
}

/// Every marker has twice the stated size.
void applyPointSize(StyleModel& model, double size)
{
  const int n = static_cast<int>(model.settings.parameterColumns.size());
  vtkChartMatrix* matrix = model.stage.matrix;
  auto at = [matrix](int i, int j) {
    const vtkVector2i grid = matrix->GetSize();
    return i < grid.GetX() && j < grid.GetY() ? matrix->GetChart({i, j}) : nullptr;
  };
  for (int i = 0; i <= n - 2; ++i)
    for (int j = 0; j <= n - 2 - i; ++j) setMarkerSize(at(i, j), 2.0 * size);
  setMarkerSize(at(largeCell(n), largeCell(n)), 2.0 * size);
}

} // namespace

const Style multiPlotBuilder = {multiPlot, false, build, applyMargins, applyPointSize};

} // namespace runsieve
