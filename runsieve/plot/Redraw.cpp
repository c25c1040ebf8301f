#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/charts/Plots.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/Styles.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkCommand.h>
#include <vtkContextScene.h>
#include <vtkPlotPoints.h>

#include <iostream>

using namespace runsieve;

void PlotContainer::redraw()
{
  metaData->blockSignals(true);
  if (chartXY) chartXY->RemoveObservers(vtkCommand::InteractionEvent);
  vtkContextScene* scene = item->GetScene();
  if (!scene) {
    std::cout << "void PlotContainer::redraw()"
              << ": invalid scene" << std::endl;
    return; // the settings stay blocked until a redraw finds a scene
  }
  d->lifetime.keep(chartXY);
  d->lifetime.keepAll(chartMatrix);
  d->build(metaData->getPlotStyle(), scene);
  d->finishRedraw(scene);
  metaData->blockSignals(false);
}

void PlotContainer::Private::finishRedraw(vtkContextScene* scene)
{
  plot.setPointSize(plot.metaData->pointSize);
  vtkChart* chart = plot.chartXY;
  if (!chart) return;
  if (auto* points = vtkPlotPoints::SafeDownCast(plot0(chart)))
    points->SetMarkerStyle(plot.metaData->markerStyle);
  plot.drawDecorations(scene);
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetLogScale(plot.metaData->getLogX());
  if (chart->GetScene()) bottom->Update();
}

void PlotContainer::drawScatterPlotWithErrorBars(vtkContextScene* scene)
{
  d->build(scatterPlotWithErrorBars, scene);
}

void PlotContainer::drawMulitPlot(vtkContextScene* scene)
{
  d->build(multiPlot, scene);
}

void PlotContainer::drawSelectionCdfPlot(vtkContextScene* scene)
{
  d->build(selectionCdfPlot, scene);
}

void PlotContainer::drawFitParameterDistributionPlot(vtkContextScene* scene)
{
  d->build(fitParameterDistributionPlot, scene);
}
