#include "support/OpenErrorPoints.h"
#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkCommand.h>
#include <vtkPlotPoints.h>
#include <vtkStringArray.h>

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::Not;

namespace runsieve::test {
namespace {

/// Error bars over a table of floats: 0 "x" of 0 to 40, 1 "y", 2 "error", 3 "fit x", 4 "fit y".
struct ErrorBarPlotTest : testing::Test
{
  PlotScene plot;
  vtkSmartPointer<vtkFloatArray> error = makeFloats("error", {1, 2, 3});

  ErrorBarPlotTest()
  {
    vtkNew<vtkTable> table;
    table->AddColumn(makeFloats("x", {0, 20, 40}));
    table->AddColumn(makeFloats("y", {10, 20, 30}));
    table->AddColumn(error);
    table->AddColumn(makeFloats("fit x", {5, 15, 25}));
    table->AddColumn(makeFloats("fit y", {11, 12, 13}));
    plot.container.setPlotData(table.Get());
    plot.settings().yColumns = {1};
    plot.settings().zColumns = {2};
    plot.container.setPlotStyle(scatterPlotWithErrorBars);
  }

  PlotContainer& container() { return plot.container; }
  vtkPlotErrorPoints* points() { return vtkPlotErrorPoints::SafeDownCast(plot.chart()->GetPlot(0)); }

  static auto bar(float x, float low, float high)
  {
    return Contains(Field(&Stroke::points, ElementsAre(Point(x, low), Point(x, high))));
  }

  static auto markersAt(std::vector<Point> const& points)
  {
    return Contains(Field(&Stroke::points, testing::ElementsAreArray(points)));
  }
};

TEST_F(ErrorBarPlotTest, TheMainPlotHasErrorsFromTheThirdColumn)
{
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 1);
  ASSERT_NE(points(), nullptr);
  EXPECT_EQ(points()->GetInput(), container().plotData.Get());
  EXPECT_EQ(drawnColumn(points(), 0), "x");
  EXPECT_EQ(drawnColumn(points(), 1), "y");
  EXPECT_EQ(points()->GetErrorArrayName(), "error");
  EXPECT_FALSE(points()->GetUseIndexForXSeries());
  EXPECT_EQ(container().getItem(), plot.chart());
  EXPECT_EQ(plot.chart()->GetScene(), plot.scene.Get());
}

TEST_F(ErrorBarPlotTest, BarsAndMarkersArePainted)
{
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.polyLines(), bar(0, 9, 11));
  EXPECT_THAT(recorder.polyLines(), bar(20, 18, 22));
  EXPECT_THAT(recorder.polyLines(), bar(40, 27, 33));
  EXPECT_THAT(recorder.markers(), markersAt({{0, 10}, {20, 20}, {40, 30}}));
  EXPECT_EQ(recorder.errors(), 0);
}

TEST_F(ErrorBarPlotTest, ARedrawReplacesItsPlots)
{
  container().redraw();
  container().redraw();
  EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
}

TEST_F(ErrorBarPlotTest, RowNumbersCanReplaceTheXColumn)
{
  container().setUseIndexForXSeries(true);
  container().redraw();
  EXPECT_TRUE(points()->GetUseIndexForXSeries());
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.markers(), markersAt({{0, 10}, {1, 20}, {2, 30}}));
  EXPECT_THAT(recorder.polyLines(), bar(1, 18, 22));
}

TEST_F(ErrorBarPlotTest, TitlesComeFromTheSettings)
{
  plot.settings().plotTitle = "fit";
  plot.settings().xLabel = "dose";
  plot.settings().yLabel = "answer";
  container().redraw();
  EXPECT_EQ(plot.chart()->GetTitle(), "fit");
  EXPECT_EQ(plot.bottom()->GetTitle(), "dose");
  EXPECT_EQ(plot.left()->GetTitle(), "answer");
}

TEST_F(ErrorBarPlotTest, AColumnOfFloatsGivesTheBottomAxisFivePercentOfRoom)
{
  plot.bottom()->SetUnscaledRange(-500, 500);
  container().redraw();
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMinimum(), -2);
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMaximum(), 42);
}

TEST_F(ErrorBarPlotTest, ThatRoomDoesNotChangeTheBehaviourOfTheAxis)
{
  for (int behavior : {vtkAxis::FIXED, vtkAxis::AUTO}) {
    plot.bottom()->SetBehavior(behavior);
    container().redraw();
    EXPECT_EQ(plot.bottom()->GetBehavior(), behavior);
  }
}

TEST_F(ErrorBarPlotTest, AColumnOfDoublesOrNoneLeavesTheBottomAxisAsItIs)
{
  container().plotData->AddColumn(makeColumn("double", {100.0, 200.0, 300.0}));
  for (int column : {5, 999}) {
    plot.settings().xColumns = {column};
    plot.bottom()->SetUnscaledRange(-7, 7);
    container().redraw();
    EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMinimum(), -7) << column;
    EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMaximum(), 7) << column;
  }
}

TEST_F(ErrorBarPlotTest, LabelsStandAtZeroOneTwoWhateverThePositions)
{
  container().setXTickLabels({"none", "half", "full"});
  container().setXTickPosition({0, 20, 40});
  container().redraw();
  ASSERT_EQ(plot.bottom()->GetTickPositions()->GetNumberOfTuples(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(plot.bottom()->GetTickPositions()->GetValue(i), i);
  EXPECT_EQ(plot.bottom()->GetTickLabels()->GetValue(2), "full");
}

TEST_F(ErrorBarPlotTest, WithoutLabelsAgainTicksAreNumbers)
{
  container().setXTickLabels({"none", "half", "full"});
  container().redraw();
  container().setXTickLabels({});
  container().redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.texts(), Not(Contains("half")));
}

TEST_F(ErrorBarPlotTest, ColoursAreThoseOfTheSettings)
{
  container().setColor(10, 20, 30, 40);
  container().redraw();
  EXPECT_EQ(penColor(points()), (Color{10, 20, 30, 40}));
  container().plotData->AddColumn(makeColumn("score", {1.0, 2.0, 3.0}));
  container().setColorScheme("score", false);
  container().redraw();
  EXPECT_TRUE(points()->GetScalarVisibility());
  EXPECT_EQ(points()->GetColorArrayName(), "score");
}

TEST_F(ErrorBarPlotTest, MarkersTakeTheStyleButNotTheSizeOfTheSettings)
{
  vtkNew<vtkPlotErrorPoints> untouched;
  plot.settings().markerStyle = VTK_MARKER_DIAMOND;
  plot.settings().pointSize = 17;
  container().redraw();
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_DIAMOND);
  EXPECT_FLOAT_EQ(points()->GetMarkerSize(), untouched->GetMarkerSize());
}

TEST_F(ErrorBarPlotTest, RemembersNoWindow)
{
  EXPECT_FALSE(plot.chart()->HasObserver(vtkCommand::InteractionEvent));
  container().coordinateWindows[{0, 1, scatterPlotWithErrorBars}] = {1, 2, 3, 4, true};
  container().redraw();
  EXPECT_DOUBLE_EQ(plot.bottom()->GetUnscaledMaximum(), 42);
  EXPECT_NE(plot.left()->GetMaximum(), 4);
}

TEST_F(ErrorBarPlotTest, LeavesTheLinkOfItsChartAsItIs)
{
  plot.chart()->SetAnnotationLink(nullptr);
  container().redraw();
  EXPECT_EQ(plot.chart()->GetAnnotationLink(), nullptr);
  plot.chart()->SetAnnotationLink(container().annotationLink);
  container().redraw();
  EXPECT_EQ(plot.chart()->GetAnnotationLink(), container().annotationLink.Get());
}

TEST_F(ErrorBarPlotTest, AnErrorColumnThatIsNotOfFloatsGivesMarkersOnly)
{
  container().plotData->AddColumn(makeColumn("double", {1.0, 2.0, 3.0}));
  container().plotData->AddColumn(makeColumn<vtkStringArray, std::string>("text", {"a", "b", "c"}));
  for (int column : {5, 6, 999, -1}) {
    plot.settings().zColumns = {column};
    container().redraw();
    RecordingPainter recorder;
    plot.paint(recorder);
    EXPECT_THAT(recorder.polyLines(), Not(bar(20, 18, 22))) << column;
    EXPECT_THAT(recorder.markers(), markersAt({{0, 10}, {20, 20}, {40, 30}})) << column;
  }
}

TEST_F(ErrorBarPlotTest, ATableWithoutRowsIsAnEmptyChart)
{
  vtkNew<vtkTable> table;
  for (char const* name : {"x", "y", "error"}) table->AddColumn(makeFloats(name, {}));
  container().setPlotData(table.Get());
  container().redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_TRUE(recorder.markers().empty());
  EXPECT_LT(plot.bottom()->GetUnscaledMaximum(), 1e30);
}

} // namespace
} // namespace runsieve::test
