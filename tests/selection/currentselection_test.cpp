#include "support/PlotScene.h"
#include "support/ScanBuilder.h"
#include "support/Selections.h"

#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <gmock/gmock.h>
#include <vtkAnnotationLayers.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>

#include <cmath>
#include <memory>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

using RunNumbers = std::optional<std::set<int>>;

/// The selection as flags of rows and as run numbers.
struct CurrentSelectionTest : testing::Test
{
  PlotScene plot;
  PlotContainer& container = plot.container;

  void load(plotStyles style)
  {
    container.setPlotStyle(style);
    ScanShape shape; // 3 runs of 3 times
    shape.bounds = {{0, 10}};
    container.parameterBounds.clear();
    container.setLinePlotTable(makeScan(shape), false);
  }

  std::optional<std::vector<double>> flags()
  {
    const auto array = vtkSmartPointer<vtkIntArray>::Take(container.getCurrentSelection());
    if (!array) return {};
    return numbers(array);
  }

  RunNumbers selectedRuns()
  {
    const std::unique_ptr<ParameterSelection> record(container.getSelection());
    if (!record) return {};
    return record->selectedRuns;
  }

  void replaceRunIndex(vtkSmartPointer<vtkDataArray> column)
  {
    column->SetName(": Run Index");
    container.plotData->AddColumn(column);
  }
};

TEST_F(CurrentSelectionTest, FlagsNameTheRowsOfTheLink)
{
  load(scatterPlot);
  selectRows(container, {1, 8});
  EXPECT_EQ(flags(), (std::vector<double>{0, 1, 0, 0, 0, 0, 0, 0, 1}));
}

TEST_F(CurrentSelectionTest, FlagsAreANewIntColumnThatBelongsToTheCaller)
{
  load(scatterPlot);
  const auto one = vtkSmartPointer<vtkIntArray>::Take(container.getCurrentSelection());
  const auto other = vtkSmartPointer<vtkIntArray>::Take(container.getCurrentSelection());
  ASSERT_TRUE(one && other);
  EXPECT_NE(one, other);
  EXPECT_EQ(one->GetReferenceCount(), 1);
  EXPECT_STREQ(one->GetName(), "selected points");
  EXPECT_EQ(one->GetNumberOfTuples(), 9);
}

TEST_F(CurrentSelectionTest, WithoutASelectionAllFlagsAreZero)
{
  load(scatterPlot);
  EXPECT_EQ(flags(), std::vector<double>(9, 0.0));
  container.annotationLink->SetCurrentSelection(nullptr);
  EXPECT_EQ(flags(), std::vector<double>(9, 0.0)) << "the layers are still there";
}

TEST_F(CurrentSelectionTest, WithoutLayersThereIsNothingToRead)
{
  load(scatterPlot);
  container.annotationLink->SetAnnotationLayers(nullptr);
  EXPECT_EQ(flags(), std::nullopt);
}

TEST_F(CurrentSelectionTest, InverseAndPlainNodesAndPointsOfAChartAreUnited)
{
  load(scatterPlot);
  container.annotationLink->SetCurrentSelection(
      selectionOf({rowNode({0, 1, 2, 3, 4, 5, 6}, true), rowNode({2}), pointNode({4})}));
  EXPECT_EQ(flags(), (std::vector<double>{0, 0, 1, 0, 1, 0, 0, 1, 1}));
}

TEST_F(CurrentSelectionTest, AnnotationsCountUnlessDisabledOrHidden)
{
  load(scatterPlot);
  auto* layers = container.annotationLink->GetAnnotationLayers();
  auto disabled = annotationOf({3}), hidden = annotationOf({4}), shown = annotationOf({5});
  disabled->GetInformation()->Set(vtkAnnotation::ENABLE(), 0);
  hidden->GetInformation()->Set(vtkAnnotation::ENABLE(), 1);
  hidden->GetInformation()->Set(vtkAnnotation::HIDE(), 1);
  shown->GetInformation()->Set(vtkAnnotation::ENABLE(), 1);
  for (auto const& annotation : {disabled, hidden, shown, annotationOf({6})})
    layers->AddAnnotation(annotation);
  layers->AddAnnotation(vtkSmartPointer<vtkAnnotation>::New());
  selectRows(container, {0});
  EXPECT_EQ(flags(), (std::vector<double>{1, 0, 0, 0, 0, 1, 1, 0, 0}));
}

TEST_F(CurrentSelectionTest, RowsOutsideTheTableAreIgnored)
{
  load(scatterPlot);
  selectRows(container, {-1, 0, 9, 123456789});
  EXPECT_EQ(flags(), (std::vector<double>{1, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(CurrentSelectionTest, ReadingDoesNotChangeTheSelectionOfTheLink)
{
  load(scatterPlot);
  auto node = pointNode({1});
  container.annotationLink->SetCurrentSelection(selectionOf({node}));
  flags();
  EXPECT_EQ(node->GetFieldType(), vtkSelectionNode::POINT);
}

TEST_F(CurrentSelectionTest, ALastIntColumnSelectsTheRowsThatAreExactlyOne)
{
  load(scatterPlot);
  container.plotData->AddColumn(
      makeColumn<vtkIntArray>("anything", std::vector<int>{0, 1, 2, -1, 1, 0, 100, 1, 3}));
  container.selectionFromFlagColumn();
  EXPECT_EQ(flags(), (std::vector<double>{0, 1, 0, 0, 1, 0, 0, 1, 0}));
  EXPECT_EQ(countColumns(container.plotData, "anything"), 1) << "the column stays";
}

TEST_F(CurrentSelectionTest, AFlagColumnBecomesOneNodeOfAscendingRows)
{
  container.plotData = vtkSmartPointer<vtkTable>::New();
  container.plotData->AddColumn(makeColumn<vtkIntArray>("selected points", std::vector<int>{1, 0, 1}));
  container.selectionFromFlagColumn();
  auto* selection = container.annotationLink->GetCurrentSelection();
  ASSERT_TRUE(selection && selection->GetNumberOfNodes() == 1);
  auto* node = selection->GetNode(0u);
  EXPECT_EQ(node->GetFieldType(), vtkSelectionNode::ROW);
  EXPECT_EQ(node->GetContentType(), vtkSelectionNode::INDICES);
  ASSERT_TRUE(vtkIdTypeArray::SafeDownCast(node->GetSelectionList()));
  EXPECT_THAT(numbers(vtkDataArray::SafeDownCast(node->GetSelectionList())), ElementsAre(0, 2));
}

TEST_F(CurrentSelectionTest, AnyOtherLastColumnIsLeftAlone)
{
  load(scatterPlot);
  selectRows(container, {4});
  container.plotData->AddColumn(makeColumn<vtkIntArray>("selected points", std::vector<int>(9, 1)));
  container.plotData->AddColumn(makeColumn("last", std::vector<double>(9, 1.0)));
  container.selectionFromFlagColumn();
  EXPECT_EQ(flags(), (std::vector<double>{0, 0, 0, 0, 1, 0, 0, 0, 0}));
  container.plotData = vtkSmartPointer<vtkTable>::New();
  container.selectionFromFlagColumn();
}

TEST_F(CurrentSelectionTest, ACopyTakesTheSelectionAlongOverAnyNumberOfGenerations)
{
  load(scatterPlot);
  selectRows(container, {2, 6});
  testing::internal::CaptureStdout(); // a copy has no scene yet and says so
  PlotContainer copy(container), secondCopy(copy);
  testing::internal::GetCapturedStdout();
  for (auto const* each : {&copy, &secondCopy}) {
    const auto array = vtkSmartPointer<vtkIntArray>::Take(each->getCurrentSelection());
    ASSERT_TRUE(array);
    EXPECT_THAT(numbers(array), ElementsAre(0, 0, 1, 0, 0, 0, 1, 0, 0));
    EXPECT_TRUE(each->selectionUpdatePending);
    EXPECT_EQ(countColumns(each->plotData, "selected points"), 1);
  }
}

TEST_F(CurrentSelectionTest, ACopyGetsItsStatisticsWithItsFirstDrawing)
{
  load(selectionCdfPlot);
  selectRows(container, {1, 4});
  testing::internal::CaptureStdout();
  PlotContainer copy(container);
  testing::internal::GetCapturedStdout();
  vtkNew<vtkContextScene> scene;
  scene->SetGeometry(800, 600);
  scene->AddItem(copy.getItem());
  copy.redraw();
  EXPECT_FALSE(copy.selectionUpdatePending);
  ASSERT_EQ(copy.tables.size(), 8u);
  EXPECT_THAT(numbers(copy.tables[3], "Sorted k1"), ElementsAre(1, 2));
  EXPECT_EQ(copy.ksStatistics.size(), 1u);
  EXPECT_EQ(scene->GetNumberOfItems(), 1u);
  EXPECT_FALSE(container.selectionUpdatePending);
}

TEST_F(CurrentSelectionTest, SelectedRunsAreTheValuesOfTheRunColumn)
{
  load(scatterPlot);
  selectRows(container, {1, 2, 8});
  EXPECT_EQ(selectedRuns(), (std::set<int>{0, 2}));
}

TEST_F(CurrentSelectionTest, ARecordNamesItsSourceButHasNoNameOfItsOwn)
{
  load(scatterPlot);
  container.metaData->sourceName = "scan";
  container.metaData->sourceId = 42;
  const std::unique_ptr<ParameterSelection> record(container.getSelection());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->sourceName, "scan");
  EXPECT_EQ(record->sourceId, 42);
  EXPECT_EQ(record->selectionName, "");
}

TEST_F(CurrentSelectionTest, InTheCompositeViewOnlySurvivingRunsCount)
{
  load(selectionCdfPlot);
  selectRows(container, {0, 3, 1, 7}); // time 0: runs 0, 1; time 1: runs 0, 2
  EXPECT_EQ(selectedRuns(), (std::set<int>{0}));
  load(scatterPlot);
  selectRows(container, {0, 3, 1, 7});
  EXPECT_EQ(selectedRuns(), (std::set<int>{0, 1, 2}));
}

TEST_F(CurrentSelectionTest, InTheCompositeViewTheLinkServesUntilAFirstSelection)
{
  load(selectionCdfPlot);
  ASSERT_EQ(countColumns(container.plotData, "vtkRemainderSelection"), 0);
  EXPECT_EQ(selectedRuns(), std::set<int>{}) << "empty, not missing";
  container.selectionCallback->plotContainer = nullptr; // so that no flags are written
  selectRows(container, {5});
  EXPECT_EQ(selectedRuns(), std::set<int>{1});
  container.selectionCallback->plotContainer = &container;
}

TEST_F(CurrentSelectionTest, FlagsOfALoadedTextFileAreNoFlags)
{
  load(selectionCdfPlot);
  selectRows(container, {0, 3, 1, 7});
  container.plotData->AddColumn(makeColumn("vtkRemainderSelection", std::vector<double>(9, 0.0)));
  EXPECT_EQ(selectedRuns(), (std::set<int>{0, 1, 2})) << "doubles: the link's selection counts";
}

TEST_F(CurrentSelectionTest, RunNumbersAreCutToWholeOnesAndImpossibleOnesSkipped)
{
  load(scatterPlot);
  replaceRunIndex(makeColumn(
      "", std::vector<double>{2.9, -1.7, std::nan(""), 1e12, -1e300, INFINITY, 7, 8, 2147483647.0}));
  selectRows(container, {0, 1, 2, 3, 4, 5, 6, 8});
  EXPECT_EQ(selectedRuns(), (std::set<int>{-1, 2, 7, 2147483647}));
}

TEST_F(CurrentSelectionTest, WithoutARunColumnOfDoublesThereIsNoRecord)
{
  load(scatterPlot);
  selectRows(container, {1});
  replaceRunIndex(makeColumn<vtkFloatArray>("", std::vector<double>(9, 1.0)));
  EXPECT_EQ(selectedRuns(), std::nullopt);
  container.plotData->RemoveColumnByName(": Run Index");
  EXPECT_EQ(selectedRuns(), std::nullopt);
}

TEST_F(CurrentSelectionTest, WithoutLayersThereIsNoRecord)
{
  load(scatterPlot);
  container.annotationLink->SetAnnotationLayers(nullptr);
  EXPECT_EQ(selectedRuns(), std::nullopt);
}

} // namespace
} // namespace runsieve::test
