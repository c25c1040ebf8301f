#include "app/view/ScanClusters.h"

#include "app/view/QuietLibrary.h"
#include "app/view/ScanPlot.h"
#include "app/view/ShownComparison.h"

#include <runsieve/records/ParameterSelection.h>

#include <runsieve/items/vtkPlotLineSet.h>

#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkIntArray.h>
#include <vtkPlot.h>
#include <vtkTable.h>

#include <algorithm>
#include <memory>

namespace runsieve::app {

namespace {

constexpr float thinRun = 1.01f; ///< pixels

std::vector<int> labelsOf(PlotContainer const& plot)
{
  if (!plot.clusterLabels) return {};
  int const* first = plot.clusterLabels->GetPointer(0);
  return {first, first + plot.clusterLabels->GetNumberOfValues()};
}

/// Hides plots from the legend, from one position on.
void leaveOutOfLegend(vtkChart* chart, vtkIdType first)
{
  for (vtkIdType i = first; i < chart->GetNumberOfPlots(); ++i) chart->GetPlot(i)->SetLegendVisibility(false);
}

/// Whether the chart shows the present clusters already.
bool isDrawn(PlotContainer const& plot)
{
  for (vtkIdType i = 0; i < plot.chartXY->GetNumberOfPlots(); ++i)
    if (plot.chartXY->GetPlot(i)->GetInput() == plot.decorationTable.GetPointer()) return true;
  return false;
}

/// Names the mean curves, and hides those of clusters without runs.
void nameMeans(vtkChart* chart, vtkIdType first, std::vector<std::size_t> const& sizes)
{
  for (vtkIdType i = first; i < chart->GetNumberOfPlots(); ++i) {
    const auto k = static_cast<std::size_t>(i - first);
    const std::size_t size = k < sizes.size() ? sizes[k] : 0;
    vtkPlot* mean = chart->GetPlot(i);
    mean->SetLabel("cluster " + std::to_string(k) + " (" + std::to_string(size) +
                   (size == 1 ? " run)" : " runs)"));
    mean->SetVisible(size > 0);
    mean->SetLegendVisibility(size > 0);
  }
}

/// The tables of all runs, of a source and of its distributions stand together.
constexpr std::size_t tablesOfAllRuns = 2;
constexpr std::size_t tablesOfSeries = 3;

/// Gives the distributions of the clusters the colours of the mean curves.
void colorDistributions(PlotContainer& plot, vtkIdType firstMean, std::size_t clusters)
{
  if (plot.tables.size() != tablesOfAllRuns + tablesOfSeries * clusters) return; // those of a selection
  const vtkVector2i size = plot.chartMatrix->GetSize();
  for (int row = 0; row < size.GetY() / 2; ++row)
    for (int column = 0; column < size.GetX(); ++column) {
      vtkChart* chart = plot.chartMatrix->GetChart({column, row});
      for (vtkIdType k = 0; k < static_cast<vtkIdType>(clusters) && 1 + k < chart->GetNumberOfPlots(); ++k) {
        unsigned char rgb[3];
        plot.chartXY->GetPlot(firstMean + k)->GetColor(rgb);
        chart->GetPlot(1 + k)->SetColor(rgb[0], rgb[1], rgb[2], 255);
      }
    }
}

} // namespace

std::vector<int> clusterRuns(PlotContainer& plot, int clusters, ShapeOf shape)
{
  const QuietLibrary quiet;
  plot.clusterLabels = nullptr;
  const vtkIdType runs = plot.plotData->GetNumberOfRows() / std::max(plot.metaData->getStride(), 1);
  plot.clusterTimeSeries(clusters, static_cast<int>(shape), clusterStarts(static_cast<std::size_t>(runs)));
  return labelsOf(plot);
}

std::vector<long long> rowsOfCluster(std::vector<int> const& labels, int cluster, int stride, bool allTimes)
{
  std::vector<long long> rows;
  for (std::size_t run = 0; run < labels.size(); ++run) {
    if (labels[run] != cluster) continue;
    const long long first = static_cast<long long>(run) * stride;
    for (int time = 0; time < (allTimes ? stride : 1); ++time) rows.push_back(first + time);
  }
  return rows;
}

void showClusterDistributions(PlotContainer& plot, std::vector<int> const& labels,
                              ClusterComparison const& comparison)
{
  const QuietLibrary quiet;
  if (plot.metaData->parameterColumns.empty()) return;
  std::vector<std::unique_ptr<ParameterSelection>> runs;
  for (std::size_t k = 0; k < clusterSizes(labels).size(); ++k) {
    selectRows(plot, rowsOfCluster(labels, static_cast<int>(k), plot.metaData->getStride()));
    runs.emplace_back(plot.getSelection());
    clearSelection(plot);
  }
  orderBy(plot, comparison);
  for (auto const& selection : runs) plot.setExternalSelection(selection.get());
}

void drawClusters(PlotContainer& plot)
{
  if (!plot.clusterLabels || !plot.chartXY || isDrawn(plot)) return;
  vtkChart* chart = plot.chartXY;
  leaveOutOfLegend(chart, 0);
  const vtkIdType firstRun = chart->GetNumberOfPlots();
  if (!hasSelection(plot) && !plot.metaData->getShowQuantiles()) plot.drawClusterRuns();
  leaveOutOfLegend(chart, firstRun);
  // The lines of the clusters cover those of all runs, and colours of their own mean something else.
  if (firstRun < chart->GetNumberOfPlots())
    if (vtkPlotLineSet* lines = runLines(plot)) lines->SetDensityColors(vtkPlotLineSet::DENSITY_OFF);
  const vtkIdType firstMean = chart->GetNumberOfPlots();
  for (vtkIdType i = firstRun; i < firstMean; ++i) chart->GetPlot(i)->SetWidth(thinRun);
  plot.showDecorationPlots = true;
  plot.drawDecorations(nullptr);
  plot.showDecorationPlots = false; // the next redraw must not draw them below the runs
  const std::vector<std::size_t> sizes = clusterSizes(labelsOf(plot));
  nameMeans(chart, firstMean, sizes);
  if (firstMean + static_cast<vtkIdType>(sizes.size()) <= chart->GetNumberOfPlots())
    colorDistributions(plot, firstMean, sizes.size());
  chart->SetShowLegend(true);
}

} // namespace runsieve::app
