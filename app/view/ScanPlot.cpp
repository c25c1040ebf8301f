#include "app/view/ScanPlot.h"

#include "app/scan/ColumnName.h"
#include "app/scan/ScanLayout.h"
#include "app/view/ThreadPool.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/items/vtkPlotLineSet.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkChartXY.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPlot.h>
#include <vtkSelection.h>
#include <vtkSelectionNode.h>
#include <vtkTable.h>
#include <vtkTooltipItem.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve::app {

namespace {

constexpr float thinLine =
    1.01f; ///< pixels; at exactly 1 software OpenGL loses joints at the edges of its tiles
// Tick labels of six characters keep clear of those of the next chart.
constexpr int gutter = 44;
constexpr int margin = 36;

/// Opacity of one run's line, 0 to 255: single runs stay visible, thousands still show where they are dense.
int lineOpacity(std::uint64_t runs)
{
  const double opacity = 1400.0 / std::sqrt(static_cast<double>(std::max<std::uint64_t>(runs, 1)));
  return static_cast<int>(std::clamp(opacity, 14.0, 170.0));
}

/// Room around the only time of a scan; the axis would have no length.
void widenSingleTime(PlotContainer& plot)
{
  vtkAxis* bottom = plot.chartXY->GetAxis(vtkAxis::BOTTOM);
  const double time = bottom->GetUnscaledMinimum();
  if (plot.metaData->getStride() != 1 || bottom->GetUnscaledMaximum() - time > 0.02 * std::fabs(time)) return;
  const double room = time == 0.0 ? 1.0 : 0.5 * std::fabs(time);
  bottom->SetUnscaledRange(time - room, time + room);
}

} // namespace

void showScan(PlotContainer& plot, boost::shared_ptr<LinePlotTable> scan, ViewOptions const& options)
{
  PlotMetaData& settings = *plot.metaData;
  settings.blockSignals(true);
  settings.setPlotStyle(selectionCdfPlot);
  settings.setUseDensity(options.density);
  settings.setCommonDensityScale(options.commonScale);
  settings.setShowQuantiles(options.quantiles);
  settings.setLogParameterAxes(options.logAxes);
  // Lines through one time are nothing.
  settings.setPlotLine(!options.points && scan->trajectoryLength > 1);
  settings.setPThreshold(options.pThreshold);
  settings.setKsThreshold(options.ksThreshold);
  settings.useSolidColor = true;
  settings.red = 60;
  settings.green = 70;
  settings.blue = 90;
  settings.alpha = lineOpacity(scan->trajectoryCount);
  plot.densityColors = shadesOf(options.plainLines);
  plot.setRunner(sharedThreads());
  plot.horizontalGutter = gutter;
  plot.rightMargin = margin;
  plot.setLinePlotTable(scan, false);
  showOutput(plot, options.output);
}

int shadesOf(bool plainLines)
{
  return plainLines ? vtkPlotLineSet::DENSITY_OFF : vtkPlotLineSet::DENSITY_LOGARITHMIC;
}

void showOutput(PlotContainer& plot, std::size_t output)
{
  plot.metaData->yLabel =
      output < plot.typedColumnNames.size() ? nameInScan(plot.typedColumnNames[output].second) : "";
  const int time = plot.metaData->xColumns[0];
  plot.setPlotCols(time, static_cast<int>(output), 0, plot.metaData->getShowQuantiles());
}

void polish(PlotContainer& plot)
{
  if (plot.metaData->getPlotStyle() != selectionCdfPlot || !plot.chartXY) return;
  widenSingleTime(plot);
  const vtkIdType plots = plot.chartXY->GetNumberOfPlots();
  if (plots > 0 && plot.metaData->getPlotLine()) plot.chartXY->GetPlot(plots - 1)->SetWidth(thinLine);
  if (!plot.metaData->getUseDensity() || !plot.metaData->getCommonDensityScale()) return;
  const vtkVector2i size = plot.chartMatrix->GetSize();
  for (int row = 0; row < size.GetY() / 2; ++row)
    for (int column = 0; column < size.GetX(); ++column) {
      vtkAxis* left = plot.chartMatrix->GetChart({column, row})->GetAxis(vtkAxis::LEFT);
      left->SetUnscaledMinimum(0.0);
      left->SetBehavior(vtkAxis::FIXED);
    }
}

void hideHover(PlotContainer& plot)
{
  const auto hide = [](vtkChart* chart) {
    vtkChartXY* xy = vtkChartXY::SafeDownCast(chart);
    if (xy && xy->GetTooltip()) xy->GetTooltip()->SetVisible(false);
  };
  hide(plot.chartXY);
  if (!plot.chartMatrix) return;
  const vtkVector2i size = plot.chartMatrix->GetSize();
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) hide(plot.chartMatrix->GetChart({column, row}));
}

vtkPlotLineSet* runLines(PlotContainer const& plot)
{
  vtkPlotLineSet* lines = nullptr;
  for (vtkIdType i = 0; plot.chartXY && i < plot.chartXY->GetNumberOfPlots() && !lines; ++i)
    lines = vtkPlotLineSet::SafeDownCast(plot.chartXY->GetPlot(i));
  return lines;
}

void selectRows(PlotContainer& plot, std::vector<long long> const& rows)
{
  vtkNew<vtkIdTypeArray> ids;
  ids->SetNumberOfTuples(static_cast<vtkIdType>(rows.size()));
  for (std::size_t i = 0; i < rows.size(); ++i) ids->SetValue(static_cast<vtkIdType>(i), rows[i]);
  vtkNew<vtkSelectionNode> node;
  node->SetFieldType(vtkSelectionNode::ROW);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(ids);
  vtkNew<vtkSelection> selection;
  selection->AddNode(node);
  plot.annotationLink->SetCurrentSelection(selection);
}

void clearSelection(PlotContainer& plot)
{
  if (hasSelection(plot)) selectRows(plot, {});
  for (const char* flags : {"vtkComplementSelection", "vtkReducedSelection", "vtkRemainderSelection"})
    plot.plotData->RemoveColumnByName(flags);
  plot.ksStatistics.clear();
  if (plot.tables.size() > 2) plot.tables.resize(2);
  plot.redraw();
}

bool hasSelection(PlotContainer const& plot)
{
  vtkSelection* selection = plot.annotationLink->GetCurrentSelection();
  for (unsigned int i = 0; selection && i < selection->GetNumberOfNodes(); ++i) {
    vtkAbstractArray* list = selection->GetNode(i)->GetSelectionList();
    if (list && list->GetNumberOfTuples() > 0) return true;
  }
  return false;
}

RunSet runsThrough(std::vector<long long> const& rows, std::size_t runs, std::size_t times)
{
  RunSet passing(runs);
  if (rows.empty()) return passing;
  std::vector<unsigned char> demanded(times);
  std::vector<std::size_t> hits(runs);
  for (long long const row : rows) {
    demanded[static_cast<std::size_t>(row) % times] = 1;
    ++hits[static_cast<std::size_t>(row) / times];
  }
  auto const all = static_cast<std::size_t>(std::count(demanded.begin(), demanded.end(), 1));
  for (std::size_t run = 0; run < runs; ++run) passing.set(run, hits[run] == all);
  return passing;
}

std::vector<long long> selectedRows(PlotContainer const& plot)
{
  std::vector<long long> rows;
  auto flags = vtkSmartPointer<vtkIntArray>::Take(plot.getCurrentSelection());
  for (vtkIdType row = 0; flags && row < flags->GetNumberOfTuples(); ++row)
    if (flags->GetValue(row) != 0) rows.push_back(row);
  return rows;
}

RunSet passingRuns(PlotContainer const& plot)
{
  const auto times = static_cast<std::size_t>(std::max(plot.metaData->getStride(), 1));
  const auto runs = static_cast<std::size_t>(plot.plotData->GetNumberOfRows()) / times;
  return runsThrough(hasSelection(plot) ? selectedRows(plot) : std::vector<long long>(), runs, times);
}

std::size_t survivingRuns(PlotContainer const& plot)
{
  return passingRuns(plot).count();
}

} // namespace runsieve::app
