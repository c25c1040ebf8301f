#include "app/cli/Commands.h"

#include "app/cli/RankReport.h"
#include "app/gate/ResolvedGate.h"
#include "app/render/OffscreenView.h"
#include "app/scan/ScanLayout.h"
#include "app/store/FileEnding.h"
#include "app/store/StoredPlot.h"
#include "app/view/ScanClusters.h"
#include "app/view/SievedScan.h"
#include <runsieve/core/files/SafeFile.h>

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace runsieve::app {

namespace {

ShapeOf shapeOf(std::string const& mode)
{
  if (mode == "phase") return ShapeOf::Phase;
  return mode == "magnitude" ? ShapeOf::Magnitude : ShapeOf::Curves;
}

/// Lines "run,cluster" with the run numbers of the file.
std::string labelText(LinePlotTable const& scan, std::vector<int> const& labels)
{
  double const* runs = scan.columnData[scanLayout(scan).run];
  std::string text = "run,cluster\n";
  for (std::size_t i = 0; i < labels.size(); ++i)
    text += std::to_string(static_cast<long long>(runs[i * scan.trajectoryLength])) + ',' +
            std::to_string(labels[i]) + '\n';
  return text;
}

void writeLabels(std::string const& path, std::string const& text)
{
  if (path.empty() || path == "-") {
    std::cout << text;
    return;
  }
  SafeFile file(path);
  file.write(text);
  file.commit();
}

void print(std::vector<std::vector<RankedParameter>> const& comparisons, std::vector<int> const& labels)
{
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  for (std::size_t k = 0; k < comparisons.size(); ++k) {
    if (sizes[k] == 0) continue;
    std::cout << "\ncluster " << k << ": " << sizes[k] << " of " << labels.size() << " runs\n";
    printRankTable(std::cout, comparisons[k]);
  }
}

std::string titleOf(std::vector<int> const& labels, std::string const& mode)
{
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  const auto empty = std::count(sizes.begin(), sizes.end(), std::size_t(0));
  const std::size_t clusters = sizes.size() - static_cast<std::size_t>(empty);
  return std::to_string(clusters) + (clusters == 1 ? " cluster by " : " clusters by ") + mode;
}

bool isSameFile(std::string const& a, std::string const& b)
{
  std::error_code failure; // such as that there is no such file
  return a == b || std::filesystem::equivalent(a, b, failure);
}

/// One file must not be written over another one of the same command.
void checkFiles(ClusterArguments const& arguments)
{
  const std::string ending = fileEnding(arguments.picture);
  if (!arguments.picture.empty() && ending != ".png" && ending != ".pdf")
    throw UsageError("cluster: the name of the picture must end in .png or .pdf");
  for (std::string const& output : {arguments.output, arguments.picture})
    if (!output.empty() && isSameFile(output, arguments.file))
      throw UsageError("cluster: " + output + " is the file that is read");
  if (!arguments.output.empty() && isSameFile(arguments.output, arguments.picture))
    throw UsageError("cluster: output and picture are one file");
}

} // namespace

int runCluster(ClusterArguments const& arguments)
{
  checkFiles(arguments);
  StoredPlot stored = readPlotOrScan(arguments.file, arguments.read);
  checkOutputNames(*stored.scan);
  stored.selectedRows.clear();
  stored.view.quantiles = false;
  if (!arguments.species.empty()) stored.view.output = outputColumn(arguments.species, *stored.scan);

  const bool draws = !arguments.picture.empty();
  const auto view = draws ? std::make_unique<OffscreenView>(arguments.width, arguments.height) : nullptr;
  vtkNew<vtkContextScene> unseen;
  PlotContainer plot(nullptr);
  (view ? view->scene() : unseen.GetPointer())->AddItem(plot.getItem());
  {
    const QuietLibrary quiet;
    showPlot(plot, stored);
  }
  if (arguments.rank && plot.metaData->parameterColumns.empty())
    throw std::runtime_error(arguments.file + ": no parameter varies, so there is nothing to rank");
  const std::vector<int> labels = clusterRuns(plot, arguments.clusters, shapeOf(arguments.mode));
  if (labels.empty()) throw std::runtime_error(arguments.file + ": the runs cannot be grouped");
  writeLabels(arguments.output, labelText(*stored.scan, labels));
  const auto comparisons = compareClusters(plot, labels);
  if (arguments.rank) print(comparisons, labels);
  if (view) {
    plot.metaData->plotTitle = titleOf(labels, arguments.mode);
    plot.redraw(); // the lines that clustering has added go
    polish(plot);
    drawClusters(plot);
    view->save(arguments.picture);
  }
  plot.setScene(nullptr); // a plot that outlived its view would let go of textures in a context that is gone
  return 0;
}

} // namespace runsieve::app
