#include "support/DrawnLineSet.h"

#include <gmock/gmock.h>
#include <vtkAxis.h>
#include <vtkPen.h>
#include <vtkRect.h>
#include <vtkVector.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

using LineSetTest = DrawnLineSet;

TEST_F(LineSetTest, StartsWithOnePointPerLineAndShowsSelectedLinesOnly)
{
  vtkNew<vtkPlotLineSet> fresh;
  EXPECT_EQ(fresh->GetStride(), 1);
  EXPECT_EQ(fresh->GetUseExternalSelection(), 1);
  EXPECT_EQ(fresh->GetOnlyShowSelected(), 1);
}

TEST_F(LineSetTest, SettersCountAsAChangeOnlyForANewValue)
{
  vtkNew<vtkPlotLineSet> fresh;
  auto const before = fresh->GetMTime();
  fresh->SetStride(1);
  fresh->SetUseExternalSelection(1);
  fresh->SetOnlyShowSelected(1);
  EXPECT_EQ(fresh->GetMTime(), before);
  for (auto change : {+[](vtkPlotLineSet* p) { p->SetStride(4); },
                      +[](vtkPlotLineSet* p) { p->SetUseExternalSelection(0); },
                      +[](vtkPlotLineSet* p) { p->SetOnlyShowSelected(0); }}) {
    auto const time = fresh->GetMTime();
    change(fresh);
    EXPECT_GT(fresh->GetMTime(), time);
  }
  EXPECT_EQ(fresh->GetStride(), 4);
}

TEST_F(LineSetTest, SwitchesTurnOnAndOff)
{
  plot->OnlyShowSelectedOn();
  EXPECT_EQ(plot->GetOnlyShowSelected(), 1);
  plot->OnlyShowSelectedOff();
  EXPECT_EQ(plot->GetOnlyShowSelected(), 0);
  plot->UseExternalSelectionOff();
  EXPECT_EQ(plot->GetUseExternalSelection(), 0);
  plot->UseExternalSelectionOn();
  EXPECT_EQ(plot->GetUseExternalSelection(), 1);
}

TEST_F(LineSetTest, CutsTheRowsIntoLinesAndLeavesAnIncompleteRunOut)
{
  setHeights({0, 1, 2, 3, 10, 11, 12, 13, 20, 21}, 4);
  EXPECT_TRUE(draw());
  ASSERT_THAT(recorder.polyLines(), SizeIs(2));
  EXPECT_THAT(recorder.polyLines()[0].points,
              ElementsAre(Point(0, 0), Point(1, 1), Point(2, 2), Point(3, 3)));
  EXPECT_THAT(recorder.polyLines()[1].points,
              ElementsAre(Point(4, 10), Point(5, 11), Point(6, 12), Point(7, 13)));
}

TEST_F(LineSetTest, HandsItsCacheToThePainterWithoutACopy)
{
  setRows(9, 3);
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(3));
  float const* first = recorder.polyLines()[0].source;
  EXPECT_EQ(recorder.polyLines()[1].source, first + 6);
  EXPECT_EQ(recorder.polyLines()[2].source, first + 12);
}

TEST_F(LineSetTest, DrawsNothingForAStrideBelowOne)
{
  for (int stride : {0, -1, -100}) {
    setRows(8, stride);
    plot->SetSelection(makeIds({1}));
    EXPECT_FALSE(draw()) << stride;
    EXPECT_THAT(recorder.strokes(), IsEmpty()) << stride;
  }
}

// A line of one point has no extent: it is skipped silently instead of being refused by the painter.
TEST_F(LineSetTest, LinesOfOnePointStayInvisibleSelectedOrNot)
{
  setRows(5, 1);
  plot->SetSelection(makeIds({1, 3}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
  EXPECT_EQ(recorder.errors(), 0);
}

TEST_F(LineSetTest, DrawsNothingWhenARunIsLongerThanTheTable)
{
  setRows(5, 6);
  plot->SetSelection(makeIds({2}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(LineSetTest, DrawsWithItsOwnPenAndIgnoresColoursByColumn)
{
  setRows(6, 3);
  plot->SetColor(static_cast<unsigned char>(10), 20, 30, 40);
  plot->SetWidth(1.5f);
  plot->SelectColorArray("y");
  plot->SetScalarVisibility(1);
  draw();
  ASSERT_THAT(recorder.strokes(), SizeIs(2));
  for (Stroke const& line : recorder.strokes()) {
    EXPECT_EQ(line.kind, Stroke::PolyLine);
    EXPECT_EQ(line.pen, (Color{10, 20, 30, 40}));
    EXPECT_FLOAT_EQ(line.width, 1.5f);
    EXPECT_FALSE(line.ownColors);
  }
}

TEST_F(LineSetTest, ShowsNothingWhileOnlySelectedLinesCountAndNoneIs)
{
  setRows(6, 3);
  plot->SetOnlyShowSelected(1);
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(LineSetTest, ABadPointAddsTheRestOfTheRowsBehindItAsOneMoreLine)
{
  setHeights({0, nan, 0, 0, 0, 0, 0, 0, 0}, 3);
  EXPECT_TRUE(draw());
  ASSERT_THAT(recorder.polyLines(), SizeIs(4));
  EXPECT_THAT(firstRows(false), ElementsAre(2, 0, 3, 6));
  for (Stroke const& line : recorder.polyLines()) EXPECT_THAT(line.points, SizeIs(3));
}

TEST_F(LineSetTest, TheLineBehindTheLastBadPointEndsWithTheTable)
{
  setHeights({0, nan, 0, 0, 0, nan, 0, 0}, 4);
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(3));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(6, 0), Point(7, 0)));
}

TEST_F(LineSetTest, ABadPointAmongTheLastTwoHidesAllPlainLines)
{
  for (std::size_t bad : {8, 7}) {
    std::vector<double> y(9, 0.0);
    y[bad] = nan;
    setHeights(y, 3);
    EXPECT_TRUE(draw());
    EXPECT_THAT(recorder.strokes(), IsEmpty()) << bad;
  }
}

TEST_F(LineSetTest, BadPointsDrawNothingWhileOnlySelectedLinesCount)
{
  setHeights({nan, 0, 0, 0, 0, 0}, 3);
  plot->SetOnlyShowSelected(1);
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(LineSetTest, IsNotPaintedWhileInvisibleOrNeverUpdated)
{
  setRows(6, 3);
  EXPECT_FALSE(plot->Paint(recorder.painter));
  plot->SetVisible(false);
  EXPECT_FALSE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(LineSetTest, UpdateWithoutATableDoesNothing)
{
  plot->Update();
  EXPECT_FALSE(plot->Paint(recorder.painter));
}

TEST_F(LineSetTest, FollowsAChangeOfTheTableAndOfTheColumns)
{
  setRows(4, 2);
  draw();
  vtkArrayDownCast<vtkDoubleArray>(table->GetColumn(1))->SetValue(0, 5.0);
  table->GetColumn(1)->Modified();
  table->Modified();
  draw();
  EXPECT_EQ(recorder.polyLines()[2].points[0], Point(0, 5));
  plot->SetInputData(table, "y", "x");
  draw();
  EXPECT_EQ(recorder.polyLines()[4].points[0], Point(5, 0));
}

TEST_F(LineSetTest, FollowsASwitchOfItsAxisToLogarithms)
{
  vtkNew<vtkAxis> x;
  vtkNew<vtkAxis> y;
  y->SetUnscaledRange(1, 1000);
  plot->SetXAxis(x);
  plot->SetYAxis(y);
  setHeights({1, 10, 100, 1000}, 2);
  draw();
  y->SetLogScale(true);
  ASSERT_TRUE(y->GetLogScaleActive());
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(4));
  EXPECT_THAT(recorder.polyLines()[3].points, ElementsAre(Point(2, 2), Point(3, 3)));
}

TEST_F(LineSetTest, FindsPointsInARectangleInAscendingOrderWhateverTheOrderOfX)
{
  table = makeTable({{"x", {5, 1, 4, 2, 3, 9}}, {"y", {0, 0, 0, 7, nan, 0}}});
  plot->SetInputData(table, "x", "y");
  plot->Update();
  EXPECT_TRUE(plot->SelectPoints(vtkVector2f(0.5f, -1), vtkVector2f(5.5f, 1)));
  vtkIdTypeArray* found = plot->GetSelection();
  ASSERT_EQ(found->GetNumberOfTuples(), 3);
  EXPECT_EQ(found->GetValue(0), 0);
  EXPECT_EQ(found->GetValue(1), 1);
  EXPECT_EQ(found->GetValue(2), 2);
}

TEST_F(LineSetTest, FindsNothingInAnEmptyPlace)
{
  setRows(4, 2);
  plot->Update();
  EXPECT_FALSE(plot->SelectPoints(vtkVector2f(0, 5), vtkVector2f(3, 6)));
  EXPECT_EQ(plot->GetSelection()->GetNumberOfTuples(), 0);
}

TEST_F(LineSetTest, LegendIsALineAtHalfHeightWithAMarkerOnIt)
{
  plot->SetColor(static_cast<unsigned char>(1), 2, 3, 4);
  EXPECT_TRUE(plot->PaintLegend(recorder.painter, vtkRectf(10, 20, 30, 9), 7));
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(10, 24.5f), Point(40, 24.5f)));
  EXPECT_EQ(recorder.polyLines()[0].pen, (Color{1, 2, 3, 4}));
  EXPECT_THAT(recorder.markers(), SizeIs(1));
}

} // namespace
} // namespace runsieve::test
