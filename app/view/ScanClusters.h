#pragma once

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/plot/PlotContainer.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::app {

/// What the shape of a run is: its curve, or the phase or magnitude of its Fourier transform. The numbers are
/// those of PlotContainer::clusterTimeSeries().
enum class ShapeOf
{
  Curves = 0,
  Phase = 2,
  Magnitude = 3
};

/// Groups the runs of the output on show. Returns the cluster of each run by its position; empty if there is
/// nothing to group.
std::vector<int> clusterRuns(PlotContainer& plot, int clusters, ShapeOf shape);

using runsieve::clusterSizes;

/// Rows that let exactly the runs of a cluster survive when they are selected: the first of each run, or all,
/// which shows more where rows are drawn as points.
[[nodiscard]] std::vector<long long> rowsOfCluster(std::vector<int> const& labels, int cluster, int stride,
                                                   bool allTimes = false);

/// Shows the distribution of each parameter in each cluster, in the order of a comparison. A selection goes.
void showClusterDistributions(PlotContainer& plot, std::vector<int> const& labels,
                              ClusterComparison const& comparison);

/// Draws the present clusters over the runs: a line per run, and a strong mean curve per cluster, named for
/// the legend. With a selection the mean curves alone, so that the selected runs show. No effect without
/// clusters.
void drawClusters(PlotContainer& plot);

} // namespace runsieve::app
