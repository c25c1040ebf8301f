#include "ScanPicture.h"

#include "support/ShapedScan.h"

#include "app/view/ScanClusters.h"
#include "app/view/ShownComparison.h"

namespace runsieve::test {
namespace {

/// Runs of three shapes, grouped, as the program draws them.
struct ClusterPicture : ScanPicture
{
  ShapedScan shaped;
  std::vector<int> labels;
  ClusterComparison comparison;

  void showClusters(int clusters = ShapedScan::shapes)
  {
    if (plot) plot->setScene(nullptr);
    view = nullptr; // one after the other: the end of a view takes the current context away
    view = std::make_unique<app::OffscreenView>(600, 480, 0);
    plot = std::make_unique<PlotContainer>(nullptr);
    view->scene()->AddItem(plot->getItem());
    app::showScan(*plot, shaped.scan, {});
    labels = app::clusterRuns(*plot, clusters, app::ShapeOf::Curves);
    comparison = compareClusters(scanOf(shaped.scan), labels);
    app::showClusterDistributions(*plot, labels, comparison);
    plot->redraw();
    draw();
  }

  void draw()
  {
    app::polish(*plot);
    app::drawClusters(*plot);
    app::label(*plot, comparison);
  }
};

TEST_F(ClusterPicture, Clusters)
{
  showClusters();
  EXPECT_EQ(app::clusterSizes(labels), std::vector<std::size_t>(3, 20));
  EXPECT_GE(adjustedRandIndex(labels, shaped.shapeOfRun), 0.95);
  EXPECT_TRUE(looksLike("Clusters"));
}

TEST_F(ClusterPicture, SelectedCluster)
{
  showClusters();
  app::selectRows(*plot, app::rowsOfCluster(labels, 1, ShapedScan::times));
  draw();
  EXPECT_EQ(app::survivingRuns(*plot), 20u);
  EXPECT_TRUE(looksLike("SelectedCluster"));
}

TEST_F(ClusterPicture, OneClusterMoreIsAnotherPicture)
{
  showClusters();
  const QImage three = picture();
  showClusters(4);
  EXPECT_FALSE(isWithin(differenceOf(picture(), three)));
}

} // namespace
} // namespace runsieve::test
