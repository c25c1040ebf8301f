#include "support/DrawnLineSet.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// Which lines are highlighted, and how.
using LineSetSelectionTest = DrawnLineSet;

TEST_F(LineSetSelectionTest, WithoutFlagsASelectedPointLightsItsWholeLine)
{
  setRows(9, 3);
  plot->SetSelection(makeIds({4}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(firstRows(false), ElementsAre(0, 3, 6));
  EXPECT_THAT(firstRows(true), ElementsAre(3));
  EXPECT_THAT(recorder.polyLines().back().points, ElementsAre(Point(3, 0), Point(4, 0), Point(5, 0)));
}

TEST_F(LineSetSelectionTest, TheHighlightIsRedTranslucentAndWider)
{
  setRows(6, 3);
  plot->SetWidth(3.0f);
  plot->GetSelectionPen()->SetColor(1, 2, 3);
  plot->SetSelection(makeIds({0}));
  draw();
  ASSERT_THAT(firstRows(true), SizeIs(1));
  EXPECT_EQ(recorder.polyLines().back().pen, selectionColor);
  EXPECT_FLOAT_EQ(recorder.polyLines().back().width, static_cast<float>(3.0f + 2.7));
  EXPECT_FLOAT_EQ(plot->GetWidth(), 3.0f) << "the pen of the plot itself must stay";
}

TEST_F(LineSetSelectionTest, EachSelectedPointPaintsItsLineOnceMore)
{
  setRows(9, 3);
  plot->SetSelection(makeIds({0, 1, 8, 2}));
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(0, 0, 6, 0));
}

TEST_F(LineSetSelectionTest, OnlyTheSelectedLinesShowWhenToldSo)
{
  setRows(9, 3);
  plot->SetOnlyShowSelected(1);
  plot->SetSelection(makeIds({7}));
  draw();
  EXPECT_THAT(firstRows(false), IsEmpty());
  EXPECT_THAT(firstRows(true), ElementsAre(6));
}

TEST_F(LineSetSelectionTest, FlagsOfTheTableTakePrecedenceOverTheSelectionOfTheChart)
{
  setRows(9, 3);
  setFlags({0, 0, 0, 0, 1, 0, 0, 0, 0});
  plot->SetSelection(makeIds({0, 8}));
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(3));
}

TEST_F(LineSetSelectionTest, EachFlaggedRowPaintsItsLineOnceMoreInTheOrderOfRows)
{
  setRows(9, 3);
  setFlags({0, 0, 7, 0, 0, 0, 1, 1, -1});
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(0, 6, 6, 6));
}

TEST_F(LineSetSelectionTest, FlagsThatAreAllZeroSilenceTheSelectionOfTheChart)
{
  setRows(6, 3);
  setFlags({0, 0, 0, 0, 0, 0});
  plot->SetSelection(makeIds({1, 4}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(firstRows(false), ElementsAre(0, 3));
  EXPECT_THAT(firstRows(true), IsEmpty());
}

TEST_F(LineSetSelectionTest, FlagsOfAnyNumericTypeAreReadByValue)
{
  setRows(6, 3);
  setFlags<vtkDoubleArray, double>({0, 0, 0, 0, 1, 0});
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(3));
  setRows(6, 3);
  setFlags<vtkIntArray, int>({0, 1, 0, 0, 0, 0});
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(3, 0));
  setRows(6, 3);
  setFlags<vtkFloatArray, float>({0, 0, 0, 0, 0, 1});
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(3, 0, 3));
}

TEST_F(LineSetSelectionTest, FlagsRewrittenInTheTableShowAfterTheNextUpdate)
{
  setRows(6, 3);
  setFlags({1, 0, 0, 0, 0, 0});
  draw();
  setFlags({0, 0, 0, 1, 0, 0});
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(0, 3));
}

TEST_F(LineSetSelectionTest, ANewerSelectionOfTheChartMakesTheFlagsReadAgainInPaint)
{
  setRows(6, 3);
  setFlags({1, 0, 0, 0, 0, 0});
  draw();
  vtkIdTypeArray::SafeDownCast(table->GetColumnByName("vtkRemainderSelection"))->SetValue(5, 1);
  plot->SetSelection(makeIds({2}));
  plot->GetSelection()->Modified();
  plot->Paint(recorder.painter);
  EXPECT_THAT(firstRows(true), ElementsAre(0, 0, 3));
}

// Flags that once were there stay in the item: their count drops to zero, yet they still hide the chart's
// selection.
TEST_F(LineSetSelectionTest, ATableWithoutFlagsAfterOneWithThemHighlightsNothing)
{
  setRows(6, 3);
  setFlags({1, 0, 0, 0, 0, 0});
  draw();
  setRows(6, 3);
  plot->SetSelection(makeIds({4}));
  draw();
  EXPECT_THAT(firstRows(true), ElementsAre(0));
}

TEST_F(LineSetSelectionTest, IdsOutsideTheTableAndRunsThatEndEarlyAreSkipped)
{
  setRows(8, 3);
  plot->SetSelection(makeIds({-1, 3, 7, 8, 1000000, -1000000}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(firstRows(true), ElementsAre(3));
}

TEST_F(LineSetSelectionTest, AFlagInARunThatEndsEarlyIsSkipped)
{
  setRows(8, 3);
  setFlags({0, 1, 0, 0, 0, 0, 0, 1});
  EXPECT_TRUE(draw());
  EXPECT_THAT(firstRows(true), ElementsAre(0));
}

TEST_F(LineSetSelectionTest, ASelectionThatGrewInPlaceWithoutANewerTimeIsDrawnWhole)
{
  setRows(9, 3);
  auto ids = makeIds({0});
  plot->SetSelection(ids);
  draw();
  ids->InsertNextValue(4);
  ids->InsertNextValue(8);
  plot->Paint(recorder.painter);
  EXPECT_THAT(firstRows(true), ElementsAre(0, 0, 3, 6));
}

TEST_F(LineSetSelectionTest, ASelectionThatShrankInPlaceIsDrawnAsItIs)
{
  setRows(9, 3);
  auto ids = makeIds({0, 4, 8});
  plot->SetSelection(ids);
  draw();
  ids->SetNumberOfTuples(1);
  ids->SetValue(0, 8);
  ids->Modified();
  plot->Paint(recorder.painter);
  EXPECT_THAT(firstRows(true), ElementsAre(0, 3, 6, 6));
}

TEST_F(LineSetSelectionTest, AnEmptySelectionHighlightsNothing)
{
  setRows(6, 3);
  plot->SetSelection(makeIds({}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(firstRows(true), IsEmpty());
}

TEST_F(LineSetSelectionTest, BadPointsDoNotHideTheHighlight)
{
  setHeights({0, 0, 0, 0, 0, std::numeric_limits<double>::infinity()}, 3);
  plot->SetSelection(makeIds({0}));
  draw();
  EXPECT_THAT(firstRows(false), IsEmpty());
  EXPECT_THAT(firstRows(true), ElementsAre(0));
}

/// Opens the copies that the item keeps.
class LineSet : public vtkPlotLineSet
{
public:
  static LineSet* New() { VTK_STANDARD_NEW_BODY(LineSet); }

  [[nodiscard]] vtkIdType flags() const { return this->RemainderRows->GetNumberOfTuples(); }
  [[nodiscard]] long long count() const { return this->RemainderCount; }
};

TEST(LineSetFlagsTest, CountsFlagsAndKeepsTheOldCopyWithoutTheColumn)
{
  vtkNew<LineSet> plot;
  auto flagged = makeTable({{"x", {0, 1, 2}}});
  flagged->AddColumn(makeColumn<vtkIdTypeArray, vtkIdType>("vtkRemainderSelection", {1, 0, 5}));
  EXPECT_TRUE(plot->UpdateSelectionCache(flagged));
  EXPECT_EQ(plot->flags(), 3);
  EXPECT_EQ(plot->count(), 2);
  EXPECT_TRUE(plot->UpdateSelectionCache(makeTable({{"x", {0}}})));
  EXPECT_EQ(plot->flags(), 3);
  EXPECT_EQ(plot->count(), 0);
}

} // namespace
} // namespace runsieve::test
