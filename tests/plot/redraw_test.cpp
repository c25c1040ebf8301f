#include "support/PlotScene.h"

#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <gmock/gmock.h>
#include <vtkCommand.h>
#include <vtkFloatArray.h>
#include <vtkPlotPoints.h>

#include <QSignalSpy>

using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// The redraw itself, and the style that draws two columns.
struct RedrawTest : testing::Test
{
  PlotScene plot;

  RedrawTest()
  {
    plot.container.setPlotData(
        makeTable({{"time", {0, 10, 20, 40}}, {"a", {1, 2, 3, 4}}, {"b", {5, 6, 7, 8}}}));
    plot.settings().yColumns = {1};
  }

  vtkPlotPoints* points() { return vtkPlotPoints::SafeDownCast(plot.chart()->GetPlot(0)); }
};

TEST_F(RedrawTest, WithoutASceneItSaysSoAndLeavesTheSettingsBlocked)
{
  PlotContainer alone(nullptr);
  testing::internal::CaptureStdout();
  alone.redraw();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "void PlotContainer::redraw(): invalid scene\n");
  QSignalSpy changes(alone.metaData, &PlotMetaData::redrawNeeded);
  alone.setPlotStyle(scatterPlot3D);
  EXPECT_EQ(changes.count(), 0);

  vtkNew<vtkContextScene> scene;
  scene->AddItem(alone.getItem());
  alone.redraw();
  alone.setPlotStyle(scatterPlot);
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(RedrawTest, AChangeOfSettingsRedrawsOnce)
{
  plot.container.redraw();
  plot.settings().setPlotLine(true);
  EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
  EXPECT_TRUE(points()->IsA("vtkPlotLineSet"));
  EXPECT_FALSE(plot.settings().signalsBlocked());
}

TEST_F(RedrawTest, LeavesTheItemsOfTheSceneAlone)
{
  for (plotStyles style :
       {scatterPlotMatrixStyle, scatterPlot3D, parallelCoordinatesPlot, scatterPlot, barPlot}) {
    auto* shown = plot.scene->GetItem(0);
    plot.container.setPlotStyle(style);
    ASSERT_EQ(plot.scene->GetNumberOfItems(), 1u) << style;
    EXPECT_EQ(plot.scene->GetItem(0), shown) << style;
    if (style != barPlot) {
      EXPECT_EQ(plot.container.getItem()->GetScene(), plot.scene.Get()) << style;
    }
  }
}

TEST_F(RedrawTest, DrawsTheChosenColumnsAsPoints)
{
  plot.settings().pointSize = 7.5;
  plot.settings().markerStyle = VTK_MARKER_DIAMOND;
  plot.container.redraw();
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 1);
  ASSERT_NE(points(), nullptr);
  EXPECT_FALSE(points()->IsA("vtkPlotLineSet"));
  EXPECT_EQ(points()->GetInput(), plot.container.plotData.Get()) << "the table is not copied";
  EXPECT_EQ(drawnColumn(points(), 0), "time");
  EXPECT_EQ(drawnColumn(points(), 1), "a");
  EXPECT_FLOAT_EQ(points()->GetMarkerSize(), 7.5f);
  EXPECT_EQ(points()->GetMarkerStyle(), VTK_MARKER_DIAMOND);
  EXPECT_EQ(plot.container.getItem(), plot.chart());
  EXPECT_EQ(plot.chart()->GetAnnotationLink(), plot.container.annotationLink.Get());
}

TEST_F(RedrawTest, DrawsRunsAsLines)
{
  plot.settings().setStride(2);
  plot.settings().setPlotLine(true);
  auto* lines = vtkPlotLineSet::SafeDownCast(plot.chart()->GetPlot(0));
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(lines->GetStride(), 2);
  EXPECT_EQ(lines->GetOnlyShowSelected(), 0);
  EXPECT_EQ(drawnColumn(lines, 1), "a");
  RecordingPainter recorder;
  plot.paint(recorder);
  int runs = 0;
  for (Stroke const& line : recorder.polyLines())
    if (line.points.front() == Point(0, 1) || line.points.front() == Point(20, 3)) ++runs;
  EXPECT_EQ(runs, 2);
}

// The item under the mouse would otherwise swallow the end of a drag when a redraw replaces it meanwhile.
TEST_F(RedrawTest, PlotsLeaveTheMouseToTheChart)
{
  plot.container.redraw();
  EXPECT_FALSE(points()->GetInteractive());
  EXPECT_TRUE(points()->GetSelectable());
}

TEST_F(RedrawTest, RebuildsThePlotsInTheSameChart)
{
  plot.container.redraw();
  auto* chart = plot.chart();
  vtkSmartPointer<vtkPlot> former = points();
  plot.container.redraw();
  EXPECT_EQ(plot.chart(), chart);
  EXPECT_EQ(chart->GetNumberOfPlots(), 1);
  EXPECT_NE(chart->GetPlot(0), former);
}

TEST_F(RedrawTest, ShowsTitles)
{
  plot.settings().plotTitle = "all runs";
  plot.settings().xLabel = "Time [s]";
  plot.settings().yLabel = "A";
  plot.container.redraw();
  EXPECT_EQ(plot.chart()->GetTitle(), "all runs");
  EXPECT_EQ(plot.bottom()->GetTitle(), "Time [s]");
  EXPECT_EQ(plot.left()->GetTitle(), "A");
}

TEST_F(RedrawTest, KeepsTheMarginsAroundThePlotArea)
{
  plot.container.leftMargin = 150;
  plot.container.bottomMargin = 90;
  plot.container.rightMargin = 60;
  plot.container.topMargin = 70;
  plot.container.redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_EQ(plot.chart()->GetPoint1()[0], 150);
  EXPECT_EQ(plot.chart()->GetPoint1()[1], 90);
  EXPECT_EQ(plot.chart()->GetPoint2()[0], 800 - 60);
  EXPECT_EQ(plot.chart()->GetPoint2()[1], 600 - 70);
}

TEST_F(RedrawTest, ColumnNumbersOutsideTheTableLeaveThePlotEmpty)
{
  for (int column : {-1, 3, 1000000}) {
    plot.container.setPlotCols(column, 1, 0, false);
    EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 1), "") << column;
    plot.container.setPlotCols(0, column, 0, false);
    EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 1), "") << column;
    RecordingPainter recorder;
    plot.paint(recorder);
    EXPECT_THAT(recorder.markers(), IsEmpty()) << column;
  }
}

TEST_F(RedrawTest, ATableWithoutColumnsCanBeDrawn)
{
  plot.container.setPlotData(vtkSmartPointer<vtkTable>::New());
  plot.container.redraw();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_THAT(recorder.markers(), IsEmpty());
}

TEST_F(RedrawTest, ObservesTheChartForWindows)
{
  plot.container.redraw();
  plot.container.redraw();
  auto* callback = plot.container.shiftScaleCallback.Get();
  EXPECT_TRUE(plot.chart()->HasObserver(vtkCommand::InteractionEvent, callback));
  plot.settings().blockSignals(true);
  plot.settings().setPlotStyle(barPlot);
  plot.container.redraw();
  EXPECT_FALSE(plot.chart()->HasObserver(vtkCommand::InteractionEvent, callback));
}

// A click on a point without a drag would add its row to the link without telling anybody.
TEST_F(RedrawTest, AClickOnAPointSelectsNothing)
{
  plot.container.redraw();
  EXPECT_EQ(plot.chart()->GetClickActionToButton(vtkChart::SELECT), -1);
}

} // namespace
} // namespace runsieve::test
