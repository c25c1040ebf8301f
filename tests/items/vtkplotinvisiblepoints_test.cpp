#include "support/RecordingDevice.h"
#include "support/TableBuilder.h"

#include <runsieve/items/vtkPlotInvisiblePoints.h>

#include <gmock/gmock.h>
#include <vtkPen.h>
#include <vtkTable.h>
#include <vtkVector.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

struct InvisiblePointsTest : testing::Test
{
  vtkNew<vtkPlotInvisiblePoints> plot;
  RecordingPainter recorder;

  InvisiblePointsTest() { plot->SetInputData(table, "x", "y"); }

  bool draw()
  {
    plot->Update();
    return plot->Paint(recorder.painter);
  }

  vtkSmartPointer<vtkTable> table = makeTable({{"x", {10, 20, 30, 5}}, {"y", {1, 2, 3, 4}}});
};

TEST_F(InvisiblePointsTest, ShowsSelectedPointsOnlyUnlessToldOtherwise)
{
  EXPECT_EQ(plot->GetOnlyShowSelected(), 1);
  auto const before = plot->GetMTime();
  plot->SetOnlyShowSelected(1);
  EXPECT_EQ(plot->GetMTime(), before);
  plot->OnlyShowSelectedOff();
  EXPECT_EQ(plot->GetOnlyShowSelected(), 0);
  EXPECT_GT(plot->GetMTime(), before);
  plot->OnlyShowSelectedOn();
  EXPECT_EQ(plot->GetOnlyShowSelected(), 1);
}

TEST_F(InvisiblePointsTest, WithNothingSelectedNothingIsSeenYetPointsCanBeFound)
{
  plot->SetSelection(makeIds({}));
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
  EXPECT_TRUE(plot->SelectPoints(vtkVector2f(4, 0), vtkVector2f(20.5f, 5)));
  vtkIdTypeArray* found = plot->GetSelection();
  ASSERT_EQ(found->GetNumberOfTuples(), 3);
  EXPECT_EQ(found->GetValue(0), 0);
  EXPECT_EQ(found->GetValue(1), 1);
  EXPECT_EQ(found->GetValue(2), 3);
}

TEST_F(InvisiblePointsTest, NeverGivenASelectionItPaintsNothing)
{
  EXPECT_TRUE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(InvisiblePointsTest, PaintsTheSelectedPointsHighlighted)
{
  plot->SetSelection(makeIds({2, 0}));
  plot->SetMarkerStyle(VTK_MARKER_SQUARE);
  plot->GetSelectionPen()->SetColor(1, 2, 3);
  EXPECT_TRUE(draw());
  ASSERT_THAT(recorder.strokes(), SizeIs(1));
  Stroke const markers = recorder.strokes()[0];
  EXPECT_EQ(markers.kind, Stroke::Markers);
  EXPECT_EQ(markers.marker, VTK_MARKER_SQUARE);
  EXPECT_TRUE(markers.highlighted);
  EXPECT_EQ(markers.pen, selectionColor);
  EXPECT_THAT(markers.points, ElementsAre(Point(30, 3), Point(10, 1)));
}

TEST_F(InvisiblePointsTest, TheHighlightIsWiderThanTheMarker)
{
  struct Case
  {
    float markerSize;
    float penWidth;
    double width;
  };
  plot->SetSelection(makeIds({0}));
  for (Case c : {Case{-1, 1, 10.7}, Case{-1, 5, 14.2}, Case{3, 1, 5.7}, Case{0, 5, 2.7}}) {
    plot->SetMarkerSize(c.markerSize);
    plot->SetWidth(c.penWidth);
    draw();
    EXPECT_FLOAT_EQ(recorder.strokes().back().width, static_cast<float>(c.width)) << c.markerSize;
  }
}

TEST_F(InvisiblePointsTest, APointSelectedTwiceIsPaintedTwice)
{
  plot->SetSelection(makeIds({1, 1}));
  draw();
  ASSERT_THAT(recorder.strokes(), SizeIs(1));
  EXPECT_THAT(recorder.strokes()[0].points, ElementsAre(Point(20, 2), Point(20, 2)));
}

TEST_F(InvisiblePointsTest, IdsOutsideTheTableAreSkipped)
{
  plot->SetSelection(makeIds({-1, 3, 4, 1000000}));
  EXPECT_TRUE(draw());
  ASSERT_THAT(recorder.markers(), SizeIs(1));
  EXPECT_THAT(recorder.markers()[0].points, ElementsAre(Point(5, 4)));
}

TEST_F(InvisiblePointsTest, FollowsAChangeOfTheSelection)
{
  plot->SetSelection(makeIds({0}));
  draw();
  plot->SetSelection(makeIds({1, 2}));
  draw();
  EXPECT_THAT(recorder.strokes().back().points, ElementsAre(Point(20, 2), Point(30, 3)));
}

TEST_F(InvisiblePointsTest, PaintsAsPlainPointsWhenAllAreToBeSeen)
{
  vtkNew<vtkPlotPoints> plain;
  plain->SetInputData(table, "x", "y");
  RecordingPainter expected;
  plot->SetOnlyShowSelected(0);
  vtkPlotPoints* const plots[] = {plot.Get(), plain.Get()};
  for (vtkPlotPoints* p : plots) {
    p->SetSelection(makeIds({1}));
    p->SetColor(static_cast<unsigned char>(10), 20, 30, 40);
    p->SetMarkerSize(6);
    p->SelectColorArray("y");
    p->SetScalarVisibility(1);
    p->Update();
  }
  EXPECT_EQ(plot->Paint(recorder.painter), plain->Paint(expected.painter));
  ASSERT_EQ(recorder.strokes().size(), expected.strokes().size());
  ASSERT_THAT(expected.strokes(), SizeIs(2)) << "all points, then the selected one";
  for (std::size_t i = 0; i < expected.strokes().size(); ++i) {
    EXPECT_EQ(recorder.strokes()[i].points, expected.strokes()[i].points);
    EXPECT_EQ(recorder.strokes()[i].pen, expected.strokes()[i].pen);
    EXPECT_EQ(recorder.strokes()[i].width, expected.strokes()[i].width);
    EXPECT_EQ(recorder.strokes()[i].marker, expected.strokes()[i].marker);
    EXPECT_EQ(recorder.strokes()[i].highlighted, expected.strokes()[i].highlighted);
    EXPECT_EQ(recorder.strokes()[i].ownColors, expected.strokes()[i].ownColors);
  }
}

TEST_F(InvisiblePointsTest, IsNotPaintedWhileInvisibleOrWithoutPoints)
{
  plot->SetSelection(makeIds({0}));
  EXPECT_FALSE(plot->Paint(recorder.painter)) << "never updated";
  plot->SetVisible(false);
  EXPECT_FALSE(draw());
  plot->SetVisible(true);
  auto empty = makeTable({{"x", {}}, {"y", {}}});
  plot->SetInputData(empty, "x", "y");
  EXPECT_FALSE(draw());
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(InvisiblePointsTest, BadPointsAreNotFoundByARectangle)
{
  auto bad = makeTable({{"x", {1, std::numeric_limits<double>::quiet_NaN(), 3}}, {"y", {1, 1, 1}}});
  plot->SetInputData(bad, "x", "y");
  plot->Update();
  EXPECT_TRUE(plot->SelectPoints(vtkVector2f(-1e9f, -1e9f), vtkVector2f(1e9f, 1e9f)));
  ASSERT_EQ(plot->GetSelection()->GetNumberOfTuples(), 2);
  EXPECT_EQ(plot->GetSelection()->GetValue(1), 2);
}

} // namespace
} // namespace runsieve::test
