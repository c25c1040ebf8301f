#pragma once

#include "support/PlotParts.h"

#include "app/view/ScanClusters.h"
#include "app/view/ScanPlot.h"
#include "app/view/ShownComparison.h"
#include "support/PlotScene.h"
#include "support/ShapedScan.h"

#include <runsieve/adapters/ScanTable.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace runsieve::test {

/// The composite view of a scan of three shapes.
struct ShownClusters : testing::Test, PlotScene
{
  static constexpr int clusters = 3;

  ShapedScan shaped;
  std::vector<int> labels;

  ShownClusters() { showScan({}); }

  void showScan(app::ViewOptions const& options) { app::showScan(container, shaped.scan, options); }

  /// Groups the runs; nothing of that is on show yet.
  void group(int count = clusters) { labels = app::clusterRuns(container, count, app::ShapeOf::Curves); }

  ClusterComparison compare(ComparisonMethod const& method = {})
  {
    const ClusterComparison comparison = compareClusters(scanOf(shaped.scan), labels, method);
    app::showClusterDistributions(container, labels, comparison);
    container.redraw();
    return comparison;
  }

  void selectCluster(int cluster)
  {
    app::selectRows(container, app::rowsOfCluster(labels, cluster, ShapedScan::times));
  }

  [[nodiscard]] vtkIdType plots() { return chart()->GetNumberOfPlots(); }

  /// The last plots of the runs' chart.
  [[nodiscard]] std::vector<vtkPlot*> lastPlots(int count)
  {
    std::vector<vtkPlot*> last;
    for (vtkIdType i = plots() - count; i < plots(); ++i) last.push_back(chart()->GetPlot(i));
    return last;
  }

  [[nodiscard]] std::vector<std::string> legend()
  {
    std::vector<std::string> names;
    for (vtkIdType i = 0; i < plots(); ++i)
      if (chart()->GetPlot(i)->GetLegendVisibility()) names.push_back(chart()->GetPlot(i)->GetLabel());
    return names;
  }

  /// The charts of the distributions, row by row from the bottom.
  [[nodiscard]] std::vector<vtkChart*> distributions()
  {
    std::vector<vtkChart*> charts;
    const vtkVector2i size = container.chartMatrix->GetSize();
    for (int row = 0; row < size.GetY() / 2; ++row)
      for (int column = 0; column < size.GetX(); ++column) {
        vtkChart* cell = container.chartMatrix->GetChart({column, row});
        if (cell->GetNumberOfPlots() > 0) charts.push_back(cell);
      }
    return charts;
  }

  [[nodiscard]] std::vector<std::string> parametersOnShow()
  {
    std::vector<std::string> names;
    for (vtkChart* cell : distributions()) names.push_back(cell->GetAxis(vtkAxis::BOTTOM)->GetTitle());
    return names;
  }
};

} // namespace runsieve::test
