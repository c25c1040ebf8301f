#include <runsieve/plot/PlotContainer.h>

#include <runsieve/items/vtkPlotInvisiblePoints.h>
#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/items/vtkPlotStepLine.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/TableAccess.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <vtkAxis.h>
#include <vtkCommand.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlotFunctionalBag.h>
#include <vtkPlotLine.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>

using namespace runsieve;

namespace {

constexpr int chartsPerRow = 4;
constexpr double commonScaleHeadroom = 1.05;

struct Rgb
{
  double red;
  double green;
  double blue;
};

/// Selected runs, unselected runs, an external selection.
constexpr std::array<Rgb, 3> seriesColors = {{{1.0, 0.2, 0.0}, {0.05, 0.6, 0.9}, {0.05, 0.9, 0.6}}};

struct Band
{
  const char* column;
  unsigned char red;
  unsigned char green;
  unsigned char blue;
};

constexpr std::array<Band, 3> bands = {
    {{"Range", 148, 148, 255}, {"QRange", 64, 64, 255}, {"Median", 0, 0, 0}}};

std::string pValueTitle(double p)
{
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "p = " << std::setprecision(2) << (p < 0.01 && p != 0.0 ? std::scientific : std::fixed) << p;
  return text.str();
}

/// The highest value of a plot, 0 without one.
double topOf(vtkPlot* plot)
{
  double bounds[4] = {0.0, 0.0, 0.0, 0.0};
  plot->GetUnscaledInputBounds(bounds);
  return bounds[3];
}

vtkSmartPointer<vtkLookupTable> complementColors()
{
  auto colors = vtkSmartPointer<vtkLookupTable>::New();
  colors->SetRange(0.0, 1.0);
  colors->SetNumberOfTableValues(2);
  colors->Build();
  colors->SetTableValue(0, 0.0, 0.0, 0.0, 1.0);
  colors->SetTableValue(1, 0.05, 0.6, 0.9, 1.0);
  return colors;
}

} // namespace

std::vector<int> PlotContainer::parametersToShow() const
{
  const std::size_t count = metaData->parameterColumns.size();
  std::vector<int> shown;
  std::vector<int> reserve;
  // Statistics of an earlier, wider table can outlive it.
  for (std::size_t i = 0; i < std::min(ksStatistics.size(), count); ++i) {
    const bool significant =
        metaData->getPThreshold() >= ksStatistics[i].p && ksStatistics[i].d >= metaData->getKsThreshold();
    (significant ? shown : reserve).push_back(static_cast<int>(i));
  }
  const std::size_t wholeRows = (shown.size() + chartsPerRow - 1) / chartsPerRow * chartsPerRow;
  const std::size_t goal = std::min(std::max<std::size_t>(wholeRows, chartsPerRow), count);
  for (std::size_t i = 0; i < reserve.size() && shown.size() < goal; ++i) shown.push_back(reserve[i]);
  for (int i = 0; shown.size() < goal; ++i)
    if (std::find(shown.begin(), shown.end(), i) == shown.end()) shown.push_back(i);
  return shown;
}

void PlotContainer::drawSelectionCdfPlot(vtkContextScene* scene)
{
  if (!scene) return;
  if (selectionUpdatePending) {
    // The selection of a copy reaches tables and statistics first; one drawing then shows them.
    selectionUpdatePending = false;
    drawingSelection = true;
    selectionCallback->Execute(annotationLink, 0, nullptr);
    drawingSelection = false;
  }
  scene->ClearItems();
  chartMatrix->SetScene(scene);
  if (!rankedTablesStand()) generateRankedParameters(plotData, 0);
  item = chartMatrix;

  const std::vector<int> shown = parametersToShow();
  const int n = static_cast<int>(shown.size());
  const int columns = std::max(std::min(n, chartsPerRow), 1);
  const int groups = n > 0 ? (n - 1) / chartsPerRow + 1 : 1;
  layOutCells(chartMatrix, {columns, n > 0 ? 2 * groups : groups});
  chartMatrix->SetGutter(
      {static_cast<float>(horizontalGutter), static_cast<float>(verticalGutter + smallChartTitleSpace)});
  chartMatrix->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin + smallChartTitleSpace);

  const vtkVector2i corner(0, n > 0 ? groups : 0);
  chartXY = chartMatrix->GetChart(corner);
  chartXY->AddObserver(vtkCommand::InteractionEvent, shiftScaleCallback, 0.0);
  makeSelectable(chartXY, annotationLink);
  chartMatrix->SetChartSpan(corner, {columns, groups});
  if (quartileTable && metaData->getShowQuantiles()) drawQuartileBands();
  vtkPlot* runs = addRunPlot();
  setRunAxes();

  double highest = 0.0;
  for (int k = 0; k < n; ++k) {
    vtkChart* chart = chartMatrix->GetChart({k % chartsPerRow, k / chartsPerRow});
    highest = std::max(highest, drawDistribution(chart, shown[k], k % chartsPerRow));
  }
  if (metaData->getUseDensity())
    for (int k = 0; k < n; ++k)
      scaleDensityAxis(chartMatrix->GetChart({k % chartsPerRow, k / chartsPerRow}), highest);

  useColors(runs);
  chartXY->SetTitle(chartText(metaData->plotTitle));
  makeCellsReachable(chartMatrix);
  scene->AddItem(item);
}

void PlotContainer::drawQuartileBands()
{
  quartileTable->Modified();
  for (Band const& band : bands) {
    vtkNew<vtkPlotFunctionalBag> plot;
    if (!setPlotInput(plot, quartileTable, "Time", band.column)) continue;
    plot->SetColor(band.red, band.green, band.blue, 255);
    plot->GetSelectionPen()->SetColor(band.red, band.green, band.blue);
    addAuxiliaryPlot(chartXY, plot);
  }
}

vtkPlot* PlotContainer::addRunPlot()
{
  vtkSmartPointer<vtkPlotPoints> plot;
  if (metaData->getPlotLine()) {
    auto lines = vtkSmartPointer<vtkPlotLineSet>::Take(vtkPlotLineSet::New());
    lines->SetStride(metaData->getStride());
    lines->SetOnlyShowSelected(metaData->getShowQuantiles());
    plot = lines;
  } else {
    auto points = vtkSmartPointer<vtkPlotInvisiblePoints>::Take(vtkPlotInvisiblePoints::New());
    points->SetOnlyShowSelected(metaData->getShowQuantiles());
    plot = points;
  }
  addPlot(chartXY, plot);
  const int x = metaData->xColumns.empty() ? -1 : metaData->xColumns[0];
  const int y = metaData->yColumns.empty() ? -1 : metaData->yColumns[0];
  setPlotInput(plot, plotData, x, y);
  plot->SelectColorArray("vtkComplementSelection");
  plot->SetLookupTable(complementColors());
  plot->SetScalarVisibility(1);
  return plot;
}

void PlotContainer::setRunAxes()
{
  vtkAxis* bottom = chartXY->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chartXY->GetAxis(vtkAxis::LEFT);
  bottom->SetTitle(chartText(metaData->xLabel));
  left->SetTitle(chartText(metaData->yLabel));
  setCustomTicks(bottom, false);
  if (applyRememberedWindow(chartXY)) return;
  bottom->SetBehavior(vtkAxis::FIXED);
  left->SetBehavior(vtkAxis::AUTO);
  vtkDoubleArray* times =
      metaData->xColumns.empty() ? nullptr : doubleColumn(plotData, metaData->xColumns[0]);
  double range[2] = {1.0, 0.0};
  if (times) times->GetRange(range, 0);
  if (range[0] > range[1]) return;
  bottom->SetUnscaledMinimum(0.995 * range[0]);
  bottom->SetUnscaledMaximum(1.005 * range[1]);
}

double PlotContainer::drawDistribution(vtkChart* chart, int parameter, int column)
{
  const bool density = metaData->getUseDensity();
  const std::string name = parameterName(static_cast<std::size_t>(parameter));
  const std::string x = (density ? "Locations of " : "Sorted ") + name;
  const std::string y = (density ? "Density of " : "Rank of ") + name;
  constexpr int noButton = -1;
  chart->SetActionToButton(vtkChart::PAN, noButton);
  chart->SetActionToButton(vtkChart::ZOOM, noButton);
  chart->SetActionToButton(vtkChart::SELECT, noButton);

  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTickLabelAlgorithm(vtkAxis::TICK_SIMPLE);
  bottom->SetLogScale(metaData->getLogParameterAxes());
  const int tableColumn = metaData->parameterColumns[static_cast<std::size_t>(parameter)];
  bottom->SetTitle(chartText(bareParameterName(columnName(plotData, tableColumn))));
  bottom->SetBehavior(vtkAxis::AUTO);

  double highest = 0.0;
  auto addCurve = [&](std::size_t ranked) {
    vtkSmartPointer<vtkPlot> plot;
    if (density)
      plot = vtkSmartPointer<vtkPlotLine>::New();
    else
      plot = vtkSmartPointer<vtkPlotStepLine>::Take(vtkPlotStepLine::New());
    const std::size_t table = density ? ranked + 1 : ranked;
    if (setPlotInput(plot, table < tables.size() ? tables[table].GetPointer() : nullptr, x, y) && density)
      highest = std::max(highest, topOf(plot));
    addAuxiliaryPlot(chart, plot);
    return plot;
  };

  addCurve(0)->SetColor(0, 0, 0, 255);
  std::size_t series = 0;
  for (std::size_t ranked = 3; ranked + 1 < tables.size(); ranked += 3, ++series) {
    if (!tables[ranked] || !tables[ranked + 1]) continue;
    vtkSmartPointer<vtkPlot> plot = addCurve(ranked);
    if (static_cast<std::size_t>(parameter) < ksStatistics.size())
      chart->SetTitle(pValueTitle(ksStatistics[static_cast<std::size_t>(parameter)].p));
    Rgb const& color = seriesColors[series % seriesColors.size()];
    plot->GetPen()->SetColorF(color.red, color.green, color.blue);
  }

  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  if (column != 0) {
    left->SetTitle("");
    left->SetLabelsVisible(false);
  } else {
    left->SetTitle(density ? "Density" : "Ecdf");
    if (!density) left->SetUnscaledMaximum(1.0);
    left->SetUnscaledMinimum(0.0);
    left->SetBehavior(vtkAxis::FIXED);
  }
  // The rounded bounds of a linear axis begin at 0, which would keep a log scale from becoming active.
  if (metaData->getLogParameterAxes()) chart->RecalculateBounds();
  return highest;
}

void PlotContainer::scaleDensityAxis(vtkChart* chart, double common)
{
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  if (metaData->getCommonDensityScale()) {
    left->SetUnscaledMaximum(commonScaleHeadroom * common);
    return;
  }
  double highest = 0.0;
  for (vtkIdType k = 0; k < chart->GetNumberOfPlots(); ++k)
    highest = std::max(highest, topOf(chart->GetPlot(k)));
  left->SetUnscaledMaximum(highest);
}
