#include "support/OpenErrorPoints.h"
#include "support/RecordingDevice.h"
#include "support/Selections.h"

#include <gmock/gmock.h>
#include <vtkBrush.h>
#include <vtkCommand.h>
#include <vtkPen.h>
#include <vtkRect.h>
#include <vtkTable.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

/// Three points with errors, (1, 10) +- 1, (2, 20) +- 2 and (3, 30) +- 3, not yet updated.
struct ErrorPointsPaintTest : testing::Test
{
  vtkSmartPointer<vtkTable> table;
  vtkNew<OpenErrorPoints> plot;
  RecordingPainter recorder;
  bool painted = false;

  ErrorPointsPaintTest() { set({10, 20, 30}, {1, 2, 3}); }

  void set(std::vector<double> const& y, std::vector<float> const& errors)
  {
    std::vector<double> x;
    for (std::size_t i = 1; i <= y.size(); ++i) x.push_back(static_cast<double>(i));
    table = makeTable({{"x", x}, {"y", y}});
    table->AddColumn(makeFloats("error", errors));
    plot->SetInputData(table, "x", "y");
    plot->SelectErrorArray("error");
  }

  void paint() { painted = plot->Paint(recorder.painter); }
  void draw()
  {
    plot->Update();
    paint();
  }

  [[nodiscard]] vtkFloatArray* errors() { return vtkArrayDownCast<vtkFloatArray>(table->GetColumn(2)); }
};

TEST_F(ErrorPointsPaintTest, ABarSpansTheErrorBelowAndAboveEachPoint)
{
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(3));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(1, 9), Point(1, 11)));
  EXPECT_THAT(recorder.polyLines()[1].points, ElementsAre(Point(2, 18), Point(2, 22)));
  EXPECT_THAT(recorder.polyLines()[2].points, ElementsAre(Point(3, 27), Point(3, 33)));
  EXPECT_TRUE(painted);
}

TEST_F(ErrorPointsPaintTest, MarkersLieAboveTheBars)
{
  draw();
  ASSERT_THAT(recorder.strokes(), SizeIs(4)) << "bars without caps, then all markers at once";
  EXPECT_EQ(recorder.strokes()[2].kind, Stroke::PolyLine);
  EXPECT_EQ(recorder.strokes()[3].kind, Stroke::Markers);
  EXPECT_THAT(recorder.strokes()[3].points, ElementsAre(Point(1, 10), Point(2, 20), Point(3, 30)));
}

TEST_F(ErrorPointsPaintTest, BarsAreDrawnWithThePenAndTheBrushOfThePlot)
{
  plot->GetPen()->SetColor(10, 20, 30, 40);
  plot->GetPen()->SetWidth(3.5f);
  plot->GetBrush()->SetColor(50, 60, 70, 80);
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(3));
  for (Stroke const& bar : recorder.polyLines()) {
    EXPECT_EQ(bar.pen, (Color{10, 20, 30, 40}));
    EXPECT_FLOAT_EQ(bar.width, 3.5f);
    EXPECT_EQ(bar.brush, (Color{50, 60, 70, 80}));
  }
}

TEST_F(ErrorPointsPaintTest, AnErrorOfZeroIsABarWithoutLength)
{
  set({10, 20}, {0, 2});
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(2));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(1, 10), Point(1, 10)));
}

TEST_F(ErrorPointsPaintTest, ErrorsAreReadWhenTheBarsAreDrawn)
{
  plot->Update();
  errors()->SetValue(1, 7);
  paint();
  ASSERT_THAT(recorder.polyLines(), SizeIs(3));
  EXPECT_THAT(recorder.polyLines()[1].points, ElementsAre(Point(2, 13), Point(2, 27)));
}

TEST_F(ErrorPointsPaintTest, OneBadPointAnywhereLeavesOutAllBarsButNoMarker)
{
  for (double bad : {nan, infinity, -infinity})
    for (int row : {0, 1, 2}) {
      std::vector<double> y{10, 20, 30};
      y[row] = bad;
      set(y, {1, 2, 3});
      RecordingPainter own;
      plot->Update();
      EXPECT_TRUE(plot->Paint(own.painter));
      EXPECT_THAT(own.polyLines(), IsEmpty()) << bad << " in row " << row;
      std::size_t markers = 0;
      for (Stroke const& group : own.markers()) markers += group.points.size();
      EXPECT_EQ(markers, 2u) << bad << " in row " << row;
    }
}

TEST_F(ErrorPointsPaintTest, BarsComeBackWithTheLastBadPointMended)
{
  set({10, nan}, {1, 2});
  draw();
  set({10, 20}, {1, 2});
  draw();
  EXPECT_THAT(recorder.polyLines(), SizeIs(2));
}

TEST_F(ErrorPointsPaintTest, NothingIsPaintedWhileInvisible)
{
  plot->Update();
  plot->SetVisible(false);
  paint();
  EXPECT_FALSE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(ErrorPointsPaintTest, NothingIsPaintedBeforeTheFirstUpdate)
{
  paint();
  EXPECT_FALSE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(ErrorPointsPaintTest, NothingIsPaintedOfATableWithoutRows)
{
  set({}, {});
  draw();
  EXPECT_FALSE(painted);
  EXPECT_THAT(recorder.strokes(), IsEmpty());
}

TEST_F(ErrorPointsPaintTest, WithoutErrorsThereAreMarkersOnly)
{
  vtkNew<OpenErrorPoints> plain;
  plain->SetInputData(table, "x", "y");
  plain->Update();
  EXPECT_TRUE(plain->Paint(recorder.painter));
  EXPECT_THAT(recorder.polyLines(), IsEmpty());
  EXPECT_THAT(recorder.markers(), SizeIs(1));
}

TEST_F(ErrorPointsPaintTest, AColumnOfDoublesGivesNoBars)
{
  table->AddColumn(makeColumn("double", {1.0, 2.0, 3.0}));
  plot->Update();
  ASSERT_EQ(plot->errors(), errors());
  plot->SelectErrorArray("double");
  draw();
  EXPECT_EQ(plot->errors(), nullptr);
  EXPECT_THAT(recorder.polyLines(), IsEmpty());
  EXPECT_THAT(recorder.markers(), SizeIs(1));
}

TEST_F(ErrorPointsPaintTest, AColumnShorterThanThePointsGivesNoBars)
{
  plot->Update();
  errors()->SetNumberOfTuples(2);
  paint();
  EXPECT_THAT(recorder.polyLines(), IsEmpty());
  EXPECT_THAT(recorder.markers(), SizeIs(1));
}

TEST_F(ErrorPointsPaintTest, AColumnThatHasDiedGivesNoBars)
{
  plot->Update();
  table->RemoveColumn(2);
  paint();
  EXPECT_THAT(recorder.polyLines(), IsEmpty());
  EXPECT_THAT(recorder.markers(), SizeIs(1));
}

TEST_F(ErrorPointsPaintTest, SelectedPointsAreMarkedOnTop)
{
  plot->SetSelection(makeIds({1}));
  draw();
  ASSERT_THAT(recorder.markers(), SizeIs(2));
  EXPECT_TRUE(recorder.markers()[1].highlighted);
  EXPECT_THAT(recorder.markers()[1].points, ElementsAre(Point(2, 20)));
}

// A chart moves and stretches the points of columns that floats cannot hold; the bars must stretch along.
TEST_F(ErrorPointsPaintTest, BarsFollowTheShiftAndScaleOfTheChart)
{
  set({10}, {1});
  plot->SetShiftScale(vtkRectd(0, 2, 1, 3));
  draw();
  ASSERT_THAT(recorder.polyLines(), SizeIs(1));
  EXPECT_THAT(recorder.polyLines()[0].points, ElementsAre(Point(1, 33), Point(1, 39)));
}

TEST_F(ErrorPointsPaintTest, ErrorsDoNotWidenTheBoundsOfThePlot)
{
  draw();
  double bounds[4];
  static_cast<vtkPlot*>(plot)->GetBounds(bounds);
  EXPECT_THAT(bounds, ElementsAre(1, 3, 10, 30));
}

TEST_F(ErrorPointsPaintTest, TheLegendShowsAPlainPoint)
{
  draw();
  RecordingPainter legend;
  EXPECT_TRUE(plot->PaintLegend(legend.painter, vtkRectf(10, 20, 30, 8), 0));
  ASSERT_THAT(legend.strokes(), SizeIs(1));
  EXPECT_EQ(legend.strokes()[0].kind, Stroke::Markers);
  EXPECT_THAT(legend.strokes()[0].points, ElementsAre(Point(25, 24)));
}

struct ErrorPointsLogTest : ErrorPointsPaintTest
{
  std::string const text = "Log scale not yet supported for vtkPlotErrorPoints";
  std::string reported;
  int reports = 0;

  void report(vtkObject*, unsigned long, void* message)
  {
    reported = static_cast<char const*>(message);
    ++reports;
  }
};

TEST_F(ErrorPointsLogTest, ObserversHearThatLogScalesAreNotSupported)
{
  plot->Update();
  plot->AddObserver(vtkCommand::ErrorEvent, this, &ErrorPointsLogTest::report);
  plot->CalculateLogSeries();
  plot->RemoveAllObservers();
  EXPECT_EQ(reports, 1);
  EXPECT_THAT(reported, testing::HasSubstr(text));
  paint();
  EXPECT_THAT(recorder.markers()[0].points, ElementsAre(Point(1, 10), Point(2, 20), Point(3, 30)));
}

TEST_F(ErrorPointsLogTest, WithoutObserversTheOutputWindowHearsIt)
{
  OutputWindowLog log;
  plot->CalculateLogSeries();
  EXPECT_THAT(log.text(), testing::HasSubstr(text));
}

TEST_F(ErrorPointsLogTest, NobodyHearsItWhileWarningsAreOff)
{
  OutputWindowLog log;
  plot->AddObserver(vtkCommand::ErrorEvent, this, &ErrorPointsLogTest::report);
  vtkObject::GlobalWarningDisplayOff();
  plot->CalculateLogSeries();
  vtkObject::GlobalWarningDisplayOn();
  plot->RemoveAllObservers();
  EXPECT_EQ(reports, 0);
  EXPECT_EQ(log.text(), "");
}

} // namespace
} // namespace runsieve::test
