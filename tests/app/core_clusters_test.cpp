#include "CoreScan.h"
#include "RandomScan.h"

#include "app/view/QuietLibrary.h"
#include "app/view/ScanClusters.h"
#include "app/view/ScanPlot.h"
#include "support/PlotParts.h"
#include "support/PlotScene.h"

#include <runsieve/core/compare/Clusters.h>

#include <gtest/gtest.h>

#include <vector>

namespace runsieve::test {
namespace {

struct Mode
{
  ClusterMode core;
  app::ShapeOf plot;
};

constexpr Mode modes[] = {{ClusterMode::Curves, app::ShapeOf::Curves},
                          {ClusterMode::Phase, app::ShapeOf::Phase},
                          {ClusterMode::Magnitude, app::ShapeOf::Magnitude}};

TEST(CoreClusters, AreThoseOfThePlotInAllModes)
{
  int severalClusters = 0;
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomScan random(seed);
    const auto output = static_cast<std::size_t>(random.below(random.shape.species));
    const int clusters = 1 + random.below(6);
    PlotScene plot;
    const app::QuietLibrary quiet;
    app::showScan(plot.container, random.table, {});
    app::showOutput(plot.container, output);
    const Scan scan = coreScan(*random.table);
    for (Mode mode : modes) {
      const std::vector<int> found = clusterRuns(scan, output, mode.core, clusters);
      EXPECT_EQ(found, app::clusterRuns(plot.container, clusters, mode.plot)) << static_cast<int>(mode.plot);
      severalClusters += clusterSizes(found).size() > 1;
    }
  }
  EXPECT_GE(severalClusters, 300);
}

TEST(CoreClusters, AreThoseOfThePlotWithAnyNumberOfStarts)
{
  int better = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomScan random(seed);
    PlotScene plot;
    const app::QuietLibrary quiet;
    app::showScan(plot.container, random.table, {});
    const Scan scan = coreScan(*random.table);
    for (int starts : {1, 2, 20}) {
      plot.container.clusterTimeSeries(4, 0, starts);
      std::vector<int> expected;
      for (double label : numbers(plot.container.clusterLabels)) expected.push_back(static_cast<int>(label));
      const std::vector<int> found = clusterRuns(scan, 0, ClusterMode::Curves, 4, starts);
      EXPECT_EQ(found, expected) << starts;
      better += found != clusterRuns(scan, 0, ClusterMode::Curves, 4, 1);
    }
  }
  EXPECT_GE(better, 5) << "further starts have been of use";
}

} // namespace
} // namespace runsieve::test
