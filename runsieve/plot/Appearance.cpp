#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/Palette.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPlotPoints.h>

using namespace runsieve;

namespace {

/// Sets the marker size of plot 0 of a chart, if it has markers.
void setMarkerSize(vtkChart* chart, double size)
{
  auto* points =
      vtkPlotPoints::SafeDownCast(chart && chart->GetNumberOfPlots() > 0 ? chart->GetPlot(0) : nullptr);
  if (points) points->SetMarkerSize(static_cast<float>(size));
}

/// The triangle of small charts and the large chart beside it, in which every marker has twice the stated
/// size.
void setMultiPlotMarkerSize(vtkChartMatrix* matrix, int parameters, double size)
{
  auto at = [matrix](int i, int j) {
    const vtkVector2i grid = matrix->GetSize();
    return i < grid.GetX() && j < grid.GetY() ? matrix->GetChart({i, j}) : nullptr;
  };
  for (int i = 0; i <= parameters - 2; ++i)
    for (int j = 0; j <= parameters - 2 - i; ++j) setMarkerSize(at(i, j), 2.0 * size);
  setMarkerSize(at(parameters / 2, parameters / 2), 2.0 * size);
}

} // namespace

void PlotContainer::setPointSize(double size)
{
  metaData->pointSize = size;
  switch (metaData->getPlotStyle()) {
  case scatterPlot:
    setMarkerSize(chartXY, size);
    break;
  case multiPlot:
    setMultiPlotMarkerSize(chartMatrix, static_cast<int>(metaData->parameterColumns.size()), size);
    break;
  case scatterPlotMatrixStyle:
    scatterPlotMatrix->SetPlotMarkerSize(vtkScatterPlotMatrix::ACTIVEPLOT, static_cast<float>(1.5 * size));
    scatterPlotMatrix->SetPlotMarkerSize(vtkScatterPlotMatrix::SCATTERPLOT, static_cast<float>(size));
    break;
  default:
    break;
  }
}

void PlotContainer::useColors(vtkPlot* plot)
{
  if (!plot && chartXY && chartXY->GetNumberOfPlots() > 0) plot = chartXY->GetPlot(0);
  auto* points = vtkPlotPoints::SafeDownCast(plot);
  if (!points) return;
  vtkDoubleArray* column =
      hasColumn(plotData, metaData->colorColumn) ? doubleColumn(plotData, metaData->colorColumn) : nullptr;
  points->SetScalarVisibility(0);
  if (metaData->useSolidColor) {
    auto channel = [](int value) { return static_cast<unsigned char>(value); };
    points->SetColor(channel(metaData->red), channel(metaData->green), channel(metaData->blue),
                     channel(metaData->alpha));
    return;
  }
  if (!column) return;
  double range[2];
  column->GetRange(range, 0);
  vtkNew<vtkLookupTable> colors;
  colors->SetAlpha(1.0);
  colors->SetHueRange(0.2, 0.8);
  colors->SetSaturationRange(0.95, 1.0);
  colors->SetValueRange(0.9, 0.9);
  colors->SetRamp(0);
  if (range[0] <= range[1]) colors->SetRange(range); // reversed if there is no number in the column
  colors->Build();
  points->SetScalarVisibility(1);
  points->SetLookupTable(colors);
  points->SelectColorArray(static_cast<vtkIdType>(metaData->colorColumn));
}

void PlotContainer::drawDecorations(vtkContextScene*)
{
  if (!showDecorationPlots || !decorationTable) return;
  vtkChart* chart = ensureChart();
  const vtkIdType columns = decorationTable->GetNumberOfColumns();
  for (vtkIdType i = 0; i + 1 < columns; ++i) {
    vtkPlot* plot = chart->AddPlot(vtkChart::LINE);
    plot->SetInteractive(false);
    plot->SetSelectable(false);
    auto const& color = palette[static_cast<std::size_t>(i) % palette.size()];
    auto channel = [&color](int c) { return static_cast<unsigned char>(color[c] * 200.0); };
    plot->SetColor(channel(0), channel(1), channel(2), 230);
    plot->SetWidth(4.0);
    setPlotInput(plot, decorationTable, columns - 1, i);
  }
}
