#include "support/KMeansReference.h"

#include <gmock/gmock.h>
#include <vtkChart.h>
#include <vtkKMeansStatistics.h>
#include <vtkPlotLine.h>

#include <memory>
#include <set>

using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;
using testing::Pointwise;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// Runs of two shapes, rising and falling, at different heights.
const Curves twoShapes{{1, 2, 3, 4}, {9, 5, 3, 1}, {10, 21, 29, 40}, {8, 6, 3, 2}, {0, 1, 3, 4}};

/// What clusterTimeSeries() leaves in the container and in its chart.
struct ClusteringTest : ClusterScene
{
  PlotContainer& plot() { return container; }
  vtkTable* runTable() { return container.clusterRunTable; }
  vtkTable* centres() { return container.decorationTable; }

  /// The line of a run; an empty plot of points stands before them from the start.
  vtkPlot* line(int run) { return chart()->GetPlot(1 + run); }
};

TEST_F(ClusteringTest, LabelsStandInTheOrderOfTheRuns)
{
  load(twoShapes);
  cluster(2);
  ASSERT_TRUE(container.clusterLabels);
  EXPECT_THAT(labels(), ElementsAre(0, 1, 0, 1, 0));
}

TEST_F(ClusteringTest, LabelsAreThoseOfAPlainKMeansFromTheFirstRuns)
{
  int compared = 0;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    int const clusters = 2 + static_cast<int>(seed % 3);
    Curves const runs = randomCurves(seed, 14, 9);
    auto const expected = kMeansLabels(runs, clusters);
    if (!expected) continue;
    ++compared;
    load(runs);
    cluster(clusters);
    EXPECT_EQ(labels(), *expected) << "seed " << seed;
  }
  EXPECT_GE(compared, 20);
}

TEST_F(ClusteringTest, ASearchThatGoesRoundInACircleEndsWhereTheFilterOfVtkEndsIt)
{
  ASSERT_EQ(vtkSmartPointer<vtkKMeansStatistics>::New()->GetMaxNumIterations(), 50);
  load({{384, 320, 256}, {512, 256, 0}, {250, 875, 500}, {1000, 750, 500}, {0, 81, 243}, {500, 1000, 875}});
  cluster(4);
  EXPECT_THAT(labels(), ElementsAre(3, 3, 2, 0, 2, 2)); // after an odd number of steps 0, 0, 2, 3, 2, 2
}

TEST_F(ClusteringTest, ASearchEndsAtTheToleranceOfTheFilterOfVtk)
{
  ASSERT_EQ(vtkSmartPointer<vtkKMeansStatistics>::New()->GetTolerance(), 0.01);
  std::mt19937 random(26);
  Curves runs(120, Curve(3));
  for (Curve& run : runs)
    for (double& value : run) value = static_cast<double>(random() % 10);
  load(runs);
  cluster(3);
  std::vector<int> sizes(3);
  for (int label : labels()) ++sizes.at(static_cast<std::size_t>(label));
  EXPECT_THAT(sizes, ElementsAre(43, 39, 38)); // without tolerance 39, 40, 41
}

TEST_F(ClusteringTest, MeanCurvesAreTheMeansOfTheRunsOfEachCluster)
{
  Curves const runs = randomCurves(4, 14, 9);
  load(runs);
  cluster(3);
  auto const expected = meansBy(labels(), runs, 3);
  ASSERT_TRUE(expected);
  ASSERT_EQ(centres()->GetNumberOfColumns(), 4);
  for (int c = 0; c < 3; ++c)
    EXPECT_THAT(column(centres(), c), Pointwise(DoubleNear(1e-12), (*expected)[c])) << c;
}

TEST_F(ClusteringTest, TheRunTableHasAColumnPerRunAndTheTimeLast)
{
  load(twoShapes);
  cluster(2);
  ASSERT_EQ(runTable()->GetNumberOfColumns(), 6);
  EXPECT_EQ(runTable()->GetNumberOfRows(), 4);
  for (int r = 0; r < 5; ++r) EXPECT_EQ(column(runTable(), r), twoShapes[r]) << r;
  EXPECT_STREQ(runTable()->GetColumnName(5), "Time");
  EXPECT_EQ(container.clusterLabels->GetNumberOfTuples(), 5) << "the number of the time column";
}

TEST_F(ClusteringTest, TheTimeIsACopyThatBothTablesShare)
{
  load(twoShapes);
  cluster(2);
  auto* time = vtkDoubleArray::SafeDownCast(runTable()->GetColumnByName("Time"));
  ASSERT_TRUE(time);
  EXPECT_THAT(numbers(time), ElementsAre(0, 10, 20, 30));
  EXPECT_EQ(centres()->GetColumn(centres()->GetNumberOfColumns() - 1), time);
  container.plotData->SetValue(1, 1, 99.0);
  EXPECT_THAT(numbers(time), ElementsAre(0, 10, 20, 30));
}

TEST_F(ClusteringTest, NumbersOfOtherTypesAreConverted)
{
  load(twoShapes);
  auto ints = vtkSmartPointer<vtkTable>::New();
  for (int c : {0, 1}) {
    std::vector<int> values;
    for (double value : column(container.plotData, c)) values.push_back(static_cast<int>(value));
    ints->AddColumn(makeColumn<vtkIntArray>(c == 0 ? "y" : "time", values));
  }
  container.plotData = ints;
  cluster(2);
  EXPECT_THAT(labels(), ElementsAre(0, 1, 0, 1, 0));
  EXPECT_TRUE(vtkDoubleArray::SafeDownCast(runTable()->GetColumnByName("Time")));
  EXPECT_THAT(numbers(runTable(), "Time"), ElementsAre(0, 10, 20, 30));
}

TEST_F(ClusteringTest, ARunThatIsNotCompleteStaysOut)
{
  load({{1, 2, 3}, {3, 2, 1}, {1, 2}});
  cluster(2);
  EXPECT_THAT(labels(), ElementsAre(0, 1));
  EXPECT_EQ(runTable()->GetNumberOfColumns(), 3);
}

TEST_F(ClusteringTest, PrintsTheNumberOfLabelsAndTheSizeOfTheRunTable)
{
  load(twoShapes);
  for (int mode : {0, 2, 3}) EXPECT_EQ(cluster(2, mode), "5\n4  6\n") << mode;
}

TEST_F(ClusteringTest, EachRunIsALineOverTheTime)
{
  load(twoShapes);
  int const before = static_cast<int>(chart()->GetNumberOfPlots());
  cluster(2);
  ASSERT_EQ(chart()->GetNumberOfPlots(), before + 5);
  for (int r = 0; r < 5; ++r) {
    auto* plot = vtkPlotLine::SafeDownCast(line(r));
    ASSERT_TRUE(plot) << r;
    ASSERT_EQ(plot->GetInput(), runTable());
    EXPECT_EQ(plot->GetData()->GetInputAbstractArrayToProcess(0, runTable()), runTable()->GetColumn(5)) << r;
    EXPECT_EQ(plot->GetData()->GetInputAbstractArrayToProcess(1, runTable()), runTable()->GetColumn(r)) << r;
  }
}

TEST_F(ClusteringTest, LinesAreWideAndHaveTheColourOfTheirCluster)
{
  load(twoShapes);
  cluster(2);
  for (int r = 0; r < 5; ++r) {
    EXPECT_EQ(line(r)->GetWidth(), 4.0f) << r;
    Color const expected = labels()[r] == 0 ? Color{153, 229, 229, 180} : Color{229, 229, 153, 180};
    EXPECT_EQ(penColor(line(r)), expected) << r;
  }
}

TEST_F(ClusteringTest, TheThirteenthClusterHasTheColourOfTheFirst)
{
  load(randomCurves(3, 13, 20));
  cluster(13);
  std::vector<int> ownClusters;
  for (int r = 0; r < 13; ++r) ownClusters.push_back(r);
  ASSERT_EQ(labels(), ownClusters);
  EXPECT_EQ(penColor(line(12)), penColor(line(0)));
  std::set<Color> colors;
  for (int r = 0; r < 12; ++r) colors.insert(penColor(line(r)));
  EXPECT_THAT(colors, SizeIs(12));
  EXPECT_EQ(penColor(line(3)), (Color{229, 153, 76, 180}));
}

TEST_F(ClusteringTest, LinesCannotBeSelected)
{
  load(twoShapes);
  cluster(2);
  for (int r = 0; r < 5; ++r) EXPECT_FALSE(line(r)->GetSelectable()) << r;
}

TEST_F(ClusteringTest, CallsPileUpLinesUntilARedraw)
{
  load(twoShapes);
  cluster(2);
  cluster(2);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 11);
  container.redraw();
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(ClusteringTest, EachCallReplacesTheResults)
{
  load(twoShapes);
  cluster(2);
  vtkSmartPointer<vtkTable> const runs = container.clusterRunTable;
  vtkSmartPointer<vtkTable> const means = container.decorationTable;
  vtkSmartPointer<vtkIntArray> const former = container.clusterLabels;
  load({{1, 2}, {2, 1}});
  cluster(2);
  EXPECT_NE(runs, container.clusterRunTable);
  EXPECT_NE(means, container.decorationTable);
  EXPECT_NE(former, container.clusterLabels);
  EXPECT_EQ(column(runs, 2), twoShapes[2]) << "whoever holds the former tables keeps their content";
  EXPECT_EQ(means->GetNumberOfRows(), 4);
  EXPECT_EQ(former->GetNumberOfTuples(), 5);
  EXPECT_THAT(labels(), ElementsAre(0, 1));
}

TEST_F(ClusteringTest, TheSameInputGivesTheSameLabels)
{
  load(randomCurves(8, 40, 12));
  cluster(5);
  auto const first = labels();
  for (int i = 0; i < 5; ++i) {
    cluster(5);
    EXPECT_EQ(labels(), first) << i;
  }
}

TEST_F(ClusteringTest, TheTableAndTheSettingsStayAsTheyWere)
{
  load(twoShapes);
  auto* table = container.plotData.Get();
  auto const values = column(table, 0);
  cluster(2);
  EXPECT_EQ(container.plotData.Get(), table);
  EXPECT_EQ(column(table, 0), values);
  EXPECT_THAT(columnNames(table), ElementsAre("Molecule: A", ": Time [s]"));
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
}

TEST_F(ClusteringTest, MeanCurvesShowAfterARedrawIfTheHostWantsThem)
{
  load(twoShapes);
  container.showDecorationPlots = true;
  cluster(2);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 6) << "no redraw yet";
  container.redraw();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 3);
  EXPECT_EQ(line(0)->GetInput(), centres());
  EXPECT_EQ(drawnColumn(line(0), 0), "Time");
  EXPECT_EQ(penColor(line(1)), (Color{180, 180, 120, 230}));
}

TEST_F(ClusteringTest, ClustersLeaveAsSelections)
{
  load(twoShapes);
  cluster(2);
  std::vector<ParameterSelection*> records;
  container.selectionsFromClusters("shape", records);
  std::vector<std::unique_ptr<ParameterSelection>> const owned(records.begin(), records.end());
  ASSERT_THAT(owned, SizeIs(2));
  EXPECT_THAT(owned[0]->selectedRuns, ElementsAre(0, 2, 4));
  EXPECT_THAT(owned[1]->selectedRuns, ElementsAre(1, 3));
  EXPECT_EQ(owned[1]->selectionName, "shape 1");
}

TEST_F(ClusteringTest, CurvesWithoutAShapeJoinTheFirstCluster)
{
  load({{1, 2, 3, 4}, {4, 3, 2, 1}, {5, 5, 5, 5}, {1, std::nan(""), 3, 4}, {2, 4, 6, 9}});
  cluster(2);
  ASSERT_THAT(labels(), SizeIs(5));
  EXPECT_EQ(labels()[2], 0);
  EXPECT_EQ(labels()[3], 0);
}

TEST_F(ClusteringTest, OneClusterTakesAllRuns)
{
  for (int mode : {0, 2, 3}) {
    load(twoShapes);
    cluster(1, mode);
    EXPECT_THAT(labels(), ElementsAre(0, 0, 0, 0, 0)) << mode;
    EXPECT_EQ(centres()->GetNumberOfColumns(), 2) << mode;
    EXPECT_THAT(column(centres(), 0), Pointwise(DoubleNear(1e-12), Curve{5.6, 7, 8.2, 10.2})) << mode;
  }
}

TEST_F(ClusteringTest, MoreClustersThanRunsGiveEachRunALabel)
{
  OutputWindowLog log; // the filter warns of centres that coincide
  for (int mode : {0, 2, 3}) {
    load({{1, 2, 4}, {4, 3, 1}});
    cluster(7, mode);
    ASSERT_THAT(labels(), SizeIs(2)) << mode;
    for (int label : labels()) {
      EXPECT_GE(label, 0) << mode;
      EXPECT_LT(label, 7) << mode;
    }
  }
}

TEST_F(ClusteringTest, AConstantScanIsOneCluster)
{
  OutputWindowLog log; // the filter warns of centres that coincide
  load(Curves(6, Curve(5, 3.0)));
  cluster(2);
  EXPECT_THAT(labels(), Each(0));
  EXPECT_THAT(labels(), SizeIs(6));
}

} // namespace
} // namespace runsieve::test
