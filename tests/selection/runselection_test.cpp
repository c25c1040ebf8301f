#include "support/PlotScene.h"
#include "support/ScanBuilder.h"
#include "support/Selections.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>

#include <cmath>
#include <memory>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

ParameterSelection runsOf(std::set<int> const& runs)
{
  ParameterSelection selection;
  selection.selectedRuns = runs;
  return selection;
}

/// Run numbers that come from outside.
struct RunSelectionTest : testing::Test
{
  PlotScene plot;
  PlotContainer& container = plot.container;

  void load(plotStyles style, int runs = 4, int times = 3)
  {
    container.setPlotStyle(style);
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.bounds = {{0, 100}};
    container.setLinePlotTable(makeScan(shape), false);
  }

  std::vector<double> linkedRows()
  {
    auto* selection = container.annotationLink->GetCurrentSelection();
    if (!selection || selection->GetNumberOfNodes() == 0) return {};
    return numbers(vtkDataArray::SafeDownCast(selection->GetNode(0u)->GetSelectionList()));
  }

  std::vector<double> select(std::set<int> const& runs, int timeIndex)
  {
    auto record = runsOf(runs);
    container.setSelection(&record, timeIndex);
    return linkedRows();
  }

  void selectExternally(std::set<int> const& runs)
  {
    auto record = runsOf(runs);
    container.setExternalSelection(&record);
  }

  /// Rows of a plain table: run numbers and one parameter of equal values.
  void setRunNumbers(std::vector<double> const& numbers, int stride)
  {
    container.plotData = makeTable({{"time", std::vector<double>(numbers.size(), 0.0)},
                                    {": Run Index", numbers},
                                    {"Parameter: k1", numbers}});
    container.metaData->parameterColumns = {2};
    container.parameterBounds = {{0, 100}};
    container.typedColumnNames = {
        {Kestrane::Unnamed, "time"}, {Kestrane::Unnamed, "Run Index"}, {Kestrane::Parameter, "k1"}};
    container.metaData->setStride(stride);
  }
};

TEST_F(RunSelectionTest, EachRunIsSelectedAtOneTime)
{
  load(scatterPlot);
  EXPECT_THAT(select({0, 3}, 1), ElementsAre(1, 10));
  auto* node = container.annotationLink->GetCurrentSelection()->GetNode(0u);
  EXPECT_EQ(node->GetFieldType(), vtkSelectionNode::ROW);
  EXPECT_EQ(node->GetContentType(), vtkSelectionNode::INDICES);
}

TEST_F(RunSelectionTest, ATimePastTheEndWrapsAround)
{
  load(scatterPlot);
  EXPECT_THAT(select({1, 2}, 3), ElementsAre(3, 6));
  EXPECT_THAT(select({1}, 5), ElementsAre(5));
}

TEST_F(RunSelectionTest, ANegativeTimeWrapsAsAnUnsignedNumber)
{
  load(scatterPlot, 3, 7);
  // (2**64 - 1) % 7 = 1
  EXPECT_THAT(select({0, 2}, -1), ElementsAre(1, 15));
}

TEST_F(RunSelectionTest, AnUnknownRunIsSkippedAndTheOnesBehindAreFound)
{
  setRunNumbers({0, 0, 2, 2, 5, 5}, 2);
  EXPECT_THAT(select({-4, 0, 1, 3, 5, 9}, 0), ElementsAre(0, 4));
}

TEST_F(RunSelectionTest, TheSelectionOfTheLinkIsReplacedAndEvaluated)
{
  load(selectionCdfPlot);
  select({1, 2}, 0);
  ASSERT_THAT(container.tables, SizeIs(8));
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(2, 3));
  EXPECT_THAT(select({}, 0), IsEmpty());
  EXPECT_THAT(container.tables, SizeIs(2));
}

TEST_F(RunSelectionTest, ASelectionPassesFromOneContainerToAnother)
{
  load(selectionCdfPlot);
  selectRows(container, {0, 3, 9, 1, 10});
  const std::unique_ptr<ParameterSelection> record(container.getSelection());
  ASSERT_TRUE(record);
  EXPECT_THAT(record->selectedRuns, ElementsAre(0, 3));
  PlotScene other;
  ScanShape longer;
  longer.runs = 4;
  longer.times = 5;
  longer.bounds = {{0, 100}};
  other.container.setLinePlotTable(makeScan(longer), false);
  other.container.setSelection(record.get(), 4);
  const std::unique_ptr<ParameterSelection> back(other.container.getSelection());
  ASSERT_TRUE(back);
  EXPECT_EQ(back->selectedRuns, record->selectedRuns);
  EXPECT_THAT(linkedRows(), SizeIs(5)) << "containers share no link";
}

TEST_F(RunSelectionTest, RowsPastTheEndOfAShortLastRunDoNoHarm)
{
  setRunNumbers({0, 0, 0, 1, 1, 1, 2}, 3);
  select({0, 2}, 2);
  const auto flags = vtkSmartPointer<vtkIntArray>::Take(container.getCurrentSelection());
  ASSERT_TRUE(flags);
  EXPECT_THAT(numbers(flags), ElementsAre(0, 0, 1, 0, 0, 0, 0));
}

TEST_F(RunSelectionTest, TheRunColumnIsTheFirstNamedIndexElseTheFirst)
{
  container.plotData = makeTable({{"a", {5, 6}}, {"my Index", {1, 2}}, {": Run Index", {8, 9}}});
  container.metaData->setStride(1);
  EXPECT_THAT(select({2, 6, 9}, 0), ElementsAre(1));
  container.plotData = makeTable({{"a", {5, 6}}, {"index", {1, 2}}});
  EXPECT_THAT(select({2, 6}, 0), ElementsAre(1)) << "column a: the search is case-sensitive";
  EXPECT_THAT(select({5}, 0), ElementsAre(0));
}

TEST_F(RunSelectionTest, WithoutUsableRunNumbersTheLinkStays)
{
  load(scatterPlot);
  selectRows(container, {4});
  container.metaData->setStride(0);
  EXPECT_THAT(select({0}, 0), ElementsAre(4));
  container.metaData->setStride(3);
  container.plotData = vtkSmartPointer<vtkTable>::New();
  EXPECT_THAT(select({0}, 0), ElementsAre(4)) << "no column";
  container.plotData->AddColumn(makeColumn<vtkFloatArray>(": Run Index", std::vector<double>{0, 0, 0}));
  EXPECT_THAT(select({0}, 0), ElementsAre(4)) << "floats";
}

TEST_F(RunSelectionTest, AnExternalSelectionIsAFurtherSeriesOfOneRowPerRun)
{
  load(selectionCdfPlot);
  selectExternally({1, 3});
  ASSERT_THAT(container.tables, SizeIs(5));
  EXPECT_THAT(numbers(container.tables[2], ": Run Index"), ElementsAre(1, 3));
  EXPECT_THAT(numbers(container.tables[2], ": Time [s]"), Each(0.0));
  EXPECT_EQ(columnNames(container.tables[2]), columnNames(container.plotData));
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(2, 4));
  EXPECT_EQ(container.tables[4]->GetNumberOfRows(), 200);
}

TEST_F(RunSelectionTest, AnExternalSelectionLeavesLinkAndStatisticsAlone)
{
  load(selectionCdfPlot);
  selectRows(container, {1, 4});
  const auto statistics = container.ksStatistics.at(0).d;
  const auto tables = container.tables;
  selectExternally({3});
  ASSERT_THAT(container.tables, SizeIs(11));
  for (int i = 0; i < 8; ++i) EXPECT_EQ(container.tables[i], tables[i]) << i;
  EXPECT_THAT(numbers(container.tables[9], "Sorted k1"), ElementsAre(4));
  EXPECT_THAT(linkedRows(), ElementsAre(1, 4));
  EXPECT_EQ(container.ksStatistics.at(0).d, statistics);
}

TEST_F(RunSelectionTest, AnUnknownRunEndsAnExternalSelection)
{
  load(selectionCdfPlot);
  setRunNumbers({0, 0, 2, 2, 5, 5}, 2);
  selectExternally({0, 1, 2, 5});
  EXPECT_THAT(numbers(container.tables.at(2), ": Run Index"), ElementsAre(0));
}

TEST_F(RunSelectionTest, AnEmptyExternalSelectionIsAnEmptySeries)
{
  load(selectionCdfPlot);
  selectExternally({});
  ASSERT_THAT(container.tables, SizeIs(5));
  EXPECT_EQ(container.tables[2]->GetNumberOfRows(), 0);
  EXPECT_EQ(columnNames(container.tables[2]), columnNames(container.plotData));
  EXPECT_EQ(container.tables[3]->GetNumberOfRows(), 0);
  EXPECT_THAT(numbers(container.tables[4], "Density of k1"), testing::AllOf(SizeIs(200), Each(0.0)));
}

TEST_F(RunSelectionTest, TheTablesOfAllRunsComeFirstEvenIfNothingWasDrawnYet)
{
  load(scatterPlot);
  ASSERT_THAT(container.tables, IsEmpty());
  selectExternally({0});
  ASSERT_THAT(container.tables, SizeIs(5));
  ASSERT_TRUE(container.tables[0] && container.tables[1]);
  EXPECT_THAT(numbers(container.tables[0], "Sorted k1"), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(numbers(container.tables[3], "Sorted k1"), ElementsAre(1));
}

TEST_F(RunSelectionTest, AnExternalSelectionRedraws)
{
  load(scatterPlot);
  container.chartXY->ClearPlots();
  plot.scene->SetDirty(false);
  selectExternally({0});
  EXPECT_EQ(container.chartXY->GetNumberOfPlots(), 1);
  EXPECT_TRUE(plot.scene->GetDirty());
}

TEST_F(RunSelectionTest, TheNextSelectionDropsAnExternalOne)
{
  load(selectionCdfPlot);
  selectExternally({1});
  selectRows(container, {});
  EXPECT_THAT(container.tables, SizeIs(2));
}

TEST_F(RunSelectionTest, ExternallyTheRunColumnDefaultsToTheOneBeforeTheParameters)
{
  container.plotData = makeTable({{"a", {8, 9}}, {"run", {1, 2}}, {"Parameter: k1", {30, 40}}});
  container.metaData->parameterColumns = {2};
  container.parameterBounds = {{0, 100}};
  container.metaData->setStride(1);
  selectExternally({2});
  EXPECT_THAT(numbers(container.tables.at(2), "Parameter: k1"), ElementsAre(40));
}

TEST_F(RunSelectionTest, ImpossibleExternalSelectionsHaveNoEffect)
{
  load(scatterPlot);
  container.metaData->setStride(0);
  selectExternally({0});
  EXPECT_THAT(container.tables, IsEmpty()) << "no stride";
  container.metaData->setStride(3);
  container.plotData->AddColumn(makeColumn<vtkFloatArray>(": Run Index", std::vector<double>(12, 0.0)));
  selectExternally({0});
  EXPECT_THAT(container.tables, IsEmpty()) << "no run numbers of doubles";
  container.metaData->parameterColumns.clear();
  selectExternally({0});
  EXPECT_THAT(container.tables, IsEmpty()) << "no parameters";
}

/// Clusters as records.
struct ClusterSelectionTest : RunSelectionTest
{
  std::vector<std::unique_ptr<ParameterSelection>> clusters(std::vector<int> const& labels,
                                                            int entriesBefore = 0)
  {
    container.clusterLabels = makeColumn<vtkIntArray>("labels", labels);
    container.metaData->sourceName = "scan";
    container.metaData->sourceId = 7;
    std::vector<ParameterSelection*> records;
    for (int i = 0; i < entriesBefore; ++i) records.push_back(new ParameterSelection);
    container.selectionsFromClusters("shape", records);
    return {records.begin(), records.end()};
  }
};

TEST_F(ClusterSelectionTest, EachClusterBecomesARecordOfPositions)
{
  const auto records = clusters({0, 0, 2});
  ASSERT_THAT(records, SizeIs(3));
  EXPECT_THAT(records[0]->selectedRuns, ElementsAre(0, 1));
  EXPECT_THAT(records[1]->selectedRuns, IsEmpty());
  EXPECT_THAT(records[2]->selectedRuns, ElementsAre(2));
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(records[k]->selectionName, "shape " + std::to_string(k));
    EXPECT_EQ(records[k]->sourceName, "scan");
    EXPECT_EQ(records[k]->sourceId, 7);
  }
}

TEST_F(ClusterSelectionTest, RecordsThatStandAlreadyAreNotTouched)
{
  const auto records = clusters({1, 0}, 2);
  ASSERT_THAT(records, SizeIs(4));
  EXPECT_THAT(records[0]->selectedRuns, IsEmpty());
  EXPECT_THAT(records[1]->selectedRuns, IsEmpty());
  EXPECT_EQ(records[0]->selectionName, "");
  EXPECT_THAT(records[2]->selectedRuns, ElementsAre(1));
  EXPECT_THAT(records[3]->selectedRuns, ElementsAre(0));
}

TEST_F(ClusterSelectionTest, NoLabelsGiveNoRecords)
{
  EXPECT_THAT(clusters({}), IsEmpty());
  EXPECT_THAT(clusters({-1, -2}), IsEmpty());
  container.clusterLabels = nullptr;
  std::vector<ParameterSelection*> records;
  container.selectionsFromClusters("shape", records);
  EXPECT_THAT(records, IsEmpty());
}

TEST_F(ClusterSelectionTest, NegativeLabelsBelongToNoCluster)
{
  const auto records = clusters({-1, 0, -5, 1});
  ASSERT_THAT(records, SizeIs(2));
  EXPECT_THAT(records[0]->selectedRuns, ElementsAre(1));
  EXPECT_THAT(records[1]->selectedRuns, ElementsAre(3));
}

} // namespace
} // namespace runsieve::test
