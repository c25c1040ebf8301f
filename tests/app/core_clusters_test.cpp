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

void expectSame(ParameterComparison const& found, app::RankedParameter const& expected)
{
  EXPECT_EQ(found.name, expected.name);
  EXPECT_TRUE(sameNumber(found.p, expected.p)) << found.p << ", " << expected.p;
  EXPECT_TRUE(sameNumber(found.d, expected.d)) << found.d << ", " << expected.d;
  EXPECT_TRUE(sameNumber(found.medianPassing, expected.medianPassing));
  EXPECT_TRUE(sameNumber(found.medianOthers, expected.medianOthers));
  EXPECT_EQ(found.significant, expected.significant);
}

void expectSame(ClusterComparison const& found, PlotContainer const& plot,
                std::vector<std::vector<app::RankedParameter>> const& expected)
{
  ASSERT_EQ(found.clusters.size(), expected.size());
  for (std::size_t k = 0; k < expected.size(); ++k) {
    ASSERT_EQ(found.clusters[k].size(), expected[k].size()) << k;
    for (std::size_t i = 0; i < expected[k].size(); ++i) expectSame(found.clusters[k][i], expected[k][i]);
  }
  ASSERT_EQ(found.differences.size(), plot.ksStatistics.size());
  for (std::size_t i = 0; i < found.differences.size(); ++i) {
    EXPECT_TRUE(sameNumber(found.differences[i].p, plot.ksStatistics[i].p)) << i;
    EXPECT_TRUE(sameNumber(found.differences[i].d, plot.ksStatistics[i].d)) << i;
  }
}

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

TEST(CoreClusters, TheirParametersCompareAsInThePlot)
{
  int compared = 0;
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomScan random(seed);
    app::ViewOptions options;
    options.pThreshold = random.even();
    PlotScene plot;
    const app::QuietLibrary quiet;
    app::showScan(plot.container, random.table, options);
    const Scan scan = coreScan(*random.table);
    std::vector<int> labels;
    const int clusters = 1 + random.below(random.shape.runs);
    for (int run = 0; run < random.shape.runs; ++run) labels.push_back(random.below(clusters + 1) - 1);
    const auto expected = app::compareClusters(plot.container, labels);
    const ClusterComparison found = compareClusters(scan, labels, {options.pThreshold, options.ksThreshold});
    if (plot.settings().parameterColumns.empty()) continue;
    expectSame(found, plot.container, expected);
    if (HasFatalFailure()) return;
    ++compared;
  }
  EXPECT_GE(compared, 50);
}

} // namespace
} // namespace runsieve::test
