#include <runsieve/plot/PlotContainer.h>

#include <runsieve/items/OwnedErrorPoints.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/PaddedRange.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkFloatArray.h>
#include <vtkPlot.h>

using namespace runsieve;

void PlotContainer::drawScatterPlotWithErrorBars(vtkContextScene* scene)
{
  if (!scene) return;
  vtkChart* chart = ensureNeutralChart();
  chart->SetScene(scene);
  chart->ClearPlots();
  setChartMargins(chart);
  item = chart;

  auto points = OwnedErrorPoints::create();
  const int x = entry0(metaData->xColumns);
  if (setPlotInput(points, plotData, x, entry0(metaData->yColumns))) {
    points->SetUseIndexForXSeries(useIndexForXSeries);
    points->SelectErrorArray(static_cast<vtkIdType>(entry0(metaData->zColumns)));
  }
  points->SetWidth(static_cast<float>(metaData->getLineWidth()));
  addPlot(chart, points);

  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTitle(chartText(metaData->xLabel));
  setPaddedRange(bottom, floatColumn(plotData, x));
  addSecondSeries(chart);
  setCustomTicks(bottom, false);
  chart->GetAxis(vtkAxis::LEFT)->SetTitle(chartText(metaData->yLabel));
  useColors(nullptr);
  chart->SetTitle(chartText(metaData->plotTitle));
}

void PlotContainer::addSecondSeries(vtkChart* chart)
{
  const bool hasX = metaData->xColumns.size() > 1;
  if (!(hasX || useIndexForXSeries) || metaData->yColumns.size() < 2) return;
  vtkTable* source = !tables.empty() && tables[0] ? tables[0] : plotData;
  vtkPlot* line = addLinePlot(chart);
  setPlotInput(line, source, hasX ? metaData->xColumns[1] : 0, metaData->yColumns[1]);
  line->SetUseIndexForXSeries(useIndexForXSeries);
}
