#include "support/RowFilterRun.h"

#include <runsieve/selection/vtkCombinedFilterOrSelectedRows.h>

#include <gmock/gmock.h>
#include <vtkAlgorithmOutput.h>
#include <vtkAnnotationLink.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <cmath>
#include <sstream>
#include <string>
#include <tuple>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

namespace runsieve::test {
namespace {

/// VTK keeps the nodes of a selection by name and numbers the names through the whole process. This uses
/// names up until those of the next two nodes sort the other way round, as node9 and node10 do.
void useUpNodeNames()
{
  const auto use = [] {
    vtkNew<vtkSelection> selection;
    selection->AddNode(vtkNew<vtkSelectionNode>());
    return std::stol(selection->GetNodeNameAtIndex(0).substr(4));
  };
  long used = use(), power = 10;
  while (power < used + 2) power *= 10;
  while (used < power - 2) used = use();
}

/// Rows named by any selection against the other rows of their time span.
struct CombinedFilterOrTest : testing::Test, RowFilterRun<vtkCombinedFilterOrSelectedRows>
{
  CombinedFilterOrTest() { setTimes({1, 2, 3, 4, 1, 2, 3, 4}); }

  /// Column 0 is the row number, column 1 the time.
  void setTimes(std::vector<double> const& times)
  {
    std::vector<double> rows;
    for (std::size_t row = 0; row < times.size(); ++row) rows.push_back(static_cast<double>(row));
    setTable(makeTable({{"row", rows}, {"time", times}}));
    filter->SetTimeColumnIndex(1);
  }

  std::vector<double> complementFlags() { return flags("vtkComplementSelection"); }
};

TEST_F(CombinedFilterOrTest, OtherRowsInsideTheTimeSpanOfTheSelectionAreTheComplement)
{
  select({1, 2});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
  EXPECT_THAT(output(1, "row"), ElementsAre(5, 6));
  EXPECT_THAT(complementFlags(), ElementsAre(0, 0, 0, 0, 0, 1, 1, 0));
  EXPECT_EQ(errors.text(), "");
}

TEST_F(CombinedFilterOrTest, TheSpanCoversTimesThatHoldNoSelectedRow)
{
  select({0, 2});
  run();
  EXPECT_THAT(output(1, "row"), ElementsAre(1, 4, 5, 6));
}

TEST_F(CombinedFilterOrTest, OutputsKeepTheColumnsOfTheInput)
{
  auto text = vtkSmartPointer<vtkStringArray>::New();
  text->SetName("text");
  for (char c = 'a'; c <= 'h'; ++c) text->InsertNextValue(std::string(1, c));
  table->AddColumn(text);
  select({3, 1});
  run();
  EXPECT_THAT(columnNames(output(0)), ElementsAre("row", "time", "text"));
  EXPECT_THAT(columnNames(output(1)), ElementsAre("row", "time", "text"));
  auto* kept = vtkStringArray::SafeDownCast(output(0)->GetColumnByName("text"));
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->GetValue(0), "d");
  EXPECT_EQ(kept->GetValue(1), "b");
}

TEST_F(CombinedFilterOrTest, TheFlagsAreIdsInTheInputTable)
{
  select({1});
  run();
  EXPECT_TRUE(vtkIdTypeArray::SafeDownCast(table->GetColumnByName("vtkComplementSelection")));
  EXPECT_FALSE(output(0)->GetColumnByName("vtkComplementSelection"));
}

TEST_F(CombinedFilterOrTest, ASelectionWithoutRowsKeepsTheColumnsAndSelectsNothing)
{
  for (auto const& selection : {selectionOf(Rows{}), vtkSmartPointer<vtkSelection>::New()}) {
    selectBy(selection);
    run();
    EXPECT_THAT(columnNames(output(0)), testing::Contains("time"));
    EXPECT_EQ(output(0)->GetNumberOfRows(), 0);
    EXPECT_EQ(output(1)->GetNumberOfRows(), 0);
    EXPECT_THAT(complementFlags(), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0));
  }
}

TEST_F(CombinedFilterOrTest, AnInverseNodeSelectsAllButItsRowsInAscendingOrder)
{
  selectBy(selectionOf({rowNode({5}, true)}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(0, 1, 2, 3, 4, 6, 7));
  EXPECT_THAT(output(1, "row"), ElementsAre(5));
}

TEST_F(CombinedFilterOrTest, AnInverseNodeWithoutRowsSelectsAll)
{
  selectBy(selectionOf({rowNode({}, true)}));
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows(), 8);
}

TEST_F(CombinedFilterOrTest, RowsStandInTheOrderOfTheListAndAsOftenAsNamed)
{
  select({6, 1, 6});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(6, 1, 6));
}

TEST_F(CombinedFilterOrTest, RowsNamedByTwoNodesStandTwiceInTheOrderOfTheNodes)
{
  // VTK joins nodes of equal properties, so these differ in one
  auto first = rowNode({7, 2}), second = rowNode({2, 0});
  second->GetProperties()->Set(vtkSelectionNode::COMPONENT_NUMBER(), 1);
  selectBy(selectionOf({first, second}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(7, 2, 2, 0));
  useUpNodeNames();
  selectBy(selectionOf({first, second}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(7, 2, 2, 0)) << "names of the nodes out of order";
}

TEST_F(CombinedFilterOrTest, EqualNodesFollowOneAnotherInTheOrderOfAdding)
{
  selectBy(selectionOf({rowNode({7}), rowNode({2}), rowNode({0})}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(7, 2, 0));
  useUpNodeNames();
  selectBy(selectionOf({rowNode({7}), rowNode({2}), rowNode({0})}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(7, 2, 0)) << "names of the nodes out of order";
}

TEST_F(CombinedFilterOrTest, PointNodesOfAChartCountAsRows)
{
  selectBy(selectionOf({pointNode({1, 2})}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
}

TEST_F(CombinedFilterOrTest, TheSelectionHandedInIsNotChanged)
{
  auto node = pointNode({1, 2});
  selectBy(selectionOf({node}));
  run();
  EXPECT_EQ(node->GetFieldType(), vtkSelectionNode::POINT);
}

TEST_F(CombinedFilterOrTest, AnnotationsJoinTheSelection)
{
  select({1});
  annotate({annotationOf({3})});
  run();
  EXPECT_THAT(output(0, "row"), UnorderedElementsAreArray({1, 3}));
}

TEST_F(CombinedFilterOrTest, AnnotationsCountUnlessDisabledOrHidden)
{
  const std::vector<std::tuple<int, int, bool>> cases{{-1, -1, true}, {1, -1, true},  {1, 0, true},
                                                      {1, 1, false},  {0, -1, false}, {0, 0, false},
                                                      {0, 1, false}};
  for (auto const& [enable, hide, counts] : cases) {
    annotate({annotationOf({1}), annotationWith({3}, enable, hide)});
    run();
    EXPECT_THAT(output(0, "row"), UnorderedElementsAreArray(counts ? Rows{1, 3} : Rows{1}))
        << "ENABLE " << enable << ", HIDE " << hide;
  }
}

TEST_F(CombinedFilterOrTest, WithoutAnEnabledSelectionTheTablePassesThrough)
{
  annotate({annotationWith({3}, 0, -1), annotationWith({4}, 1, 1)});
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows(), 8);
  EXPECT_EQ(output(0)->GetColumn(0), table->GetColumn(0)) << "a shallow copy shares its columns";
  EXPECT_EQ(output(1)->GetNumberOfRows(), 0);
  EXPECT_EQ(countColumns(table, "vtkComplementSelection"), 0);
}

TEST_F(CombinedFilterOrTest, AnAnnotationWithoutASelectionIsSkipped)
{
  annotate({vtkSmartPointer<vtkAnnotation>::New(), annotationOf({1})});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1));
}

TEST_F(CombinedFilterOrTest, TwoInverseAnnotationsSelectTheRowsOfNeither)
{
  auto one = vtkSmartPointer<vtkAnnotation>::New(), other = vtkSmartPointer<vtkAnnotation>::New();
  one->SetSelection(selectionOf({rowNode({1, 2}, true)}));
  other->SetSelection(selectionOf({rowNode({5}, true)}));
  annotate({one, other});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(0, 3, 4, 6, 7));
}

TEST_F(CombinedFilterOrTest, TheOutputsOfAnAnnotationLinkCanBeConnected)
{
  vtkNew<vtkAnnotationLink> link;
  link->SetCurrentSelection(selectionOf(Rows{1, 2}));
  filter->SetAnnotationLayersConnection(link->GetOutputPort(0));
  filter->SetSelectionConnection(link->GetOutputPort(2));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
}

TEST_F(CombinedFilterOrTest, WithNeitherSelectionNorAnnotationsTheRunFails)
{
  run();
  EXPECT_THAT(errors.text(), HasSubstr("No vtkSelection or vtkAnnotationLayers provided as input."));
  EXPECT_EQ(countColumns(table, "vtkComplementSelection"), 0);
}

TEST_F(CombinedFilterOrTest, ASecondRunReplacesTheFlags)
{
  select({1, 2});
  run();
  select({0});
  run();
  EXPECT_EQ(countColumns(table, "vtkComplementSelection"), 1);
  EXPECT_THAT(complementFlags(), ElementsAre(0, 0, 0, 0, 1, 0, 0, 0));
}

TEST_F(CombinedFilterOrTest, NewFlagsStandAtTheEndOfTheTable)
{
  table->AddColumn(makeColumn("vtkComplementSelection", std::vector<double>(8, 9.0)));
  table->AddColumn(makeColumn("last", std::vector<double>(8, 0.0)));
  select({1});
  run();
  EXPECT_THAT(columnNames(table), ElementsAre("row", "time", "last", "vtkComplementSelection"));
}

TEST_F(CombinedFilterOrTest, OriginalRowNumbersOnRequest)
{
  EXPECT_FALSE(filter->GetAddOriginalRowIdsArray());
  filter->AddOriginalRowIdsArrayOn();
  EXPECT_TRUE(filter->GetAddOriginalRowIdsArray());
  select({2, 1});
  run();
  EXPECT_THAT(output(0, "vtkOriginalRowIds"), ElementsAre(2, 1));
  EXPECT_THAT(output(1, "vtkOriginalRowIds"), ElementsAre(5, 6));
  EXPECT_TRUE(vtkIdTypeArray::SafeDownCast(output(0)->GetColumnByName("vtkOriginalRowIds")));
  filter->AddOriginalRowIdsArrayOff();
  run();
  EXPECT_EQ(countColumns(output(0), "vtkOriginalRowIds"), 0);
}

TEST_F(CombinedFilterOrTest, RowsOutsideTheTableAreIgnored)
{
  select({-1, 2, 8, 1000000});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(2));
}

TEST_F(CombinedFilterOrTest, ATimeThatIsNoNumberLiesInNoSpan)
{
  setTimes({1, std::nan(""), 1});
  select({0});
  run();
  EXPECT_THAT(output(1, "row"), ElementsAre(2));
  EXPECT_THAT(complementFlags(), ElementsAre(0, 0, 1));
}

TEST_F(CombinedFilterOrTest, TheTimeColumnMayHoldAnyNumbers)
{
  table->AddColumn(makeColumn<vtkFloatArray>("float", std::vector<double>{5, 6, 5, 6, 5, 6, 5, 6}));
  filter->SetTimeColumnIndex(2);
  select({0});
  run();
  EXPECT_THAT(output(1, "row"), ElementsAre(2, 4, 6));
}

TEST_F(CombinedFilterOrTest, WithoutATimeColumnThereIsNoComplement)
{
  for (long long column : {-1LL, 7LL}) {
    filter->SetTimeColumnIndex(column);
    select({0, 3});
    run();
    EXPECT_THAT(output(0, "row"), ElementsAre(0, 3)) << column;
    EXPECT_EQ(output(1)->GetNumberOfRows(), 0) << column;
    EXPECT_THAT(complementFlags(), Each(0.0)) << column;
  }
}

TEST_F(CombinedFilterOrTest, ATimeColumnThatWasNeverSetDoesNoHarm)
{
  vtkNew<vtkCombinedFilterOrSelectedRows> fresh;
  fresh->SetInputData(0, table);
  fresh->SetInputData(1, selectionOf(Rows{0}));
  fresh->Update();
  EXPECT_THAT(numbers(vtkTable::SafeDownCast(fresh->GetOutputDataObject(0)), "row"), ElementsAre(0));
}

TEST_F(CombinedFilterOrTest, SettersMarkTheFilterOnlyOnAChange)
{
  const auto before = filter->GetMTime();
  filter->SetTimeColumnIndex(filter->GetTimeColumnIndex());
  filter->SetAddOriginalRowIdsArray(false);
  EXPECT_EQ(filter->GetMTime(), before);
  filter->SetTimeColumnIndex(4);
  EXPECT_GT(filter->GetMTime(), before);
}

TEST_F(CombinedFilterOrTest, PortsAreATableAndTwoOptionalSelections)
{
  EXPECT_EQ(filter->GetNumberOfInputPorts(), 3);
  EXPECT_EQ(filter->GetNumberOfOutputPorts(), 2);
  vtkNew<vtkInformation> table, selection, annotations, other;
  EXPECT_EQ(filter->FillInputPortInformation(0, table), 1);
  EXPECT_EQ(filter->FillInputPortInformation(1, selection), 1);
  EXPECT_EQ(filter->FillInputPortInformation(2, annotations), 1);
  EXPECT_EQ(filter->FillInputPortInformation(3, other), 0);
  EXPECT_STREQ(table->Get(vtkAlgorithm::INPUT_REQUIRED_DATA_TYPE()), "vtkTable");
  EXPECT_FALSE(table->Get(vtkAlgorithm::INPUT_IS_OPTIONAL()));
  EXPECT_STREQ(selection->Get(vtkAlgorithm::INPUT_REQUIRED_DATA_TYPE()), "vtkSelection");
  EXPECT_TRUE(selection->Get(vtkAlgorithm::INPUT_IS_OPTIONAL()));
  EXPECT_STREQ(annotations->Get(vtkAlgorithm::INPUT_REQUIRED_DATA_TYPE()), "vtkAnnotationLayers");
  EXPECT_TRUE(annotations->Get(vtkAlgorithm::INPUT_IS_OPTIONAL()));
}

TEST_F(CombinedFilterOrTest, PrintsItsSwitch)
{
  filter->AddOriginalRowIdsArrayOn();
  std::ostringstream out;
  filter->PrintSelf(out, vtkIndent(2));
  EXPECT_THAT(out.str(), HasSubstr("\n  AddOriginalRowIdsArray: 1\n"));
  EXPECT_STREQ(filter->GetClassName(), "vtkCombinedFilterOrSelectedRows");
}

} // namespace
} // namespace runsieve::test
