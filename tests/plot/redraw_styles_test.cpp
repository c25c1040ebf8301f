#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkCommand.h>
#include <vtkPlot3D.h>
#include <vtkPlotParallelCoordinates.h>
#include <vtkPlotPoints.h>
#include <vtkTextProperty.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

std::vector<std::string> names(vtkStringArray* array)
{
  std::vector<std::string> found;
  for (vtkIdType i = 0; i < array->GetNumberOfValues(); ++i) found.push_back(array->GetValue(i));
  return found;
}

struct StylesTest : testing::Test
{
  PlotScene plot;

  StylesTest()
  {
    plot.container.setPlotData(makeTable(
        {{"a", {1, 2, 3}}, {"b", {2, 3, 1}}, {"c", {3, 1, 2}}, {"d", {1, 3, 2}}, {"e", {9, 8, 7}}}));
    plot.settings().yColumns = {1};
    plot.settings().zColumns = {2};
  }
};

using ScatterMatrixTest = StylesTest;

TEST_F(ScatterMatrixTest, ShowsTheWholeTable)
{
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  auto* matrix = plot.container.scatterPlotMatrix.Get();
  EXPECT_EQ(plot.container.getItem(), matrix);
  EXPECT_EQ(matrix->GetScene(), plot.scene.Get());
  EXPECT_THAT(names(matrix->GetVisibleColumns()), ElementsAre("a", "b", "c", "d", "e"));
  EXPECT_EQ(plot.container.chartXY, nullptr);
}

TEST_F(ScatterMatrixTest, TakesTheVerticalGutterFirst)
{
  plot.container.horizontalGutter = 11;
  plot.container.verticalGutter = 22;
  plot.container.leftMargin = 1;
  plot.container.bottomMargin = 2;
  plot.container.rightMargin = 3;
  plot.container.topMargin = 4;
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  vtkVector2f const gutter = plot.container.scatterPlotMatrix->GetGutter();
  EXPECT_FLOAT_EQ(gutter.GetX(), 22);
  EXPECT_FLOAT_EQ(gutter.GetY(), 11);
  int borders[4];
  plot.container.scatterPlotMatrix->GetBorders(borders);
  EXPECT_THAT(borders, ElementsAre(1, 2, 3, 4)) << "left, bottom, right, top";
}

TEST_F(ScatterMatrixTest, TheLargeChartReachesOverTheActiveColumnsAfterEveryLayout)
{
  plot.container.setPlotData(makeTable({{"a", {100, 300}}, {"b", {20, 70}}, {"c", {3, 4}}, {"d", {-5, 6}}}));
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  plot.show();
  RecordingPainter recorder;
  plot.paint(recorder);
  auto* matrix = plot.container.scatterPlotMatrix.Get();
  auto reach = [this, matrix](int side, vtkStdString const& column) {
    double const* range =
        vtkDataArray::SafeDownCast(plot.container.plotData->GetColumnByName(column.c_str()))->GetRange();
    vtkAxis* axis = matrix->GetMainChart()->GetAxis(side);
    EXPECT_LE(axis->GetUnscaledMinimum(), range[0]) << column;
    EXPECT_GE(axis->GetUnscaledMaximum(), range[1]) << column;
  };
  for (int layout = 0; layout < 2; ++layout) {
    reach(vtkAxis::TOP, matrix->GetColumnName(matrix->GetActivePlot().GetX()));
    reach(vtkAxis::RIGHT, matrix->GetRowName(matrix->GetActivePlot().GetY()));
    matrix->Modified();
    plot.paint(recorder);
  }
}

TEST_F(ScatterMatrixTest, CanBeLimitedToTheColumnsInUse)
{
  plot.settings().parameterColumns = {3, 4};
  plot.settings().blockSignals(true);
  plot.settings().setLimitColumVisibility(true);
  plot.settings().blockSignals(false);
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  auto* matrix = plot.container.scatterPlotMatrix.Get();
  EXPECT_THAT(names(matrix->GetVisibleColumns()), ElementsAre("a", "b", "d", "e"));
  EXPECT_EQ(matrix->GetActivePlot(), vtkVector2i(0, 1));
  EXPECT_EQ(matrix->GetSize(), vtkVector2i(4, 4));
  RecordingPainter recorder;
  plot.show();
  plot.paint(recorder);
  EXPECT_NE(matrix->GetMainChart()->GetPlot(0), nullptr) << "the large chart shows the active plot";
}

TEST_F(ScatterMatrixTest, ShowsAllColumnsAgainAfterALimitedView)
{
  plot.settings().setLimitColumVisibility(true);
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  plot.settings().setLimitColumVisibility(false);
  auto* matrix = plot.container.scatterPlotMatrix.Get();
  EXPECT_THAT(names(matrix->GetVisibleColumns()), ElementsAre("a", "b", "c", "d", "e"));
  matrix->Update();
  EXPECT_EQ(matrix->GetSize(), vtkVector2i(5, 5));
}

TEST_F(ScatterMatrixTest, IgnoresColumnsOutsideTheTableAndPositionsOutsideTheGrid)
{
  plot.settings().parameterColumns = {4, 17, -1};
  plot.settings().xColumns = {3};
  plot.settings().yColumns = {99};
  plot.settings().setLimitColumVisibility(true);
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  EXPECT_THAT(names(plot.container.scatterPlotMatrix->GetVisibleColumns()), ElementsAre("d", "e"));
  RecordingPainter recorder;
  plot.show();
  plot.paint(recorder);
}

TEST_F(ScatterMatrixTest, ATableWithoutRowsDoesNotBreakIt)
{
  plot.container.setPlotData(makeTable({{"x", {}}, {"y", {}}}));
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  EXPECT_EQ(plot.container.getItem(), plot.container.scatterPlotMatrix.Get());
}

using Scatter3DTest = StylesTest;

TEST_F(Scatter3DTest, ShowsThreeColumnsWithBlackAxes)
{
  plot.container.setPlotStyle(scatterPlot3D);
  plot.container.redraw();
  auto* chart = plot.container.chartXYZ.Get();
  EXPECT_EQ(plot.container.getItem(), chart);
  EXPECT_EQ(plot.container.chartXY, nullptr);
  std::vector<vtkPlot3D*> plots;
  for (vtkIdType i = 0; i < chart->GetNumberOfItems(); ++i)
    if (auto* p = vtkPlot3D::SafeDownCast(chart->GetItem(i))) plots.push_back(p);
  ASSERT_EQ(plots.size(), 1u) << "one plot, however often it is redrawn";
  EXPECT_TRUE(plots[0]->IsA("vtkPlotPoints3D"));
  EXPECT_EQ(plots[0]->GetXAxisLabel(), "a");
  EXPECT_EQ(plots[0]->GetYAxisLabel(), "b");
  EXPECT_EQ(plots[0]->GetZAxisLabel(), "c");
  EXPECT_EQ(plots[0]->GetPoints().size(), 3u);
  vtkColor4ub const color = chart->GetAxisColor();
  EXPECT_EQ((Color{color[0], color[1], color[2], color[3]}), (Color{0, 0, 0, 255}));
}

TEST_F(Scatter3DTest, SurvivesColumnNumbersOutsideTheTable)
{
  plot.settings().zColumns = {17};
  plot.container.setPlotStyle(scatterPlot3D);
  EXPECT_EQ(plot.container.getItem(), plot.container.chartXYZ.Get());
  plot.settings().xColumns = {-1};
  plot.container.redraw();
}

using ParallelCoordinatesTest = StylesTest;

TEST_F(ParallelCoordinatesTest, ShowsAllColumnsForOneOrTwoChosenOnes)
{
  for (std::vector<int> chosen : {std::vector<int>{1}, std::vector<int>{1, 2}}) {
    plot.settings().yColumns = chosen;
    plot.container.setPlotStyle(scatterPlot);
    plot.container.setPlotStyle(parallelCoordinatesPlot);
    EXPECT_THAT(names(plot.container.chartParallelCoordinates->GetVisibleColumns()),
                ElementsAre("a", "b", "c", "d", "e"));
  }
  EXPECT_EQ(plot.container.getItem(), plot.container.chartParallelCoordinates.Get());
}

TEST_F(ParallelCoordinatesTest, ShowsThreeOrMoreChosenColumnsInTheirOrder)
{
  plot.settings().yColumns = {4, 0, 2};
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  EXPECT_THAT(names(plot.container.chartParallelCoordinates->GetVisibleColumns()),
              ElementsAre("e", "a", "c"));
}

TEST_F(ParallelCoordinatesTest, SkipsChosenColumnsOutsideTheTable)
{
  plot.settings().yColumns = {4, 99, -2};
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  EXPECT_THAT(names(plot.container.chartParallelCoordinates->GetVisibleColumns()), ElementsAre("e"));
}

TEST_F(ParallelCoordinatesTest, SlantsTheNamesOfItsAxes)
{
  plot.settings().yColumns = {0, 1, 2};
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  auto* chart = plot.container.chartParallelCoordinates.Get();
  ASSERT_EQ(chart->GetNumberOfAxes(), 3);
  for (int i = 0; i < 3; ++i)
    EXPECT_DOUBLE_EQ(chart->GetAxis(i)->GetTitleProperties()->GetOrientation(), -45.0);
}

TEST_F(ParallelCoordinatesTest, TakesTheMainTableAndTheColourColumn)
{
  plot.settings().colorColumn = 2;
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  auto* lines = vtkPlotParallelCoordinates::SafeDownCast(plot.container.chartParallelCoordinates->GetPlot(0));
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(lines->GetInput(), plot.container.plotData.Get());
  EXPECT_EQ(lines->GetColorArrayName(), "c");
}

TEST_F(ParallelCoordinatesTest, ANegativeColourColumnMeansNone)
{
  plot.settings().colorColumn = -1;
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  auto* lines = vtkPlotParallelCoordinates::SafeDownCast(plot.container.chartParallelCoordinates->GetPlot(0));
  EXPECT_EQ(lines->GetColorArrayName(), "");
}

TEST_F(ParallelCoordinatesTest, ANegativeColourColumnTakesTheColoursAway)
{
  plot.settings().colorColumn = 0;
  plot.settings().useSolidColor = false;
  plot.container.setPlotStyle(parallelCoordinatesPlot);
  auto* lines = vtkPlotParallelCoordinates::SafeDownCast(plot.container.chartParallelCoordinates->GetPlot(0));
  ASSERT_TRUE(lines->GetScalarVisibility());
  for (int missing : {-1, 100}) {
    plot.settings().colorColumn = 0;
    plot.container.redraw();
    plot.settings().colorColumn = missing;
    plot.container.redraw();
    EXPECT_FALSE(lines->GetScalarVisibility()) << missing;
  }
}

struct NotYetTest : StylesTest, testing::WithParamInterface<int>
{};

TEST_P(NotYetTest, SaysSoInTheTitleAndKeepsThePlots)
{
  plot.container.redraw();
  auto* shown = plot.chart()->GetPlot(0);
  plot.settings().plotTitle = "mine";
  plot.container.setPlotStyle(static_cast<plotStyles>(GetParam()));
  EXPECT_EQ(plot.container.getItem(), plot.chart());
  EXPECT_EQ(plot.chart()->GetTitle(), "Not yet implemented");
  EXPECT_EQ(plot.chart()->GetPlot(0), shown);
  EXPECT_FALSE(plot.settings().signalsBlocked());
  plot.container.setPlotStyle(scatterPlot);
  EXPECT_EQ(plot.chart()->GetTitle(), "Not yet implemented") << "the text replaced the title for good";
}

INSTANTIATE_TEST_SUITE_P(Styles, NotYetTest, testing::Values(1, 2, 10, 1000, -1));

struct StyleChangeTest : StylesTest
{
  /// As a host does it: the item of the new style goes into the scene.
  void change(plotStyles style)
  {
    plot.container.setPlotStyle(style);
    plot.show();
  }
};

// These styles release the plain chart; whoever needs it later gets a new one that works like the first.
TEST_F(StyleChangeTest, APlainChartComesBackAfterAStyleWithoutOne)
{
  for (plotStyles released : {scatterPlotMatrixStyle, scatterPlot3D})
    for (plotStyles next : {scatterPlot, barPlot, parallelCoordinatesPlot, scatterPlot}) {
      change(released);
      EXPECT_EQ(plot.container.chartXY, nullptr) << released;
      change(next);
      ASSERT_NE(plot.container.getItem(), nullptr) << released << " " << next;
      if (next == parallelCoordinatesPlot) continue;
      ASSERT_NE(plot.container.chartXY, nullptr) << released << " " << next;
      EXPECT_EQ(plot.chart()->GetAnnotationLink(), plot.container.annotationLink.Get());
      EXPECT_EQ(plot.chart()->GetSelectionMode(), vtkContextScene::SELECTION_ADDITION);
      EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
    }
}

// A style without a builder leaves its chart without a scene until the view takes it.
TEST_F(StyleChangeTest, NothingIsReportedWhenAPlainChartIsMadeAnew)
{
  change(scatterPlot3D);
  OutputWindowLog log;
  change(barPlot);
  EXPECT_EQ(log.text(), "");
}

TEST_F(StyleChangeTest, TheReturnedPlainChartDrawsTheData)
{
  change(scatterPlot3D);
  change(scatterPlot);
  EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 1), "b");
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_FALSE(recorder.markers().empty());
}

TEST_F(StyleChangeTest, AfterTheCompositeViewThePlainChartFillsTheSceneAgain)
{
  plot.container.setPlotStyle(selectionCdfPlot);
  plot.container.setLinePlotTable(makeScan({}), false);
  auto formerCell = plot.container.chartXY;
  plot.container.setPlotStyle(scatterPlot);
  plot.show();
  EXPECT_NE(plot.container.chartXY, formerCell);
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_EQ(plot.chart()->GetPoint1()[0], plot.container.leftMargin);
  EXPECT_EQ(plot.chart()->GetPoint2()[0], 800 - plot.container.rightMargin);
  EXPECT_EQ(plot.chart()->GetPoint2()[1], 600 - plot.container.topMargin);
}

TEST_F(StyleChangeTest, EveryStyleCanFollowEveryOtherAndBePainted)
{
  plot.container.setLinePlotTable(makeScan({}), false);
  for (int from = 0; from <= 9; ++from)
    for (int to = 0; to <= 9; ++to) {
      change(static_cast<plotStyles>(from));
      change(static_cast<plotStyles>(to));
      RecordingPainter recorder;
      plot.paint(recorder);
      EXPECT_NE(plot.container.getItem(), nullptr) << from << " " << to;
      EXPECT_FALSE(plot.settings().signalsBlocked()) << from << " " << to;
    }
}

} // namespace
} // namespace runsieve::test
