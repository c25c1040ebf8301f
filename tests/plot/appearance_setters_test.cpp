#include "support/ShownPlot.h"

#include <runsieve/items/vtkPlotErrorPoints.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

using testing::ElementsAre;
using testing::IsSupersetOf;

namespace runsieve::test {
namespace {

/// All looks at once, without a redraw.
struct SettersTest : ShownPlot
{
  void setAllLooks()
  {
    container().setPlotTitle("the title");
    container().setXLabel("across");
    container().setYLabel("upwards");
    container().setMarkerStyle(VTK_MARKER_DIAMOND);
    container().setLineWidth(6);
    container().setColor(10, 20, 30, 40);
    container().setColorScheme("c", true);
    container().setXTickLabels({"one", "two"});
    container().setXTickPosition({1, 2});
    container().setLogScaleY(true);
    container().LogScaleX();
    container().setShowLegend(true);
    container().setUseIndexForXSeries(true);
  }
};

TEST_F(SettersTest, TitleAndLabelsAreStoredAndShownAtOnce)
{
  setAllLooks();
  EXPECT_EQ(plot.settings().plotTitle, "the title");
  EXPECT_EQ(plot.settings().xLabel, "across");
  EXPECT_EQ(plot.settings().yLabel, "upwards");
  EXPECT_EQ(plot.chart()->GetTitle(), "the title");
  EXPECT_EQ(plot.bottom()->GetTitle(), "across");
  EXPECT_EQ(plot.left()->GetTitle(), "upwards");
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.texts(), IsSupersetOf({"the title", "across", "upwards"}));
}

TEST_F(SettersTest, ARedrawKeepsWhatWasSet)
{
  setAllLooks();
  container().redraw();
  EXPECT_EQ(plot.chart()->GetTitle(), "the title");
  EXPECT_EQ(plot.bottom()->GetTitle(), "across");
  EXPECT_EQ(plot.left()->GetTitle(), "upwards");
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_DIAMOND);
  EXPECT_EQ(penColor(points()), (Color{10, 20, 30, 40}));
  EXPECT_THAT(textsOf(plot.bottom()->GetTickLabels()), ElementsAre("one", "two"));
}

TEST_F(SettersTest, NoneOfThemAsksForARedraw)
{
  QSignalSpy redraws(&plot.settings(), &PlotMetaData::redrawNeeded);
  setAllLooks();
  EXPECT_EQ(redraws.count(), 0);
}

TEST_F(SettersTest, WithoutAPlainChartTheyOnlyStore)
{
  changeStyle(scatterPlot3D);
  ASSERT_EQ(container().chartXY, nullptr);
  setAllLooks();
  EXPECT_EQ(plot.settings().plotTitle, "the title");
  EXPECT_EQ(plot.settings().markerStyle, VTK_MARKER_DIAMOND);
  EXPECT_DOUBLE_EQ(plot.settings().getLineWidth(), 6);
  EXPECT_EQ(plot.settings().blue, 30);
  EXPECT_TRUE(container().getUseIndexForXSeries());
  EXPECT_EQ(container().chartXY, nullptr);
  changeStyle(scatterPlot);
  EXPECT_EQ(plot.chart()->GetTitle(), "the title");
  EXPECT_EQ(plot.bottom()->GetTitle(), "across");
  EXPECT_EQ(plot.left()->GetTitle(), "upwards");
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_DIAMOND);
  EXPECT_EQ(penColor(points()), (Color{10, 20, 30, 40}));
}

TEST_F(SettersTest, MarkersChangeAtOnce)
{
  container().setMarkerStyle(VTK_MARKER_SQUARE);
  EXPECT_EQ(plot.settings().markerStyle, VTK_MARKER_SQUARE);
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_SQUARE);
}

TEST_F(SettersTest, MarkersOfAChartWithoutPlotsChangeAtTheRedraw)
{
  plot.chart()->ClearPlots();
  container().setMarkerStyle(VTK_MARKER_CROSS);
  EXPECT_EQ(plot.settings().markerStyle, VTK_MARKER_CROSS);
  container().redraw();
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_CROSS);
}

TEST_F(SettersTest, OnlyTheFirstPlotTakesTheMarkerAndOnlyIfItHasMarkers)
{
  auto* second = vtkPlotPoints::SafeDownCast(plot.chart()->AddPlot(vtkChart::POINTS));
  int const former = second->GetMarkerStyle();
  container().setMarkerStyle(VTK_MARKER_DIAMOND);
  EXPECT_EQ(second->GetMarkerStyle(), former);
  plot.chart()->ClearPlots();
  plot.chart()->AddPlot(vtkChart::BAR);
  container().setMarkerStyle(VTK_MARKER_CROSS);
  EXPECT_EQ(plot.settings().markerStyle, VTK_MARKER_CROSS);
}

TEST_F(SettersTest, TheLineWidthOfErrorBarsChangesAtOnce)
{
  changeStyle(scatterPlotWithErrorBars);
  container().setLineWidth(4.5);
  EXPECT_DOUBLE_EQ(plot.settings().getLineWidth(), 4.5);
  EXPECT_FLOAT_EQ(points()->GetPen()->GetWidth(), 4.5f);
}

TEST_F(SettersTest, TheLineWidthOfErrorBarsSurvivesARedraw)
{
  changeStyle(scatterPlotWithErrorBars);
  container().setLineWidth(4.5);
  container().redraw();
  EXPECT_FLOAT_EQ(points()->GetPen()->GetWidth(), 4.5f);
}

TEST_F(SettersTest, TheLineWidthOfOtherStylesIsOnlyStored)
{
  auto errors = vtkSmartPointer<vtkPlotErrorPoints>::New();
  plot.chart()->ClearPlots();
  plot.chart()->AddPlot(errors);
  float const former = errors->GetPen()->GetWidth();
  container().setLineWidth(9);
  EXPECT_DOUBLE_EQ(plot.settings().getLineWidth(), 9);
  EXPECT_FLOAT_EQ(errors->GetPen()->GetWidth(), former);
}

TEST_F(SettersTest, TheLineWidthOfPlotsWithoutErrorBarsIsOnlyStored)
{
  setStyleSilently(scatterPlotWithErrorBars);
  float const former = points()->GetPen()->GetWidth();
  container().setLineWidth(9);
  EXPECT_FLOAT_EQ(points()->GetPen()->GetWidth(), former);
  plot.chart()->ClearPlots();
  container().setLineWidth(8);
  EXPECT_DOUBLE_EQ(plot.settings().getLineWidth(), 8);
}

TEST_F(SettersTest, TheLineWidthOfErrorBarsWithoutTheirChartIsOnlyStored)
{
  changeStyle(scatterPlot3D);
  setStyleSilently(scatterPlotWithErrorBars);
  container().setLineWidth(7);
  EXPECT_DOUBLE_EQ(plot.settings().getLineWidth(), 7);
  EXPECT_EQ(container().chartXY, nullptr);
}

TEST_F(SettersTest, AColourShowsAtOnce)
{
  container().setColor(1, 2, 3, 4);
  EXPECT_EQ(plot.settings().red, 1);
  EXPECT_EQ(plot.settings().green, 2);
  EXPECT_EQ(plot.settings().blue, 3);
  EXPECT_EQ(plot.settings().alpha, 4);
  EXPECT_EQ(penColor(points()), (Color{1, 2, 3, 4}));
}

TEST_F(SettersTest, AColourWaitsWhileAColumnColoursThePoints)
{
  container().setColorScheme("b", false);
  Color const former = penColor(points());
  container().setColor(1, 2, 3, 4);
  EXPECT_EQ(plot.settings().green, 2);
  EXPECT_EQ(penColor(points()), former);
  container().setColorScheme("", true);
  EXPECT_EQ(penColor(points()), (Color{1, 2, 3, 4}));
}

TEST_F(SettersTest, AColumnColoursThePointsAtOnce)
{
  container().setColorScheme("b", false);
  EXPECT_FALSE(plot.settings().useSolidColor);
  EXPECT_EQ(plot.settings().colorColumn, 1);
  EXPECT_TRUE(points()->GetScalarVisibility());
  EXPECT_EQ(points()->GetColorArrayName(), "b");
}

TEST_F(SettersTest, OfColourColumnsOfOneNameTheLastCounts)
{
  container().plotData->GetColumn(3)->SetName("c"); // two columns cannot be added under one name
  container().setColorScheme("c", false);
  EXPECT_EQ(plot.settings().colorColumn, 3);
}

TEST_F(SettersTest, AnUnknownColourColumnKeepsTheFormerOne)
{
  container().setColorScheme("b", false);
  container().setColorScheme("unknown", false);
  EXPECT_EQ(plot.settings().colorColumn, 1);
  EXPECT_EQ(points()->GetColorArrayName(), "b");
}

TEST_F(SettersTest, ASolidSchemeDoesNotLookAtItsColumn)
{
  container().setColorScheme("b", false);
  container().setColorScheme("c", true);
  EXPECT_TRUE(plot.settings().useSolidColor);
  EXPECT_EQ(plot.settings().colorColumn, 1);
  EXPECT_FALSE(points()->GetScalarVisibility());
}

TEST_F(SettersTest, RowNumbersForXAreStoredAndTheSceneIsMarked)
{
  for (bool use : {true, false}) {
    plot.scene->SetDirty(false);
    container().setUseIndexForXSeries(use);
    EXPECT_EQ(container().getUseIndexForXSeries(), use);
    EXPECT_EQ(container().useIndexForXSeries, use);
    EXPECT_TRUE(plot.scene->GetDirty());
  }
}

TEST(Setters, WorkBeforeAnySceneExists)
{
  PlotContainer container(nullptr);
  container.setPlotTitle("early");
  container.setXLabel("x");
  container.setUseIndexForXSeries(true);
  container.setColorScheme("none", false);
  container.setLeftMargin(11);
  EXPECT_EQ(container.chartXY->GetTitle(), "early");
  EXPECT_EQ(container.chartXY->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "x");
  EXPECT_TRUE(container.getUseIndexForXSeries());
  EXPECT_EQ(container.getLeftMargin(), 11);
}

} // namespace
} // namespace runsieve::test
