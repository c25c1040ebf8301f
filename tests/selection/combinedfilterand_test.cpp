#include "support/RowFilterRun.h"

#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <cmath>
#include <sstream>
#include <tuple>

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Runs that have a selected row at every selected time.
struct CombinedFilterAndTest : testing::Test, RowFilterRun<vtkCombinedFilterAndSelectedRows>
{
  CombinedFilterAndTest()
  {
    setTimes({0, 1, 2, 0, 1, 2, 0, 1, 2}, 3);
    filter->SetParaCount(2);
  }

  /// Column 0 is the row number, column 1 the time.
  void setTimes(std::vector<double> const& times, long long stride)
  {
    std::vector<double> rows;
    for (std::size_t row = 0; row < times.size(); ++row) rows.push_back(static_cast<double>(row));
    setTable(makeTable({{"row", rows}, {"time", times}}));
    filter->SetTimeColumnIndex(1);
    filter->SetStride(stride);
  }

  std::vector<double> complement() { return flags("vtkComplementSelection"); }
  std::vector<double> reduced() { return flags("vtkReducedSelection"); }
  std::vector<double> remainder() { return flags("vtkRemainderSelection"); }

  void expectUntouched() { EXPECT_THAT(columnNames(table), ElementsAre("row", "time")); }
};

TEST_F(CombinedFilterAndTest, OnlyRunsThroughAllSelectedPlacesSurvive)
{
  // run 0 passes both times, run 1 only time 1, run 2 only time 2
  select({1, 4, 2, 8});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
  EXPECT_THAT(output(1, "row"), ElementsAre(4, 5, 7, 8));
  EXPECT_THAT(remainder(), ElementsAre(0, 1, 1, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 0, 1, 0, 0, 0, 1));
  EXPECT_THAT(complement(), ElementsAre(0, 0, 0, 0, 0, 1, 0, 1, 0));
  EXPECT_EQ(errors.text(), "");
}

TEST_F(CombinedFilterAndTest, OneSelectedTimeKeepsTheWholeSelection)
{
  select({1, 7});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 7));
  EXPECT_THAT(output(1, "row"), ElementsAre(4));
  EXPECT_THAT(reduced(), Each(0.0));
  EXPECT_THAT(remainder(), ElementsAre(0, 1, 0, 0, 0, 0, 0, 1, 0));
}

TEST_F(CombinedFilterAndTest, WithoutACommonRunEverySelectedRowIsDropped)
{
  select({1, 8});
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows(), 0);
  EXPECT_THAT(output(1, "row"), ElementsAre(1, 2, 4, 5, 7, 8));
  EXPECT_THAT(reduced(), ElementsAre(0, 1, 0, 0, 0, 0, 0, 0, 1));
  EXPECT_THAT(remainder(), Each(0.0));
}

TEST_F(CombinedFilterAndTest, ThreeSelectedTimesIntersectAll)
{
  select({0, 3, 6, 1, 4, 5, 8, 2});
  run(); // time 0: runs 0, 1, 2; time 1: runs 0, 1; time 2: all
  EXPECT_THAT(output(0, "row"), ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_THAT(output(1, "row"), ElementsAre(6, 7, 8));
  EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 0, 0, 0, 1, 0, 1));
}

TEST_F(CombinedFilterAndTest, TimesBetweenTheSelectedOnesDoNotCount)
{
  select({0, 2});
  run();
  EXPECT_THAT(output(1, "row"), ElementsAre(3, 5, 6, 8));
}

TEST_F(CombinedFilterAndTest, OutputsAreInRowOrderWhateverTheOrderOfTheSelection)
{
  select({8, 2, 5, 2});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(2, 5, 8));
}

TEST_F(CombinedFilterAndTest, FlagColumnsAreIdsOfTheInputTable)
{
  select({1});
  run();
  EXPECT_THAT(columnNames(table), ElementsAre("row", "time", "vtkComplementSelection", "vtkReducedSelection",
                                              "vtkRemainderSelection"));
  for (int column : {2, 3, 4}) EXPECT_TRUE(vtkIdTypeArray::SafeDownCast(table->GetColumn(column))) << column;
}

TEST_F(CombinedFilterAndTest, OutputsHaveTheColumnsThatStoodWhenTheRunBegan)
{
  select({1, 4, 2, 8});
  run();
  EXPECT_THAT(columnNames(output(0)), ElementsAre("row", "time"));
  select({0});
  run();
  EXPECT_THAT(columnNames(output(0)), ElementsAre("row", "time", "vtkComplementSelection",
                                                  "vtkReducedSelection", "vtkRemainderSelection"));
  EXPECT_THAT(output(1, "row"), ElementsAre(3, 6));
  EXPECT_THAT(output(1, "vtkReducedSelection"), ElementsAre(0, 0)) << "flags of the former run ride along";
}

TEST_F(CombinedFilterAndTest, AllKindsOfColumnsAreCarriedAlong)
{
  vtkNew<vtkStringArray> text;
  text->SetName("text");
  for (char c = 'a'; c <= 'i'; ++c) text->InsertNextValue(std::string(1, c));
  table->AddColumn(text);
  select({4, 7});
  run();
  auto* selected = vtkStringArray::SafeDownCast(output(0)->GetColumnByName("text"));
  ASSERT_TRUE(selected && selected->GetNumberOfValues() == 2);
  EXPECT_EQ(selected->GetValue(0), "e");
  EXPECT_EQ(selected->GetValue(1), "h");
}

TEST_F(CombinedFilterAndTest, AClearedSelectionKeepsTheLastFlagsAndEmptiesTheOutputs)
{
  select({1, 4, 2, 8});
  run();
  for (auto const& nothing : {selectionOf(Rows{}), vtkSmartPointer<vtkSelection>::New()}) {
    selectBy(nothing);
    run();
    EXPECT_EQ(output(0)->GetNumberOfRows(), 0);
    EXPECT_EQ(output(1)->GetNumberOfRows(), 0);
    EXPECT_THAT(remainder(), ElementsAre(0, 1, 1, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 0, 1, 0, 0, 0, 1));
    EXPECT_THAT(complement(), ElementsAre(0, 0, 0, 0, 0, 1, 0, 1, 0));
  }
  EXPECT_EQ(errors.text(), "");
}

TEST_F(CombinedFilterAndTest, WithStrideOneEachRowIsARun)
{
  filter->SetStride(1);
  select({1, 2});
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows(), 0);
  EXPECT_THAT(reduced(), ElementsAre(0, 1, 1, 0, 0, 0, 0, 0, 0));
}

TEST_F(CombinedFilterAndTest, AStrideBelowOneCountsAsOne)
{
  for (long long stride : {0LL, -4LL}) {
    filter->SetStride(stride);
    select({1, 7});
    run();
    EXPECT_THAT(output(0, "row"), ElementsAre(1, 7)) << stride;
    select({1, 2});
    run();
    EXPECT_EQ(output(0)->GetNumberOfRows(), 0) << stride;
  }
}

TEST_F(CombinedFilterAndTest, AShortLastRunIsARunLikeAnyOther)
{
  setTimes({0, 1, 2, 0, 1, 2, 0, 1}, 3);
  select({0, 1, 6, 7});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(0, 1, 6, 7));
  EXPECT_THAT(output(1, "row"), ElementsAre(3, 4));
}

TEST_F(CombinedFilterAndTest, AnInverseNodeSelectsTheOtherRowsAndAPlainNodeAddsToThem)
{
  const Rows all{0, 1, 2, 3, 4, 5, 6, 7, 8};
  selectBy(selectionOf({rowNode({0, 1, 2, 3, 4, 5, 6, 7}, true), rowNode({2})}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(2, 8));
  selectBy(selectionOf({rowNode({}, true)}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAreArray(all)) << "all rows but none";
}

TEST_F(CombinedFilterAndTest, RunningTwiceGivesTheSameFlags)
{
  select({1, 4, 2, 8});
  run();
  const auto first = std::make_tuple(complement(), reduced(), remainder());
  run();
  EXPECT_EQ(std::make_tuple(complement(), reduced(), remainder()), first);
  EXPECT_EQ(table->GetNumberOfColumns(), 5);
}

TEST_F(CombinedFilterAndTest, ANewSelectionReplacesAllFlags)
{
  select({1, 4, 2, 8});
  run();
  select({3});
  run();
  EXPECT_THAT(remainder(), ElementsAre(0, 0, 0, 1, 0, 0, 0, 0, 0));
  EXPECT_THAT(reduced(), Each(0.0));
  EXPECT_THAT(complement(), ElementsAre(1, 0, 0, 0, 0, 0, 1, 0, 0));
}

TEST_F(CombinedFilterAndTest, TheFlagsOfAPlotThatHoldsTheOldOnesStayAsTheyWere)
{
  select({1, 4, 2, 8});
  run();
  vtkSmartPointer<vtkAbstractArray> held = table->GetColumnByName("vtkRemainderSelection");
  select({3});
  run();
  EXPECT_THAT(numbers(vtkDataArray::SafeDownCast(held)), ElementsAre(0, 1, 1, 0, 0, 0, 0, 0, 0));
}

TEST_F(CombinedFilterAndTest, TimesAreComparedExactly)
{
  setTimes({0, 0.3, 0, 0.1 + 0.2, 0, 0.3}, 2);
  select({1});
  run();
  EXPECT_THAT(output(1, "row"), ElementsAre(5));
}

TEST_F(CombinedFilterAndTest, ATimeThatIsNoNumberIsNoTime)
{
  const double none = std::nan("");
  setTimes({0, none, 0, none, 0, 1}, 2);
  select({0, 1, 2});
  run();
  // runs 0 and 1 pass time 0; their rows without a time are selected (row 1) or of no time (row 3)
  EXPECT_THAT(complement(), ElementsAre(0, 0, 0, 0, 1, 0));
  EXPECT_THAT(remainder(), ElementsAre(1, 0, 1, 0, 0, 0));
}

TEST_F(CombinedFilterAndTest, ASelectedRowWithoutATimeIsReducedEvenIfItsRunSurvives)
{
  const double none = std::nan("");
  setTimes({0, 1, 0, none, 0, 1}, 2);
  select({0, 2, 3});
  run();
  EXPECT_THAT(remainder(), ElementsAre(1, 0, 1, 0, 0, 0));
  EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 1, 0, 0));
  EXPECT_THAT(complement(), ElementsAre(0, 0, 0, 0, 1, 0));
  EXPECT_THAT(output(0, "row"), ElementsAre(0, 2));
  EXPECT_THAT(output(1, "row"), ElementsAre(3, 4));
}

TEST_F(CombinedFilterAndTest, SelectedRowsWithoutATimeOfADroppedRunAreReduced)
{
  const double none = std::nan("");
  setTimes({0, none, 0, 1, 0, none}, 2);
  select({0, 2, 5});
  run();
  EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 0, 0, 1));
  EXPECT_THAT(output(1, "row"), ElementsAre(4, 5));
}

TEST_F(CombinedFilterAndTest, OnlySelectedRowsWithoutATimeAreNoSelection)
{
  setTimes({std::nan(""), std::nan("")}, 1);
  select({0});
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows() + output(1)->GetNumberOfRows(), 0);
  expectUntouched();
}

TEST_F(CombinedFilterAndTest, ATimeColumnThatHoldsNoDoublesMeansEmptyOutputsAndNoError)
{
  table->AddColumn(makeColumn<vtkFloatArray>("float", std::vector<double>(9, 0.0)));
  for (long long column : {2LL, 50LL}) {
    filter->SetTimeColumnIndex(column);
    select({1, 2});
    run();
    EXPECT_EQ(output(0)->GetNumberOfRows() + output(1)->GetNumberOfRows(), 0) << column;
    EXPECT_THAT(columnNames(output(0)), ElementsAre("row", "time", "float"));
    EXPECT_EQ(table->GetNumberOfColumns(), 3);
  }
  EXPECT_EQ(errors.text(), "");
}

TEST_F(CombinedFilterAndTest, MissingSettingsAreReportedAndLeaveTheTableAlone)
{
  select({1});
  filter->SetTimeColumnIndex(-1);
  run();
  EXPECT_THAT(errors.text(), HasSubstr("TimeColumnIndex not set."));
  filter->SetTimeColumnIndex(1);
  filter->SetParaCount(-1);
  run();
  EXPECT_THAT(errors.text(), HasSubstr("ParaCount not set."));
  expectUntouched();
}

TEST_F(CombinedFilterAndTest, WithNeitherSelectionNorAnnotationsTheRunFails)
{
  run();
  EXPECT_THAT(errors.text(), HasSubstr("No vtkSelection or vtkAnnotationLayers provided as input."));
  expectUntouched();
}

TEST_F(CombinedFilterAndTest, WithoutAnEnabledSelectionTheTablePassesThrough)
{
  annotate({annotationWith({3}, 0, -1), annotationWith({4}, 1, 1)});
  run();
  EXPECT_EQ(output(0)->GetNumberOfRows(), 9);
  EXPECT_EQ(output(0)->GetColumn(0), table->GetColumn(0));
  EXPECT_EQ(output(1)->GetNumberOfRows(), 0);
  expectUntouched();
}

TEST_F(CombinedFilterAndTest, AnnotationsJoinTheSelectionUnlessDisabledOrHidden)
{
  select({1});
  annotate(
      {annotationOf({2}), annotationWith({5}, 0, -1), annotationWith({5}, 1, 1), annotationWith({8}, 1, 0)});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
  EXPECT_THAT(reduced(), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 1));
}

TEST_F(CombinedFilterAndTest, PointNodesOfAChartCountAsRowsAndStayPointNodes)
{
  auto node = pointNode({1, 2});
  selectBy(selectionOf({node}));
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1, 2));
  EXPECT_EQ(node->GetFieldType(), vtkSelectionNode::POINT);
}

TEST_F(CombinedFilterAndTest, RowsOutsideTheTableAreIgnored)
{
  select({-3, 1, 9, 4000000000});
  run();
  EXPECT_THAT(output(0, "row"), ElementsAre(1));
}

TEST_F(CombinedFilterAndTest, OriginalRowNumbersOnRequest)
{
  filter->AddOriginalRowIdsArrayOn();
  table->AddColumn(makeColumn("vtkOriginalRowIds", std::vector<double>(9, -1.0)));
  select({1, 4, 2, 8});
  run();
  EXPECT_THAT(output(0, "vtkOriginalRowIds"), ElementsAre(1, 2)) << "replaces a column of that name";
  EXPECT_THAT(output(1, "vtkOriginalRowIds"), ElementsAre(4, 5, 7, 8));
  EXPECT_TRUE(vtkIdTypeArray::SafeDownCast(output(1)->GetColumnByName("vtkOriginalRowIds")));
}

TEST_F(CombinedFilterAndTest, StartsWithoutTimeColumnAndCountAndWithOneRowPerRun)
{
  vtkNew<vtkCombinedFilterAndSelectedRows> fresh;
  EXPECT_EQ(fresh->GetTimeColumnIndex(), -1);
  EXPECT_EQ(fresh->GetParaCount(), -1);
  EXPECT_EQ(fresh->GetStride(), 1);
  EXPECT_FALSE(fresh->GetAddOriginalRowIdsArray());
  EXPECT_THAT(fresh->ParameterColumns, IsEmpty());
  EXPECT_EQ(fresh->GetNumberOfInputPorts(), 3);
  EXPECT_EQ(fresh->GetNumberOfOutputPorts(), 2);
}

TEST_F(CombinedFilterAndTest, SettersMarkTheFilterOnlyOnAChange)
{
  const auto before = filter->GetMTime();
  filter->SetStride(3);
  filter->SetParaCount(2);
  filter->SetTimeColumnIndex(1);
  filter->AddOriginalRowIdsArrayOff();
  EXPECT_EQ(filter->GetMTime(), before);
  filter->SetStride(4);
  EXPECT_GT(filter->GetMTime(), before);
}

TEST_F(CombinedFilterAndTest, PrintsOnlyItsSwitch)
{
  std::ostringstream out;
  filter->PrintSelf(out, vtkIndent(2));
  EXPECT_THAT(out.str(), HasSubstr("\n  AddOriginalRowIdsArray: 0\n"));
  EXPECT_THAT(out.str(), testing::Not(HasSubstr("Stride")));
}

} // namespace
} // namespace runsieve::test
