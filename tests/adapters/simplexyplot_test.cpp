#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <QSignalSpy>
#include <runsieve/items/vtkPlotErrorPoints.h>
#include <vtkFloatArray.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Points from plain vectors, with or without error bars.
struct SimpleXYPlotTest : testing::Test, PlotScene
{
  std::vector<double> x{1, 2, 4};
  std::vector<double> y{0.1, 5, 6};
  std::vector<double> errors{0.5, 0.25, 1};

  void set() { container.setSimpleXYPlot(x, y, errors); }

  std::vector<double> column(char const* name) { return numbers(container.plotData, name); }
  [[nodiscard]] vtkPlotPoints* points() { return vtkPlotPoints::SafeDownCast(chart()->GetPlot(0)); }

  void paintIt()
  {
    RecordingPainter recorder;
    show();
    paint(recorder);
  }
};

TEST_F(SimpleXYPlotTest, AsManyErrorsAsPointsAreAThirdColumn)
{
  set();
  ASSERT_THAT(columnNames(container.plotData), ElementsAre("x", "y", "error"));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(container.plotData->GetColumn(i)->IsA("vtkFloatArray"));
  EXPECT_THAT(column("x"), ElementsAre(1, 2, 4));
  EXPECT_THAT(column("y"), ElementsAre(static_cast<double>(0.1f), 5, 6));
  EXPECT_THAT(column("error"), ElementsAre(0.5, 0.25, 1));
}

TEST_F(SimpleXYPlotTest, ErrorsChooseTheStyleWithErrorBars)
{
  set();
  EXPECT_EQ(settings().getPlotStyle(), scatterPlotWithErrorBars);
  EXPECT_THAT(settings().xColumns, ElementsAre(0));
  EXPECT_THAT(settings().yColumns, ElementsAre(1));
  EXPECT_THAT(settings().zColumns, ElementsAre(2));
  EXPECT_NE(vtkPlotErrorPoints::SafeDownCast(chart()->GetPlot(0)), nullptr);
}

TEST_F(SimpleXYPlotTest, AnyOtherNumberOfErrorsGivesPlainPoints)
{
  for (std::vector<double> const& other : {std::vector<double>{}, {1, 2}, {1, 2, 3, 4}}) {
    errors = {1, 1, 1};
    set();
    errors = other;
    testing::internal::CaptureStdout();
    set();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(columnNames(container.plotData), ElementsAre("x", "y"));
    EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
    EXPECT_THAT(settings().zColumns, ElementsAre(0));
    ASSERT_NE(points(), nullptr);
    EXPECT_EQ(vtkPlotErrorPoints::SafeDownCast(points()), nullptr);
  }
}

TEST_F(SimpleXYPlotTest, TheFirstEntriesOfTheColumnListsAreSet)
{
  settings().xColumns = {3, 7};
  settings().yColumns = {4, 8};
  settings().zColumns = {5, 9};
  errors.clear();
  set();
  EXPECT_THAT(settings().xColumns, ElementsAre(0, 7));
  EXPECT_THAT(settings().yColumns, ElementsAre(1, 8));
  EXPECT_THAT(settings().zColumns, ElementsAre(0, 9));
}

TEST_F(SimpleXYPlotTest, TheVectorsAreOnlyRead)
{
  set();
  EXPECT_THAT(x, ElementsAre(1, 2, 4));
  EXPECT_THAT(y, ElementsAre(0.1, 5, 6));
  EXPECT_THAT(errors, ElementsAre(0.5, 0.25, 1));
}

TEST_F(SimpleXYPlotTest, LooksAreThoseOfSmallMarkersAndThinBars)
{
  settings().setLineWidth(7);
  settings().pointSize = 9;
  settings().markerStyle = 1;
  for (bool withErrors : {true, false}) {
    if (!withErrors) errors.clear();
    set();
    EXPECT_EQ(settings().getLineWidth(), 1.0);
    EXPECT_EQ(settings().pointSize, 2.0);
    EXPECT_EQ(settings().markerStyle, 3);
    EXPECT_EQ(points()->GetMarkerStyle(), 3);
  }
  EXPECT_EQ(points()->GetMarkerSize(), 2.0f) << "style scatterPlot applies the size";
}

TEST_F(SimpleXYPlotTest, BarsThatStandBecomeOnePixelWide)
{
  set();
  vtkSmartPointer<vtkPlot> standing = chart()->GetPlot(0);
  container.setLineWidth(6);
  ASSERT_EQ(standing->GetPen()->GetWidth(), 6.0f);
  set();
  EXPECT_EQ(standing->GetPen()->GetWidth(), 1.0f);
}

TEST_F(SimpleXYPlotTest, RedrawsOnceAndReleasesTheSignals)
{
  QSignalSpy announced(container.metaData, &PlotMetaData::redrawNeeded);
  set();
  EXPECT_EQ(announced.count(), 0);
  EXPECT_FALSE(settings().signalsBlocked());
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  EXPECT_EQ(chart()->GetPlot(0)->GetInput(), container.plotData.Get());
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 0), "x");
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "y");
}

TEST_F(SimpleXYPlotTest, EachCallMakesANewTable)
{
  set();
  vtkSmartPointer<vtkTable> former = container.plotData;
  set();
  EXPECT_NE(container.plotData, former);
  EXPECT_EQ(former->GetNumberOfRows(), 3);
}

TEST_F(SimpleXYPlotTest, EmptyVectorsAgreeInSize)
{
  x = y = errors = {};
  set();
  EXPECT_THAT(columnNames(container.plotData), ElementsAre("x", "y", "error"));
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 0);
  EXPECT_EQ(settings().getPlotStyle(), scatterPlotWithErrorBars);
  paintIt();
}

TEST_F(SimpleXYPlotTest, DifferentSizesLeaveAMessageAndAnEmptyTable)
{
  settings().plotTitle = "before";
  container.setPlotData(makeTable({{"a", {1, 2}}}));
  y.pop_back();
  set();
  EXPECT_EQ(chart()->GetTitle(), "SimpleXYPlot: x and y sizes differ.");
  EXPECT_EQ(settings().plotTitle, "before");
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 0);
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot);
}

TEST_F(SimpleXYPlotTest, DifferentSizesHoldTheSignalsBackUntilTheNextRedraw)
{
  x.push_back(9);
  set();
  EXPECT_TRUE(settings().signalsBlocked());
  QSignalSpy announced(container.metaData, &PlotMetaData::redrawNeeded);
  settings().setLogX(true);
  EXPECT_EQ(announced.count(), 0);
  container.redraw();
  EXPECT_FALSE(settings().signalsBlocked());
  settings().setLogX(false);
  EXPECT_EQ(announced.count(), 1);
}

TEST_F(SimpleXYPlotTest, TheMessageIsPainted)
{
  container.example();
  x.clear();
  set();
  RecordingPainter recorder;
  show();
  paint(recorder);
  EXPECT_THAT(recorder.texts(), testing::Contains("SimpleXYPlot: x and y sizes differ."));
}

TEST_F(SimpleXYPlotTest, RightDataAfterAFailureAreShown)
{
  settings().plotTitle = "points";
  std::vector<double> shorter{1};
  container.setSimpleXYPlot(x, shorter, errors);
  set();
  EXPECT_EQ(chart()->GetTitle(), "points");
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 3);
  EXPECT_FALSE(settings().signalsBlocked());
}

TEST_F(SimpleXYPlotTest, ThePointsArePainted)
{
  for (bool withErrors : {true, false}) {
    if (!withErrors) errors.clear();
    set();
    RecordingPainter recorder;
    show();
    paint(recorder);
    std::vector<Point> const expected{{1, 0.1f}, {2, 5}, {4, 6}};
    bool painted = false;
    for (Stroke const& stroke : recorder.markers()) painted |= stroke.points == expected;
    EXPECT_TRUE(painted) << (withErrors ? "with errors" : "plain");
  }
}

TEST_F(SimpleXYPlotTest, UndefinedValuesDoNotBreakIt)
{
  x[0] = std::numeric_limits<double>::quiet_NaN();
  y[1] = std::numeric_limits<double>::infinity();
  errors[2] = std::numeric_limits<double>::quiet_NaN();
  set();
  paintIt();
  errors.clear();
  set();
  paintIt();
  EXPECT_EQ(container.plotData->GetNumberOfRows(), 3);
}

TEST_F(SimpleXYPlotTest, CanFollowAStyleThatReleasedThePlainChart)
{
  container.example();
  settings().zColumns = {2};
  container.setPlotStyle(scatterPlot3D);
  set();
  ASSERT_NE(chart(), nullptr);
  EXPECT_NE(vtkPlotErrorPoints::SafeDownCast(chart()->GetPlot(0)), nullptr);
}

} // namespace
} // namespace runsieve::test
