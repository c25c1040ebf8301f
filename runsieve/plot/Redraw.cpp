#include <runsieve/plot/PlotContainer.h>

#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/plot/ChartLifetime.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/PaddedRange.h>
#include <runsieve/plot/TableAccess.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <vtkAxis.h>
#include <vtkCommand.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlot3D.h>
#include <vtkPlotParallelCoordinates.h>
#include <vtkPlotPoints.h>
#include <vtkPlotPoints3D.h>
#include <vtkTextProperty.h>

#include <iostream>

using namespace runsieve;

namespace {

void showColumn(vtkScatterPlotMatrix* matrix, vtkTable* table, int column)
{
  if (hasColumn(table, column)) matrix->SetColumnVisibility(columnName(table, column), true);
}

} // namespace

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
  chartLifetime->keep(chartXY);
  chartLifetime->keepAll(chartMatrix);
  redrawInScene(scene);
  finishRedraw(scene);
  metaData->blockSignals(false);
}

void PlotContainer::redrawInScene(vtkContextScene* scene)
{
  switch (metaData->getPlotStyle()) {
  case scatterPlot:
    return drawScatterPlot(scene);
  case scatterPlotMatrixStyle:
    return drawScatterPlotMatrix(scene);
  case scatterPlot3D:
    return drawScatterPlot3D(scene);
  case selectionCdfPlot:
    return drawSelectionCdfPlot(scene);
  case multiPlot:
    return drawMulitPlot(scene);
  case scatterPlotWithErrorBars:
    return drawScatterPlotWithErrorBars(scene);
  case fitParameterDistributionPlot:
    return drawFitParameterDistributionPlot(scene);
  case parallelCoordinatesPlot:
    return drawParallelCoordinates(scene);
  default:
    return drawNothingYet();
  }
}

void PlotContainer::finishRedraw(vtkContextScene* scene)
{
  setPointSize(metaData->pointSize);
  if (!chartXY) return;
  if (auto* points = vtkPlotPoints::SafeDownCast(plot0(chartXY)))
    points->SetMarkerStyle(metaData->markerStyle);
  drawDecorations(scene);
  vtkAxis* bottom = chartXY->GetAxis(vtkAxis::BOTTOM);
  bottom->SetLogScale(metaData->getLogX());
  // A chart made anew for a style without a builder is in no scene yet.
  if (chartXY->GetScene()) bottom->Update();
}

void PlotContainer::drawScatterPlot(vtkContextScene* scene)
{
  vtkChart* chart = ensureNeutralChart();
  chart->SetScene(scene);
  chart->ClearPlots();
  setChartMargins(chart);
  chart->SetAnnotationLink(annotationLink);
  item = chart;
  chart->AddObserver(vtkCommand::InteractionEvent, shiftScaleCallback, 0.0);

  vtkPlot* plot = nullptr;
  if (metaData->getPlotLine()) {
    vtkSmartPointer<vtkPlotLineSet> lines = vtkSmartPointer<vtkPlotLineSet>::Take(vtkPlotLineSet::New());
    lines->SetStride(metaData->getStride());
    lines->SetOnlyShowSelected(0);
    addPlot(chart, lines);
    plot = lines;
  } else {
    plot = addPointPlot(chart);
    vtkPlotPoints::SafeDownCast(plot)->SetMarkerSize(static_cast<float>(metaData->pointSize));
  }
  const int x = entry0(metaData->xColumns);
  setPlotInput(plot, plotData, x, entry0(metaData->yColumns));

  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  const bool remembered = applyRememberedWindow(chart);
  if (!remembered && doubleColumn(plotData, x)) {
    bottom->SetBehavior(vtkAxis::FIXED);
    setPaddedRange(bottom, doubleColumn(plotData, x));
  }
  setCustomTicks(bottom, true);
  bottom->SetTitle(chartText(metaData->xLabel));
  // The bottom axis, not the left one, goes back to automatic behaviour; the left one is left alone.
  if (!remembered) bottom->SetBehavior(vtkAxis::AUTO);
  left->SetTitle(chartText(metaData->yLabel));
  useColors(nullptr);
  chart->SetTitle(chartText(metaData->plotTitle));
}

bool PlotContainer::applyRememberedWindow(vtkChart* chart)
{
  auto found = coordinateWindows.find(
      ReducedMetaData{entry0(metaData->xColumns), entry0(metaData->yColumns), metaData->getPlotStyle()});
  if (found == coordinateWindows.end()) return false;
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  CoordinateWindow const& window = found->second;
  if (metaData->getLogX() && !bottom->GetLogScaleActive()) {
    // The window of an active log axis is stored in powers of ten, which only an active log axis takes back.
    bottom->SetUnscaledRange(1.0, 10.0);
    bottom->SetLogScale(true);
    bottom->Update();
  }
  bottom->SetBehavior(vtkAxis::FIXED);
  bottom->SetMinimum(window.xMin);
  bottom->SetMaximum(window.xMax);
  left->SetBehavior(vtkAxis::FIXED);
  left->SetMinimum(window.yMin);
  left->SetMaximum(window.yMax);
  return true;
}

void PlotContainer::setCustomTicks(vtkAxis* axis, bool atTickPositions)
{
  if (!xTickLabels || xTickLabels->GetNumberOfValues() < 1) {
    // Ticks of a former redraw would stay.
    axis->SetCustomTickPositions(nullptr, nullptr);
    return;
  }
  vtkSmartPointer<vtkDoubleArray> positions = xTickPositions;
  if (!atTickPositions || !positions || positions->GetNumberOfValues() < 1) {
    positions = vtkSmartPointer<vtkDoubleArray>::New();
    for (vtkIdType i = 0; i < xTickLabels->GetNumberOfValues(); ++i)
      positions->InsertNextValue(static_cast<double>(i));
  }
  axis->SetCustomTickPositions(positions, xTickLabels);
}

void PlotContainer::drawScatterPlotMatrix(vtkContextScene* scene)
{
  vtkScatterPlotMatrix* matrix = scatterPlotMatrix;
  matrix->SetScene(scene);
  item = matrix;
  // A table without rows would be ignored, and the former one stay on show.
  matrix->SetInput(plotData->GetNumberOfRows() > 0 ? plotData.GetPointer() : nullptr);
  matrix->SetVisible(plotData->GetNumberOfRows() > 0);
  chartXY = nullptr;
  if (plotData->GetNumberOfRows() > 0) {
    const int x = entry0(metaData->xColumns);
    const int y = entry0(metaData->yColumns);
    if (metaData->getLimitColumVisibility()) {
      matrix->SetColumnVisibilityAll(false);
      showColumn(matrix, plotData, x);
      showColumn(matrix, plotData, y);
      for (int column : metaData->parameterColumns) showColumn(matrix, plotData, column);
      // The active plot is found only in a layout that is up to date.
      matrix->Update();
      matrix->SetActivePlot({x, y});
    } else {
      matrix->SetColumnVisibilityAll(true);
      // The size does not follow the number of columns by itself.
      const auto n = static_cast<int>(plotData->GetNumberOfColumns());
      matrix->SetSize({0, 0});
      matrix->SetSize({n, n});
      matrix->Modified();
      matrix->Update();
    }
  }
  matrix->SetGutter({static_cast<float>(verticalGutter), static_cast<float>(horizontalGutter)});
  matrix->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin);
}

void PlotContainer::drawScatterPlot3D(vtkContextScene* scene)
{
  chartXYZ->SetScene(scene);
  chartXYZ->ClearPlots();
  item = chartXYZ;
  chartXY = nullptr;
  const int x = entry0(metaData->xColumns);
  const int y = entry0(metaData->yColumns);
  const int z = entry0(metaData->zColumns);
  if (isNumeric(plotData, x) && isNumeric(plotData, y) && isNumeric(plotData, z) &&
      plotData->GetNumberOfRows() > 0) {
    vtkNew<vtkPlotPoints3D> plot;
    plot->SetInputData(plotData, x, y, z);
    chartXYZ->AddPlot(plot);
  }
  chartXYZ->SetAxisColor({0, 0, 0, 255});
  chartXYZ->RecalculateBounds();
  chartXYZ->SetGeometry(vtkRectf(75.0f, 20.0f, 250.0f, 260.0f));
}

void PlotContainer::drawParallelCoordinates(vtkContextScene* scene)
{
  if (!chartParallelCoordinates) return; // a copy has none
  vtkChartParallelCoordinates* chart = chartParallelCoordinates;
  chart->SetScene(scene);
  item = chart;
  chart->ClearPlots();
  vtkPlot* plot = chart->GetPlot(0);
  plot->SetInputData(plotData);
  vtkPlotParallelCoordinates::SafeDownCast(plot)->SetScalarVisibility(!metaData->useSolidColor);
  if (metaData->colorColumn >= 0 && hasColumn(plotData, metaData->colorColumn))
    vtkPlotParallelCoordinates::SafeDownCast(plot)->SelectColorArray(
        static_cast<vtkIdType>(metaData->colorColumn));
  if (metaData->yColumns.size() >= 3) {
    chart->SetColumnVisibilityAll(false);
    for (int column : metaData->yColumns)
      if (hasColumn(plotData, column)) chart->SetColumnVisibility(columnName(plotData, column), true);
  } else {
    chart->SetColumnVisibilityAll(true);
  }
  for (vtkIdType i = 0; i < chart->GetNumberOfAxes(); ++i)
    chart->GetAxis(static_cast<int>(i))->GetTitleProperties()->SetOrientation(-45.0);
}

void PlotContainer::drawNothingYet()
{
  item = ensureStandaloneChart();
  metaData->plotTitle = "Not yet implemented";
  chartXY->SetTitle(metaData->plotTitle);
}
