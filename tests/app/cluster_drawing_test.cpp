#include "ShownClusters.h"

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

using app::drawClusters;
using testing::ElementsAre;

using ClusterDrawing = ShownClusters;

std::vector<int> colorOf(vtkPlot* plot)
{
  unsigned char rgb[3];
  plot->GetColor(rgb);
  return {rgb[0], rgb[1], rgb[2]};
}

TEST_F(ClusterDrawing, WithoutClustersNothingIsDrawn)
{
  const vtkIdType before = plots();
  drawClusters(container);
  EXPECT_EQ(plots(), before);
}

TEST_F(ClusterDrawing, DrawsALinePerRunBelowTheMeanCurves)
{
  const vtkIdType before = plots();
  group();
  compare();
  drawClusters(container);
  ASSERT_EQ(plots(), before + 60 + clusters);
  int k = 0;
  for (vtkPlot* mean : lastPlots(clusters)) {
    EXPECT_EQ(mean->GetInput(), container.decorationTable);
    EXPECT_EQ(drawnColumn(mean, 1), container.decorationTable->GetColumnName(k++));
    for (vtkIdType i = before; i < before + 60; ++i)
      EXPECT_GT(mean->GetWidth(), chart()->GetPlot(i)->GetWidth());
  }
}

TEST_F(ClusterDrawing, ARunHasTheHueOfItsMeanCurve)
{
  const vtkIdType before = plots();
  group();
  compare();
  drawClusters(container);
  const std::vector<vtkPlot*> means = lastPlots(clusters);
  for (std::size_t run = 0; run < labels.size(); ++run) {
    const std::vector<int> line = colorOf(chart()->GetPlot(before + static_cast<vtkIdType>(run)));
    const std::vector<int> mean = colorOf(means[static_cast<std::size_t>(labels[run])]);
    for (std::size_t c = 0; c < 3; ++c) // the mean curve is darker
      EXPECT_NEAR(mean[c] / 200.0, line[c] / 255.0, 0.01) << run;
  }
}

TEST_F(ClusterDrawing, TheLegendNamesTheClustersAndNothingElse)
{
  group();
  compare();
  drawClusters(container);
  EXPECT_TRUE(chart()->GetShowLegend());
  EXPECT_THAT(legend(), ElementsAre("cluster 0 (20 runs)", "cluster 1 (20 runs)", "cluster 2 (20 runs)"));
}

TEST_F(ClusterDrawing, TheLegendCountsOneRunInTheSingular)
{
  shaped = ShapedScan(3);
  showScan({});
  group();
  compare();
  drawClusters(container);
  EXPECT_THAT(legend(), ElementsAre("cluster 0 (1 run)", "cluster 1 (1 run)", "cluster 2 (1 run)"));
}

TEST_F(ClusterDrawing, DistributionsHaveTheColoursOfTheMeanCurves)
{
  for (bool density : {false, true}) {
    app::ViewOptions options;
    options.density = density;
    showScan(options);
    group(5);
    compare();
    drawClusters(container);
    std::vector<std::vector<int>> colors;
    for (vtkPlot* mean : lastPlots(5)) colors.push_back(colorOf(mean));
    ASSERT_EQ(distributions().size(), 4u);
    for (vtkChart* cell : distributions()) {
      ASSERT_EQ(cell->GetNumberOfPlots(), 6);
      for (int k = 0; k < 5; ++k)
        EXPECT_EQ(colorOf(cell->GetPlot(1 + k)), colors[static_cast<std::size_t>(k)]) << k;
    }
  }
}

TEST_F(ClusterDrawing, WithASelectionOnlyTheMeanCurvesAreDrawn)
{
  const vtkIdType before = plots();
  group();
  compare();
  drawClusters(container);
  selectCluster(1);
  container.redraw();
  std::vector<int> const selected = colorOf(distributions().front()->GetPlot(1));
  drawClusters(container);
  EXPECT_EQ(plots(), before + clusters);
  EXPECT_EQ(legend().size(), 3u);
  EXPECT_EQ(colorOf(distributions().front()->GetPlot(1)), selected) << "the colour of selected runs stays";
}

TEST_F(ClusterDrawing, WithQuartileBandsOnlyTheMeanCurvesAreDrawn)
{
  group();
  container.metaData->setShowQuantiles(true);
  const vtkIdType before = plots();
  drawClusters(container);
  EXPECT_EQ(plots(), before + clusters);
}

TEST_F(ClusterDrawing, AClusterWithoutRunsIsNeitherDrawnNorNamed)
{
  group();
  for (vtkIdType run = 0; run < container.clusterLabels->GetNumberOfTuples(); ++run)
    if (container.clusterLabels->GetValue(run) == 1) container.clusterLabels->SetValue(run, 0);
  container.redraw();
  drawClusters(container);
  EXPECT_FALSE(lastPlots(clusters)[1]->GetVisible());
  EXPECT_EQ(legend().size(), 2u);
}

TEST_F(ClusterDrawing, ARedrawTakesTheClustersAway)
{
  const vtkIdType before = plots();
  group();
  compare();
  drawClusters(container);
  container.redraw();
  EXPECT_EQ(plots(), before) << "neither runs nor mean curves stay below the new ones";
}

} // namespace
} // namespace runsieve::test
