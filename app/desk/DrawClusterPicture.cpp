#include "app/desk/DeskCommands.h"

#include "app/render/OffscreenView.h"
#include "app/store/StoredPlot.h"
#include "app/view/QuietLibrary.h"
#include "app/view/ScanClusters.h"
#include "app/view/ScanPlot.h"
#include "app/view/ShownComparison.h"
#include "app/view/SmallCharts.h"

#include <runsieve/adapters/ScanTable.h>

#include <vtkContextScene.h>

#include <algorithm>
#include <iostream>

namespace runsieve::app {

namespace {

ShapeOf shapeOf(std::string const& mode)
{
  if (mode == "phase") return ShapeOf::Phase;
  return mode == "magnitude" ? ShapeOf::Magnitude : ShapeOf::Curves;
}

std::string titleOf(std::vector<int> const& labels, std::string const& mode)
{
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  const auto empty = std::count(sizes.begin(), sizes.end(), std::size_t(0));
  const std::size_t clusters = sizes.size() - static_cast<std::size_t>(empty);
  return std::to_string(clusters) + (clusters == 1 ? " cluster by " : " clusters by ") + mode;
}

} // namespace

void drawClusterPicture(ClusterArguments const& arguments, Scan const& scan, ClusterPicture const& picture)
{
  OffscreenView view(arguments.width, arguments.height);
  PlotContainer plot(nullptr);
  view.scene()->AddItem(plot.getItem());
  ViewOptions options = isStoredPlot(arguments.file) ? readPlot(arguments.file).view : ViewOptions();
  options.output = picture.output;
  options.quantiles = false;
  options.pThreshold = picture.method.thresholds.largestP;
  options.ksThreshold = picture.method.thresholds.smallestD;
  {
    const QuietLibrary quiet;
    showScan(plot, linePlotTableOf(scan), options);
  }
  const std::vector<int> labels = clusterRuns(plot, arguments.clusters, shapeOf(arguments.mode));
  const ClusterComparison comparison = compareClusters(scan, labels, picture.eligible, picture.method);
  showClusterDistributions(plot, labels, comparison);
  plot.metaData->plotTitle = titleOf(labels, arguments.mode);
  plot.redraw(); // the lines that clustering has added go
  polish(plot);
  drawClusters(plot);
  label(plot, comparison);
  nameTexts(plot, scan, arguments.width);
  const std::string note = view.save(arguments.picture);
  if (!note.empty()) std::cerr << "runsieve: " << note << '\n';
  plot.setScene(nullptr); // a plot that outlived its view would let go of textures in a context that is gone
}

} // namespace runsieve::app
