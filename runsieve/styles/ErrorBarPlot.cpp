#include <runsieve/styles/ErrorBarPlot.h>

#include <runsieve/charts/PaddedRange.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/items/OwnedErrorPoints.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ChartParts.h>
#include <runsieve/styles/PlotColors.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

vtkPlot* addErrorPoints(vtkChart* chart, StyleModel const& model)
{
  PlotMetaData const& settings = model.settings;
  auto points = OwnedErrorPoints::create();
  if (setPlotInput(points, model.data, entry0(settings.xColumns), entry0(settings.yColumns))) {
    points->SetUseIndexForXSeries(model.indexAsX);
    points->SelectErrorArray(static_cast<vtkIdType>(entry0(settings.zColumns)));
  }
  points->SetWidth(static_cast<float>(settings.getLineWidth()));
  addPlot(chart, points);
  return points;
}

void addSecondSeries(vtkChart* chart, StyleModel const& model)
{
  std::vector<int> const& x = model.settings.xColumns;
  std::vector<int> const& y = model.settings.yColumns;
  const bool hasX = x.size() > 1;
  if (!(hasX || model.indexAsX) || y.size() < 2) return;
  const bool fromSideTable = !model.sideTables.empty() && model.sideTables[0];
  vtkTable* source = fromSideTable ? model.sideTables[0].GetPointer() : model.data;
  vtkPlot* line = addLinePlot(chart);
  setPlotInput(line, source, hasX ? x[1] : 0, y[1]);
  line->SetUseIndexForXSeries(model.indexAsX);
}

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkChart* chart = model.stage.alone();
  chart->SetScene(scene);
  chart->ClearPlots();
  setChartMargins(chart, model.stage.margins);
  model.stage.item = chart;
  vtkPlot* points = addErrorPoints(chart, model);
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  setPaddedRange(bottom, floatColumn(model.data, entry0(model.settings.xColumns)));
  addSecondSeries(chart, model);
  setTickTexts(bottom, model);
  colorPlot(points, model.data, model.settings);
  setTitles(chart, model);
}

} // namespace

const Style errorBarBuilder = {scatterPlotWithErrorBars, false, build, nullptr, nullptr};

} // namespace runsieve
