#include <runsieve/styles/ScatterPlot.h>

#include <runsieve/charts/CustomTicks.h>
#include <runsieve/charts/PaddedRange.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ChartParts.h>
#include <runsieve/styles/PlotColors.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkCommand.h>
#include <vtkDoubleArray.h>
#include <vtkPlotPoints.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

vtkPlot* addMainPlot(vtkChart* chart, StyleModel const& model)
{
  if (model.settings.getPlotLine()) {
    const vtkSmartPointer<vtkPlotPoints> lines = runLines(model, false);
    addPlot(chart, lines);
    return lines;
  }
  vtkPlot* points = addPointPlot(chart);
  setMarkerSize(chart, model.settings.pointSize);
  return points;
}

void build(StyleModel& model, vtkContextScene* scene)
{
  vtkChart* chart = model.stage.alone();
  chart->SetScene(scene);
  chart->ClearPlots();
  setChartMargins(chart, model.stage.margins);
  chart->SetAnnotationLink(model.stage.link);
  model.stage.item = chart;
  chart->AddObserver(vtkCommand::InteractionEvent, model.stage.interactionObserver, 0.0);
  vtkPlot* plot = addMainPlot(chart, model);
  setMainInput(plot, model);

  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkDoubleArray* x = doubleColumn(model.data, entry0(model.settings.xColumns));
  const bool remembered = applyRememberedWindow(chart, model);
  if (!remembered && x) {
    bottom->SetBehavior(vtkAxis::FIXED);
    setPaddedRange(bottom, x);
  }
  model.stage.ticks.show(bottom, model.tickTexts, model.tickPositions);
  // The bottom axis, not the left one, goes back to automatic behaviour; the left one is left alone.
  if (!remembered) bottom->SetBehavior(vtkAxis::AUTO);
  colorPlot(plot, model.data, model.settings);
  setTitles(chart, model);
}

void applyMargins(ChartStage& stage)
{
  if (stage.chart) setChartMargins(stage.chart, stage.margins);
}

void applyPointSize(StyleModel& model, double size)
{
  setMarkerSize(model.stage.chart, size);
}

} // namespace

const Style scatterPlotBuilder = {scatterPlot, false, build, applyMargins, applyPointSize};

} // namespace runsieve
