#include <runsieve/plot/PlotContainer.h>

#include <runsieve/items/vtkPlotErrorPoints.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/MarginChart.h>
#include <runsieve/plot/Palette.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkAxis.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlotPoints.h>

using namespace runsieve;

namespace {

/// Sets the marker size of plot 0 of a chart, if it has markers.
void setMarkerSize(vtkChart* chart, double size)
{
  if (auto* points = vtkPlotPoints::SafeDownCast(plot0(chart)))
    points->SetMarkerSize(static_cast<float>(size));
}

void setScale(vtkChart* chart, int side, bool log)
{
  vtkAxis* axis = chart->GetAxis(side);
  axis->SetLogScale(log);
  if (!chart->GetScene()) return;
  axis->Update();
  // The rounded bounds of a linear axis begin at 0, which would keep a log scale from becoming active.
  chart->RecalculateBounds();
  chart->GetScene()->SetDirty(true);
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
  if (!plot) plot = plot0(chartXY);
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
  if (!showDecorationPlots || !decorationTable || !chartXY) return;
  const vtkIdType columns = decorationTable->GetNumberOfColumns();
  for (vtkIdType i = 0; i + 1 < columns; ++i) {
    vtkPlot* plot = chartXY->AddPlot(vtkChart::LINE);
    plot->SetInteractive(false);
    plot->SetSelectable(false);
    auto const& color = palette[static_cast<std::size_t>(i) % palette.size()];
    auto channel = [&color](int c) { return static_cast<unsigned char>(color[c] * 200.0); };
    plot->SetColor(channel(0), channel(1), channel(2), 230);
    plot->SetWidth(4.0);
    setPlotInput(plot, decorationTable, columns - 1, i);
  }
}

void PlotContainer::setPlotTitle(std::string title)
{
  metaData->plotTitle = std::move(title);
  if (chartXY) chartXY->SetTitle(chartText(metaData->plotTitle));
}

void PlotContainer::setXLabel(std::string label)
{
  metaData->xLabel = std::move(label);
  if (chartXY) chartXY->GetAxis(vtkAxis::BOTTOM)->SetTitle(chartText(metaData->xLabel));
}

void PlotContainer::setYLabel(std::string label)
{
  metaData->yLabel = std::move(label);
  if (chartXY) chartXY->GetAxis(vtkAxis::LEFT)->SetTitle(chartText(metaData->yLabel));
}

void PlotContainer::setMarkerStyle(int style)
{
  metaData->markerStyle = style;
  if (auto* points = vtkPlotPoints::SafeDownCast(plot0(chartXY))) points->SetMarkerStyle(style);
}

void PlotContainer::setLineWidth(double width)
{
  metaData->setLineWidth(width);
  if (metaData->getPlotStyle() != scatterPlotWithErrorBars) return;
  if (auto* points = vtkPlotErrorPoints::SafeDownCast(plot0(chartXY))) {
    vtkPen* pen = points->GetPen();
    pen->SetWidth(static_cast<float>(width));
    points->SetPen(pen);
  }
}

void PlotContainer::setColor(int red, int green, int blue, int alpha)
{
  metaData->red = red;
  metaData->green = green;
  metaData->blue = blue;
  metaData->alpha = alpha;
  useColors(nullptr);
}

void PlotContainer::setColorScheme(std::string column, bool solid)
{
  metaData->useSolidColor = solid;
  if (!solid)
    for (vtkIdType c = 0; c < plotData->GetNumberOfColumns(); ++c)
      if (hasColumn(plotData, c) && columnName(plotData, c) == column)
        metaData->colorColumn = static_cast<int>(c);
  useColors(nullptr);
}

void PlotContainer::setXTickLabels(std::vector<std::string> const& labels)
{
  xTickLabels = vtkSmartPointer<vtkStringArray>::New();
  for (std::string const& label : labels) xTickLabels->InsertNextValue(label);
}

void PlotContainer::setXTickPosition(std::vector<double> const& positions)
{
  xTickPositions = vtkSmartPointer<vtkDoubleArray>::New();
  for (double position : positions) xTickPositions->InsertNextValue(position);
}

void PlotContainer::setLogScaleY(bool log)
{
  if (chartXY) setScale(chartXY, vtkAxis::LEFT, log);
}

void PlotContainer::LogScaleX()
{
  if (chartXY) setScale(chartXY, vtkAxis::BOTTOM, metaData->getLogX());
}

void PlotContainer::setShowLegend(bool legend)
{
  if (!chartXY) return;
  chartXY->SetShowLegend(legend);
  chartXY->Update();
}

void PlotContainer::setUseIndexForXSeries(bool useIndex)
{
  useIndexForXSeries = useIndex;
  dirty();
}

void PlotContainer::setChartMargins(vtkChart* chart)
{
  if (auto* margins = dynamic_cast<MarginChart*>(chart))
    margins->setMargins(leftMargin, bottomMargin, rightMargin, topMargin);
  else
    chart->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin);
}

void PlotContainer::updateMargins()
{
  // The horizontal gutter goes first here, while some styles draw with the vertical one first: kept so.
  auto layOutMatrix = [this](int titleSpace) {
    chartMatrix->SetGutter(
        {static_cast<float>(horizontalGutter), static_cast<float>(verticalGutter + titleSpace)});
    chartMatrix->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin + titleSpace);
  };
  switch (metaData->getPlotStyle()) {
  case scatterPlot:
    if (chartXY) setChartMargins(chartXY);
    break;
  case multiPlot:
    layOutMatrix(0);
    break;
  case selectionCdfPlot:
    layOutMatrix(smallChartTitleSpace);
    break;
  default:
    break;
  }
}

void PlotContainer::setLeftMargin(int pixels)
{
  leftMargin = pixels;
  updateMargins();
}

void PlotContainer::setTopMargin(int pixels)
{
  topMargin = pixels;
  updateMargins();
}

void PlotContainer::setBottomMargin(int pixels)
{
  bottomMargin = pixels;
  updateMargins();
}

void PlotContainer::setRightMargin(int pixels)
{
  rightMargin = pixels;
  updateMargins();
}

void PlotContainer::setHorizontalGutter(int pixels)
{
  horizontalGutter = pixels;
  updateMargins();
}

void PlotContainer::setVerticalGutter(int pixels)
{
  verticalGutter = pixels;
  updateMargins();
}
