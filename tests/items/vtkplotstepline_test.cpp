#include "support/RecordingDevice.h"
#include "support/TableBuilder.h"

#include <runsieve/items/vtkPlotStepLine.h>

#include <gmock/gmock.h>
#include <vtkAxis.h>
#include <vtkCharArray.h>
#include <vtkCommand.h>
#include <vtkObjectFactory.h>
#include <vtkPen.h>
#include <vtkPoints2D.h>
#include <vtkRect.h>
#include <vtkTable.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

/// Opens what only a chart may see.
class StepLine : public vtkPlotStepLine
{
public:
  static StepLine* New() { VTK_STANDARD_NEW_BODY(StepLine); }

  [[nodiscard]] vtkPoints2D* corners() const { return this->StepPoints; }
  [[nodiscard]] vtkCharArray* mask() const { return this->ValidPointMask; }
};

struct StepLineTest : testing::Test
{
  vtkNew<StepLine> plot;
  RecordingPainter recorder;

  void draw(vtkTable* table)
  {
    plot->SetInputData(table, "x", "y");
    plot->Update();
    painted = plot->Paint(recorder.painter);
  }

  void draw(std::vector<double> const& x, std::vector<double> const& y)
  {
    draw(makeTable({{"x", x}, {"y", y}}));
  }

  void ignore() {}

  bool painted = false;
};

TEST_F(StepLineTest, FollowsASortedSampleFromZeroToOne)
{
  draw({1, 2, 3}, {0.25, 0.5, 1});
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points,
              ElementsAre(Point(1, 0), Point(1, 0.25f), Point(2, 0.25f), Point(2, 0.5f), Point(3, 0.5f),
                          Point(3, 1), Point(3, 1), Point(3, 1)));
  EXPECT_TRUE(painted);
}

TEST_F(StepLineTest, OnePointIsARiseFromZeroThroughItsHeightToOne)
{
  draw({4}, {0.5});
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points,
              ElementsAre(Point(4, 0), Point(4, 0.5f), Point(4, 0.5f), Point(4, 1)));
}

TEST_F(StepLineTest, WithoutPointsThereAreNoCornersAndNothingIsDrawn)
{
  draw({}, {});
  EXPECT_TRUE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
  EXPECT_EQ(recorder.errors(), 0);
  EXPECT_EQ(plot->corners()->GetNumberOfPoints(), 0);
}

TEST_F(StepLineTest, KeepsTheGivenOrderOfPoints)
{
  draw({3, 1, 2}, {0.5, 1, 0.25});
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points,
              ElementsAre(Point(3, 0), Point(3, 0.5f), Point(1, 0.5f), Point(1, 1), Point(2, 1),
                          Point(2, 0.25f), Point(2, 0.25f), Point(2, 1)));
}

TEST_F(StepLineTest, ABadPointLeavesTheWholeItemEmpty)
{
  draw({1, 2, 3}, {0.25, nan, 1});
  EXPECT_TRUE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(StepLineTest, APointMaskedOutLeavesTheWholeItemEmpty)
{
  auto table = makeTable({{"x", {1, 2}}, {"y", {0.5, 1}}});
  table->AddColumn(makeColumn<vtkCharArray, char>("valid", {1, 0}));
  plot->SetValidPointMaskName("valid");
  draw(table);
  EXPECT_TRUE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(StepLineTest, DrawsAgainAfterTheBadPointWasMended)
{
  draw({1, 2}, {nan, 1});
  draw({1, 2}, {0.5, 1});
  EXPECT_THAT(recorder.polyLines(), SizeIs(1));
}

TEST_F(StepLineTest, DrawsWithItsOwnPen)
{
  plot->SetColor(static_cast<unsigned char>(10), 20, 30, 40);
  plot->SetWidth(3.5f);
  draw({1, 2}, {0.5, 1});
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_EQ(recorder.polyLines()[0].pen, (Color{10, 20, 30, 40}));
  EXPECT_FLOAT_EQ(recorder.polyLines()[0].width, 3.5f);
}

TEST_F(StepLineTest, HasNoMarkersAndDoesNotDecorateSelectedPoints)
{
  EXPECT_EQ(plot->GetMarkerStyle(), VTK_MARKER_NONE);
  plot->SetSelection(makeIds({0, 1}));
  draw({1, 2}, {0.5, 1});
  EXPECT_THAT(recorder.strokes(), SizeIs(1));
}

TEST_F(StepLineTest, FollowsAChangeOfTheTable)
{
  auto table = makeTable({{"x", {1}}, {"y", {1}}});
  draw(table);
  vtkArrayDownCast<vtkDoubleArray>(table->GetColumn(0))->SetValue(0, 7.0);
  table->Modified();
  draw(table);
  ASSERT_THAT(recorder.polyLines(), SizeIs(2));
  EXPECT_EQ(recorder.polyLines()[1].points[0], Point(7, 0));
}

TEST_F(StepLineTest, FollowsASwitchOfItsAxisToLogarithms)
{
  vtkNew<vtkAxis> x;
  vtkNew<vtkAxis> y;
  x->SetUnscaledRange(1, 100);
  plot->SetXAxis(x);
  plot->SetYAxis(y);
  draw({1, 100}, {0.5, 1});
  x->SetLogScale(true);
  ASSERT_TRUE(x->GetLogScaleActive());
  plot->Update();
  plot->Paint(recorder.painter);
  ASSERT_THAT(recorder.polyLines(), SizeIs(2));
  EXPECT_EQ(recorder.polyLines()[1].points.front(), Point(0, 0));
  EXPECT_EQ(recorder.polyLines()[1].points.back(), Point(2, 1));
}

// A chart moves and stretches the points of columns that floats cannot hold; the ends must move along.
TEST_F(StepLineTest, EndsFollowTheShiftAndScaleOfTheChart)
{
  plot->SetShiftScale(vtkRectd(0, 2, 1, 3));
  draw({5}, {0.5});
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points,
              ElementsAre(Point(5, 6), Point(5, 7.5f), Point(5, 7.5f), Point(5, 9)));
}

TEST_F(StepLineTest, ChangesNothingWhileInvisible)
{
  auto table = makeTable({{"x", {1, 2}}, {"y", {0.5, 1}}});
  table->AddColumn(makeColumn<vtkCharArray, char>("valid", {1, 1}));
  plot->SetValidPointMaskName("valid");
  draw(table);
  ASSERT_NE(plot->mask(), nullptr);
  plot->SetVisible(false);
  plot->SetValidPointMaskName("");
  table->RemoveRow(1);
  draw(table);
  EXPECT_NE(plot->mask(), nullptr);
  EXPECT_EQ(plot->corners()->GetNumberOfPoints(), 6);
  EXPECT_FALSE(painted);
  EXPECT_THAT(recorder.polyLines(), SizeIs(1));
}

TEST_F(StepLineTest, DropsAMaskThatIsMissingOrOfAnotherType)
{
  auto table = makeTable({{"x", {1, 2}}, {"y", {0.5, 1}}, {"numbers", {0, 0}}});
  table->AddColumn(makeColumn<vtkCharArray, char>("valid", {1, 1}));
  for (char const* name : {"numbers", "absent", ""}) {
    plot->SetValidPointMaskName("valid");
    draw(table);
    ASSERT_NE(plot->mask(), nullptr);
    plot->SetValidPointMaskName(name);
    draw(table);
    EXPECT_EQ(plot->mask(), nullptr) << name;
  }
}

TEST_F(StepLineTest, IsNotPaintedBeforeItsFirstUpdate)
{
  plot->SetInputData(makeTable({{"x", {1}}, {"y", {1}}}), "x", "y");
  EXPECT_FALSE(plot->Paint(recorder.painter));
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(StepLineTest, RebuildsItsCornersOnDemandEvenBeforeAnyUpdate)
{
  auto table = makeTable({{"x", {1, 2}}, {"y", {0.5, 1}}});
  plot->SetInputData(table, "x", "y");
  EXPECT_TRUE(plot->UpdateStepPointsCache(table));
  EXPECT_EQ(plot->corners()->GetNumberOfPoints(), 6);
}

TEST_F(StepLineTest, SurvivesATableWithoutTheColumns)
{
  plot->AddObserver(vtkCommand::ErrorEvent, this, &StepLineTest::ignore);
  vtkNew<vtkTable> empty;
  plot->SetInputData(empty, "x", "y");
  plot->Update();
  EXPECT_TRUE(plot->UpdateStepPointsCache(empty));
  plot->Paint(recorder.painter);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
  plot->RemoveAllObservers();
}

TEST_F(StepLineTest, LegendIsALineAtHalfHeight)
{
  plot->SetColor(static_cast<unsigned char>(1), 2, 3, 4);
  EXPECT_TRUE(plot->PaintLegend(recorder.painter, vtkRectf(10, 20, 30, 8), 5));
  ASSERT_THAT(recorder.strokes(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(10, 24), Point(40, 24)));
  EXPECT_EQ(recorder.polyLines()[0].pen, (Color{1, 2, 3, 4}));
}

TEST_F(StepLineTest, KnowsItsClass)
{
  vtkNew<vtkPlotStepLine> plain;
  EXPECT_STREQ(plain->GetClassName(), "vtkPlotStepLine");
  EXPECT_TRUE(plain->IsA("vtkPlotPoints"));
}

} // namespace
} // namespace runsieve::test
