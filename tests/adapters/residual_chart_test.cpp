#include "support/FitRecord.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkPlotLine.h>
#include <vtkPlotPoints.h>

#include <limits>

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// The plots of residuals, or of predictions and observations.
struct ResidualChartTest : FitRecord
{
  [[nodiscard]] vtkPlotPoints* points(int index)
  {
    vtkPlot* plot = chart()->GetPlot(index);
    return plot->IsA("vtkPlotLine") ? nullptr : vtkPlotPoints::SafeDownCast(plot);
  }
  [[nodiscard]] vtkPlotLine* line(int index) { return vtkPlotLine::SafeDownCast(chart()->GetPlot(index)); }

  std::pair<std::string, std::string> drawn(int index)
  {
    vtkPlot* plot = chart()->GetPlot(index);
    return {drawnColumn(plot, 0), drawnColumn(plot, 1)};
  }

  /// Draws, and tells how many times markers were painted.
  std::size_t paintedMarkers()
  {
    RecordingPainter recorder;
    show();
    paint(recorder);
    return recorder.markers().size();
  }
};

TEST_F(ResidualChartTest, ResidualsArePointsOverTime)
{
  set();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  for (int i = 0; i < 2; ++i) {
    ASSERT_NE(points(i), nullptr);
    EXPECT_EQ(points(i)->GetInput(), container.plotData.Get());
    EXPECT_FALSE(points(i)->GetUseIndexForXSeries());
  }
  EXPECT_THAT(drawn(0), Pair("Time", "Residual A 0"));
  EXPECT_THAT(drawn(1), Pair("Time", "Residual B 1"));
}

TEST_F(ResidualChartTest, CurvesAreALineAndPointsPerSeriesOverTime)
{
  set(true);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 4);
  for (int i = 0; i < 2; ++i) {
    EXPECT_NE(line(2 * i), nullptr);
    EXPECT_NE(points(2 * i + 1), nullptr);
  }
  EXPECT_THAT(drawn(0), Pair("Time", "Prediction A 0"));
  EXPECT_THAT(drawn(1), Pair("Time", "Observation A 0"));
  EXPECT_THAT(drawn(2), Pair("Time", "Prediction B 1"));
  EXPECT_THAT(drawn(3), Pair("Time", "Observation B 1"));
}

TEST_F(ResidualChartTest, WithoutTimesResidualsStandAtTheirRow)
{
  fit.type = FitSettings::steadyState;
  set();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  for (int i = 0; i < 2; ++i) {
    ASSERT_NE(points(i), nullptr);
    EXPECT_TRUE(points(i)->GetUseIndexForXSeries());
  }
  EXPECT_THAT(drawn(0), Pair("Residual A 0", "Residual A 0"));
  EXPECT_THAT(drawn(1), Pair("Residual B 1", "Residual B 1"));
}

TEST_F(ResidualChartTest, WithoutTimesCurvesRunOverTheRows)
{
  fit.type = FitSettings::steadyState;
  set(true);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 4);
  char const* const names[] = {"Prediction A 0", "Observation A 0", "Prediction B 1", "Observation B 1"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(line(i) != nullptr, i % 2 == 0) << i;
    EXPECT_EQ(points(i) != nullptr, i % 2 == 1) << i;
    EXPECT_TRUE(chart()->GetPlot(i)->GetUseIndexForXSeries());
    EXPECT_THAT(drawn(i), Pair(names[i], names[i]));
  }
}

TEST_F(ResidualChartTest, AllSeriesHaveOneColour)
{
  for (bool curves : {false, true}) {
    set(curves);
    for (vtkIdType i = 0; i < chart()->GetNumberOfPlots(); ++i)
      EXPECT_EQ(penColor(chart()->GetPlot(i)), (Color{200, 30, 30, 255})) << i;
  }
}

TEST_F(ResidualChartTest, ReplacesFormerPlotsInTheSameChart)
{
  container.example();
  vtkSmartPointer<vtkChart> before = container.chartXY;
  set(true);
  set();
  EXPECT_EQ(container.chartXY, before);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 2);
}

TEST_F(ResidualChartTest, TheFirstPlotAloneHasTheMarkerOfThePlot)
{
  vtkNew<vtkPlotPoints> fresh;
  ASSERT_NE(fresh->GetMarkerStyle(), 3);
  settings().markerStyle = vtkPlotPoints::PLUS;
  set();
  EXPECT_EQ(settings().markerStyle, 3);
  EXPECT_EQ(points(0)->GetMarkerStyle(), 3);
  EXPECT_EQ(points(1)->GetMarkerStyle(), fresh->GetMarkerStyle());
  set(true);
  EXPECT_EQ(line(0)->GetMarkerStyle(), 3);
  EXPECT_EQ(points(1)->GetMarkerStyle(), fresh->GetMarkerStyle());
}

TEST_F(ResidualChartTest, TheMarkersAreThreePixelsWide)
{
  set();
  EXPECT_EQ(settings().pointSize, 3.0);
  EXPECT_EQ(points(0)->GetMarkerSize(), 3.0f);
}

TEST_F(ResidualChartTest, TheTitleFollowsTheScaling)
{
  for (bool curves : {false, true}) {
    set(curves, false);
    EXPECT_EQ(settings().plotTitle, "Residuals");
    EXPECT_EQ(chart()->GetTitle(), "Residuals");
    set(curves, true);
    EXPECT_EQ(settings().plotTitle, "Scaled Residuals");
    EXPECT_EQ(chart()->GetTitle(), "Scaled Residuals");
  }
}

TEST_F(ResidualChartTest, TheAxesEndWithTheData)
{
  set();
  EXPECT_TRUE(vtkChartXY::SafeDownCast(chart())->GetForceAxesToBounds());
  paintedMarkers();
  EXPECT_EQ(left()->GetUnscaledMinimum(), -7);
  EXPECT_EQ(left()->GetUnscaledMaximum(), 5);
  EXPECT_EQ(bottom()->GetUnscaledMaximum(), 2);
}

TEST_F(ResidualChartTest, TheVerticalAxisIsScaledToNiceEnds)
{
  paintedMarkers(); // an axis without length has no nice ends
  left()->SetRange(0.13, 7.77);
  left()->AutoScale();
  double const nice = left()->GetMaximum();
  ASSERT_NE(nice, 7.77);
  left()->SetRange(0.13, 7.77);
  set();
  EXPECT_EQ(left()->GetMaximum(), nice);
}

TEST_F(ResidualChartTest, ResidualsArePainted)
{
  set();
  RecordingPainter recorder;
  show();
  paint(recorder);
  ASSERT_THAT(recorder.markers(), SizeIs(2));
  EXPECT_THAT(recorder.markers()[0].points, ElementsAre(Point(0, 1), Point(1, 2), Point(2, 5)));
  EXPECT_THAT(recorder.markers()[1].points, ElementsAre(Point(0, 1), Point(1, 2), Point(2, -7)));
}

TEST_F(ResidualChartTest, CurvesArePaintedOverTheRowsWithoutTimes)
{
  fit.type = FitSettings::steadyState;
  set(true);
  RecordingPainter recorder;
  show();
  paint(recorder);
  bool predicted = false, observed = false;
  for (Stroke const& stroke : recorder.polyLines())
    predicted |= stroke.points == std::vector<Point>{{0, 1}, {1, 2}, {2, 3}};
  for (Stroke const& stroke : recorder.markers())
    observed |= stroke.points == std::vector<Point>{{0, 2}, {1, 4}, {2, 8}};
  EXPECT_TRUE(predicted);
  EXPECT_TRUE(observed);
}

TEST_F(ResidualChartTest, APlotOfTwoLengthsHasNoInput)
{
  fit.observations[0] = {2, 4, 8, 16};
  predictions[0] = {1, 2, 3, 4};
  set();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  EXPECT_EQ(points(0)->GetInput(), nullptr) << "three times, four values";
  EXPECT_THAT(drawn(1), Pair("Time", "Residual B 1"));
  EXPECT_EQ(paintedMarkers(), 1u);
  fit.type = FitSettings::steadyState;
  set();
  EXPECT_THAT(drawn(0), Pair("Residual A 0", "Residual A 0")) << "one column has one length";
}

TEST_F(ResidualChartTest, MorePredictionsThanObservationsHavePlotsWithoutInput)
{
  predictions.push_back({1, 2, 3});
  for (int type : {0, 1}) {
    fit.type = type;
    set();
    ASSERT_EQ(chart()->GetNumberOfPlots(), 3);
    EXPECT_EQ(points(2)->GetInput(), nullptr);
    EXPECT_EQ(paintedMarkers(), 2u);
    set(true);
    ASSERT_EQ(chart()->GetNumberOfPlots(), 6);
    EXPECT_EQ(line(4)->GetInput(), nullptr);
    EXPECT_EQ(points(5)->GetInput(), nullptr);
    EXPECT_EQ(paintedMarkers(), 3u) << "the first line has markers as well";
  }
}

TEST_F(ResidualChartTest, FewerPredictionsThanObservationsHaveFewerPlots)
{
  predictions.resize(1);
  set();
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
  set(true);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 2);
  paintedMarkers();
}

TEST_F(ResidualChartTest, NoSeriesArePaintedAsAnEmptyChart)
{
  fit.observations.clear();
  fit.observationErrors.clear();
  fit.seriesNames.clear();
  predictions.clear();
  for (int type : {0, 1})
    for (bool curves : {false, true}) {
      fit.type = type;
      set(curves);
      EXPECT_EQ(chart()->GetNumberOfPlots(), 0);
      EXPECT_EQ(paintedMarkers(), 0u);
    }
  EXPECT_EQ(settings().markerStyle, 3);
  EXPECT_EQ(chart()->GetTitle(), "Residuals");
}

TEST_F(ResidualChartTest, EmptySeriesDoNotBreakIt)
{
  fit.observations = {{}, {}};
  predictions = {{}, {}};
  run.times.clear();
  for (int type : {0, 1})
    for (bool curves : {false, true}) {
      fit.type = type;
      set(curves);
      EXPECT_EQ(chart()->GetNumberOfPlots(), curves ? 4 : 2);
      paintedMarkers();
    }
}

TEST_F(ResidualChartTest, UndefinedAndInfiniteResidualsDoNotBreakIt)
{
  fit.observations[0] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                         1};
  fit.observationErrors[1] = {0, 0, 0};
  for (bool curves : {false, true}) {
    set(curves, true);
    paintedMarkers();
  }
  predictions[1] = {5, 5, 5};
  fit.standardizeSeries = true;
  set();
  paintedMarkers();
  EXPECT_EQ(chart()->GetNumberOfPlots(), 2);
}

TEST_F(ResidualChartTest, MissingNamesDoNotBreakIt)
{
  fit.seriesNames.clear();
  set();
  paintedMarkers();
  EXPECT_EQ(container.plotData->GetNumberOfColumns(), 3);
}

TEST_F(ResidualChartTest, CanFollowAStyleThatReleasedThePlainChart)
{
  container.example();
  settings().zColumns = {2};
  container.setPlotStyle(scatterPlot3D);
  set();
  ASSERT_NE(chart(), nullptr);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 2);
}

} // namespace
} // namespace runsieve::test
