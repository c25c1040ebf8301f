#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/charts/ChartText.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/items/vtkPlotErrorPoints.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ClusterLines.h>
#include <runsieve/styles/PlotColors.h>
#include <runsieve/styles/Styles.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkPen.h>
#include <vtkPlotPoints.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

using namespace runsieve;

namespace {

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

} // namespace

void PlotContainer::setPointSize(double size)
{
  metaData->pointSize = size;
  Style const& style = styleOf(metaData->getPlotStyle());
  if (!style.applyPointSize) return;
  StyleModel shown = d->model();
  style.applyPointSize(shown, size);
}

void PlotContainer::useColors(vtkPlot* plot)
{
  colorPlot(plot ? plot : plot0(chartXY), plotData, *metaData);
}

void PlotContainer::drawDecorations(vtkContextScene*)
{
  if (showDecorationPlots && decorationTable && chartXY) addMeanCurves(chartXY, decorationTable);
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

void PlotContainer::updateMargins()
{
  Style const& style = styleOf(metaData->getPlotStyle());
  if (!style.applyMargins) return;
  ChartStage stage = d->stage();
  style.applyMargins(stage);
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
