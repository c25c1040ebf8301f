#include "support/ClusterScene.h"

#include <gtest/gtest.h>
#include <vtkStringArray.h>

namespace runsieve::test {
namespace {

/// Calls that cannot cluster.
struct ClusteringWithoutEffectTest : ClusterScene
{
  vtkSmartPointer<vtkTable> runs, means;
  vtkSmartPointer<vtkIntArray> former;
  int plots = 0;

  void SetUp() override
  {
    load({{1, 2, 3, 4}, {9, 5, 3, 1}, {10, 21, 29, 40}, {8, 6, 3, 2}, {0, 1, 3, 4}});
    cluster(2);
    runs = container.clusterRunTable;
    means = container.decorationTable;
    former = container.clusterLabels;
    plots = static_cast<int>(chart()->GetNumberOfPlots());
  }

  void expectNothingChanges(int clusters = 2)
  {
    for (int mode : {0, 2, 3}) {
      EXPECT_EQ(cluster(clusters, mode), "") << mode;
      EXPECT_EQ(container.clusterRunTable, runs) << mode;
      EXPECT_EQ(container.decorationTable, means) << mode;
      EXPECT_EQ(container.clusterLabels, former) << mode;
      if (chart()) {
        EXPECT_EQ(chart()->GetNumberOfPlots(), plots) << mode;
      }
    }
    EXPECT_EQ(runs->GetNumberOfColumns(), 6);
    EXPECT_EQ(means->GetNumberOfColumns(), 3);
  }
};

TEST_F(ClusteringWithoutEffectTest, FewerThanOneCluster)
{
  for (int clusters : {0, -1, -1000}) expectNothingChanges(clusters);
}

TEST_F(ClusteringWithoutEffectTest, NoCompleteRun)
{
  settings().setStride(21);
  expectNothingChanges();
  container.plotData = makeTable({{"a", {}}, {"b", {}}});
  settings().setStride(1);
  expectNothingChanges();
  container.plotData = vtkSmartPointer<vtkTable>::New();
  expectNothingChanges();
}

TEST_F(ClusteringWithoutEffectTest, AStrideBelowOne)
{
  for (int stride : {0, -4}) {
    settings().setStride(stride);
    expectNothingChanges();
  }
}

TEST_F(ClusteringWithoutEffectTest, AColumnThatIsNotThere)
{
  for (int column : {-1, 2, 1000}) {
    settings().xColumns = {1};
    settings().yColumns = {column};
    expectNothingChanges();
    settings().xColumns = {column};
    settings().yColumns = {0};
    expectNothingChanges();
  }
}

TEST_F(ClusteringWithoutEffectTest, AColumnOfText)
{
  vtkNew<vtkStringArray> text;
  text->SetName("text");
  for (int row = 0; row < 20; ++row) text->InsertNextValue("5");
  container.plotData->AddColumn(text);
  settings().yColumns = {2};
  expectNothingChanges();
  settings().yColumns = {0};
  settings().xColumns = {2};
  expectNothingChanges();
}

TEST_F(ClusteringWithoutEffectTest, NoChart)
{
  container.chartXY = nullptr;
  expectNothingChanges();
}

} // namespace
} // namespace runsieve::test
