#include "support/MultiPlotScene.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkWeakPointer.h>

#include <QCoreApplication>
#include <QEvent>

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace runsieve::test {
namespace {

/// The large chart and the whole, for three parameters.
struct MultiPlotTest : MultiPlotScene
{
  MultiPlotTest() { load(3); }
};

TEST_F(MultiPlotTest, TakesTheVerticalGutterFirst)
{
  container.horizontalGutter = 11;
  container.verticalGutter = 22;
  container.leftMargin = 1;
  container.bottomMargin = 2;
  container.rightMargin = 3;
  container.topMargin = 4;
  container.redraw();
  EXPECT_EQ(matrix()->GetGutter(), vtkVector2f(22, 11));
  int borders[4];
  matrix()->GetBorders(borders);
  EXPECT_THAT(borders, ElementsAre(1, 2, 3, 4)) << "left, bottom, right, top";
}

TEST_F(MultiPlotTest, TitlesOfTheLargeChartComeFromTheSettings)
{
  settings().plotTitle = "all pairs";
  settings().xLabel = "across";
  settings().yLabel = "upwards";
  container.redraw();
  EXPECT_EQ(chart()->GetTitle(), "all pairs");
  EXPECT_EQ(bottom()->GetTitle(), "across");
  EXPECT_EQ(left()->GetTitle(), "upwards");
  EXPECT_EQ(cell(0, 0)->GetTitle(), "");
}

TEST_F(MultiPlotTest, LaterSettersReachTheLargeChart)
{
  container.setPlotTitle("later");
  container.setXLabel("across");
  container.setShowLegend(true);
  EXPECT_EQ(cell(1, 1)->GetTitle(), "later");
  EXPECT_EQ(cell(1, 1)->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "across");
  EXPECT_TRUE(cell(1, 1)->GetShowLegend());
}

TEST_F(MultiPlotTest, LegendAndLogarithmsDoNotTravelBetweenTheLargeAndThePlainChart)
{
  for (plotStyles next : {scatterPlot, multiPlot, scatterPlotWithErrorBars}) {
    container.setShowLegend(true);
    container.setLogScaleY(true);
    container.setPlotStyle(next);
    show();
    EXPECT_FALSE(chart()->GetShowLegend()) << next;
    EXPECT_FALSE(left()->GetLogScale()) << next;
  }
}

TEST_F(MultiPlotTest, AColumnOfDoublesGivesTheLargeChartFivePercentOfRoom)
{
  EXPECT_DOUBLE_EQ(bottom()->GetUnscaledMinimum(), -2);
  EXPECT_DOUBLE_EQ(bottom()->GetUnscaledMaximum(), 42);
  EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::AUTO);
}

TEST_F(MultiPlotTest, AColumnOfFloatsGivesItNoRoom)
{
  container.plotData->AddColumn(makeColumn<vtkFloatArray, float>("float", {100, 200, 300}));
  settings().xColumns = {static_cast<int>(container.plotData->GetNumberOfColumns()) - 1};
  container.redraw();
  EXPECT_NE(bottom()->GetUnscaledMinimum(), 90);
  EXPECT_NE(bottom()->GetUnscaledMaximum(), 310);
}

TEST_F(MultiPlotTest, LabelsStandAtZeroOneTwoWhateverThePositions)
{
  container.setXTickLabels({"none", "half", "full"});
  container.setXTickPosition({0, 20, 40});
  container.redraw();
  ASSERT_EQ(bottom()->GetTickPositions()->GetNumberOfTuples(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(bottom()->GetTickPositions()->GetValue(i), i);
  EXPECT_EQ(bottom()->GetTickLabels()->GetValue(1), "half");
  container.setXTickLabels({});
  container.redraw();
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_THAT(recorder.texts(), Not(Contains("half")));
}

TEST_F(MultiPlotTest, TheBottomAxisOfTheLargeChartTakesItsOwnScale)
{
  settings().setLogX(true);
  container.redraw();
  EXPECT_TRUE(bottom()->GetLogScale());
  EXPECT_FALSE(cell(0, 0)->GetAxis(vtkAxis::BOTTOM)->GetLogScale());
}

TEST_F(MultiPlotTest, ASelectionShowsInEveryChart)
{
  selectRows(container, {2});
  RecordingPainter recorder;
  paint(recorder);
  int marked = 0;
  for (Stroke const& group : recorder.markers())
    if (group.highlighted) {
      ++marked;
      EXPECT_EQ(group.points.size(), 1u);
    }
  EXPECT_EQ(marked, 4) << "three pairs and the large chart";
}

TEST_F(MultiPlotTest, OtherNumbersOfParametersLeaveNothingBehind)
{
  settings().plotTitle = "title of the large chart";
  for (int n : {5, 2, 3, 1, 5}) {
    load(n);
    for (int column = 0; column < n; ++column)
      for (int row = 0; row < n; ++row) {
        SCOPED_TRACE(std::to_string(n) + ": " + std::to_string(column) + ", " + std::to_string(row));
        bool const big = column == n / 2 && row == n / 2;
        int const span = big ? (n + 1) / 2 : 1;
        EXPECT_EQ(matrix()->GetChartSpan({column, row}), vtkVector2i(span, span));
        EXPECT_EQ(cell(column, row)->GetTitle(), big ? "title of the large chart" : "");
      }
    EXPECT_TRUE(bottom()->GetLabelsVisible());
    EXPECT_TRUE(left()->GetLabelsVisible());
    RecordingPainter recorder;
    paint(recorder);
  }
}

TEST_F(MultiPlotTest, WithoutParametersNothingIsDrawnAndThePlainChartStays)
{
  PlotScene plot;
  auto plain = plot.container.chartXY;
  plot.container.setPlotData(makeTable({{"x", {0, 40}}, {"y", {1, 2}}}));
  plot.container.setPlotStyle(multiPlot);
  plot.show();
  EXPECT_EQ(plot.container.getItem(), plot.container.chartMatrix.Get());
  EXPECT_EQ(plot.container.chartMatrix->GetSize(), vtkVector2i(0, 0));
  EXPECT_EQ(plot.container.chartXY, plain);
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_TRUE(recorder.markers().empty());
}

TEST_F(MultiPlotTest, GoesBackToNothingWhenTheParametersGo)
{
  load(0);
  EXPECT_EQ(matrix()->GetSize(), vtkVector2i(0, 0));
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_TRUE(recorder.markers().empty());
  load(2);
  EXPECT_EQ(drawnColumn(cell(0, 0)->GetPlot(0), 1), "Parameter: b");
}

TEST_F(MultiPlotTest, ThePlainChartIsReleased)
{
  PlotScene plot;
  vtkWeakPointer<vtkChart> plain = plot.chart();
  plot.container.setPlotData(makeTable({{"x", {0, 40}}, {"Parameter: a", {1, 2}}}));
  plot.settings().parameterColumns = {1};
  plot.container.setPlotStyle(multiPlot);
  plot.show();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
  EXPECT_EQ(plain, nullptr);
  EXPECT_EQ(plot.chart(), plot.container.chartMatrix->GetChart({0, 0}));
}

TEST_F(MultiPlotTest, ANameTooShortForThePrefixGivesNoTitle)
{
  container.setPlotData(
      makeTable({{"x", {0, 40}}, {"y", {1, 2}}, {"short", {1, 2}}, {"Parameter: ", {2, 3}}}));
  settings().parameterColumns = {2, 3};
  container.redraw();
  EXPECT_EQ(cell(0, 0)->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "");
  EXPECT_EQ(cell(0, 0)->GetAxis(vtkAxis::LEFT)->GetTitle(), "");
}

TEST_F(MultiPlotTest, AParameterOutsideTheTableLeavesItsChartsWithoutInput)
{
  settings().parameterColumns = {2, 3, 99};
  container.redraw();
  EXPECT_EQ(cell(0, 0)->GetPlot(0)->GetInput(), nullptr);
  EXPECT_EQ(cell(1, 0)->GetPlot(0)->GetInput(), nullptr);
  EXPECT_EQ(drawnColumn(cell(0, 1)->GetPlot(0), 1), "Parameter: b");
  RecordingPainter recorder;
  paint(recorder);
}

} // namespace
} // namespace runsieve::test
