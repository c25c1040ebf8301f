#include "support/CdfScene.h"

#include <runsieve/items/vtkPlotInvisiblePoints.h>
#include <runsieve/items/vtkPlotLineSet.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkCommand.h>
#include <vtkContextMouseEvent.h>
#include <vtkFloatArray.h>
#include <vtkLookupTable.h>
#include <vtkPen.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// The large chart of the composite view.
struct RunsChartTest : CdfScene
{
  void showBands()
  {
    container.generateQuartiles();
    settings().setShowQuantiles(true);
  }
};

TEST_F(RunsChartTest, ShowsRunsAsPoints)
{
  load(1);
  ASSERT_EQ(chart()->GetNumberOfPlots(), 1);
  auto* points = vtkPlotInvisiblePoints::SafeDownCast(runs());
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(points->GetOnlyShowSelected(), 0);
  EXPECT_EQ(points->GetInput(), container.plotData.Get());
  EXPECT_EQ(drawnColumn(points, 0), ": Time [s]");
  EXPECT_EQ(drawnColumn(points, 1), "Molecule: A");
}

TEST_F(RunsChartTest, ShowsRunsAsLines)
{
  load(1);
  settings().setPlotLine(true);
  auto* lines = vtkPlotLineSet::SafeDownCast(runs());
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(lines->GetStride(), 3);
  EXPECT_EQ(lines->GetOnlyShowSelected(), 0);
  EXPECT_EQ(drawnColumn(lines, 1), "Molecule: A");
}

TEST_F(RunsChartTest, WithBandsOnlySelectedRunsAreSeen)
{
  load(1);
  showBands();
  EXPECT_EQ(vtkPlotInvisiblePoints::SafeDownCast(runs())->GetOnlyShowSelected(), 1);
  settings().setPlotLine(true);
  EXPECT_EQ(vtkPlotLineSet::SafeDownCast(runs())->GetOnlyShowSelected(), 1);
}

TEST_F(RunsChartTest, BandsStandBehindTheRunsFromWideToNarrow)
{
  load(1);
  showBands();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 4);
  std::vector<std::string> const columns{"Range", "QRange", "Median"};
  std::vector<Color> const colors{{148, 148, 255, 255}, {64, 64, 255, 255}, {0, 0, 0, 255}};
  for (int i = 0; i < 3; ++i) {
    vtkPlot* band = chart()->GetPlot(i);
    EXPECT_TRUE(band->IsA("vtkPlotFunctionalBag"));
    EXPECT_EQ(band->GetInput(), container.quartileTable.Get());
    EXPECT_EQ(drawnColumn(band, 0), "Time");
    EXPECT_EQ(drawnColumn(band, 1), columns[i]);
    EXPECT_EQ(penColor(band), colors[i]);
    vtkColor4ub const selected = band->GetSelectionPen()->GetColorObject();
    for (int part = 0; part < 3; ++part) EXPECT_EQ(selected[part], colors[i][part]) << columns[i];
  }
}

// Their rows are time points, not rows of the main table.
TEST_F(RunsChartTest, BandsTakeNoPartInSelecting)
{
  load(1);
  showBands();
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(chart()->GetPlot(i)->GetSelectable());
    EXPECT_FALSE(chart()->GetPlot(i)->GetInteractive());
  }
  EXPECT_TRUE(runs()->GetSelectable());
  EXPECT_FALSE(runs()->GetInteractive());
}

TEST_F(RunsChartTest, BandsNeedQuartilesAndTheSwitch)
{
  load(1);
  settings().setShowQuantiles(true);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1) << "no quartiles yet";
  container.generateQuartiles();
  settings().setShowQuantiles(false);
  EXPECT_EQ(chart()->GetNumberOfPlots(), 1);
}

TEST_F(RunsChartTest, SelectsWithTheRightButtonAndPansAndZooms)
{
  load(1);
  EXPECT_EQ(chart()->GetAnnotationLink(), container.annotationLink.Get());
  EXPECT_EQ(chart()->GetActionToButton(vtkChart::SELECT), vtkContextMouseEvent::RIGHT_BUTTON);
  EXPECT_EQ(chart()->GetActionToButton(vtkChart::PAN), vtkContextMouseEvent::LEFT_BUTTON);
  EXPECT_EQ(chart()->GetActionToButton(vtkChart::ZOOM), vtkContextMouseEvent::MIDDLE_BUTTON);
  EXPECT_EQ(chart()->GetClickActionToButton(vtkChart::SELECT), -1);
  EXPECT_TRUE(chart()->HasObserver(vtkCommand::InteractionEvent, container.shiftScaleCallback));
}

TEST_F(RunsChartTest, HasTheTitlesOfTheSettings)
{
  load(1);
  settings().plotTitle = "all runs";
  settings().xLabel = "x";
  settings().yLabel = "y";
  container.redraw();
  EXPECT_EQ(chart()->GetTitle(), "all runs");
  EXPECT_EQ(bottom()->GetTitle(), "x");
  EXPECT_EQ(left()->GetTitle(), "y");
}

TEST_F(RunsChartTest, TheTimeAxisReachesHalfAPercentBeyondTheData)
{
  load(1);
  for (vtkIdType row = 0; row < 18; ++row)
    container.plotData->SetValueByName(row, ": Time [s]", 10.0 + static_cast<double>(row % 3) * 5);
  container.plotData->GetColumnByName(": Time [s]")->Modified();
  container.redraw();
  EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(bottom()->GetUnscaledMinimum(), 0.995 * 10);
  EXPECT_DOUBLE_EQ(bottom()->GetUnscaledMaximum(), 1.005 * 20);
  EXPECT_EQ(left()->GetBehavior(), vtkAxis::AUTO);
}

TEST_F(RunsChartTest, ARememberedWindowFixesBothAxes)
{
  load(1);
  container.coordinateWindows[{1, 0, selectionCdfPlot}] = {0.25, 5, 1.5, 40, true};
  container.redraw();
  EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(bottom()->GetMinimum(), 0.25);
  EXPECT_DOUBLE_EQ(bottom()->GetMaximum(), 1.5);
  EXPECT_EQ(left()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(left()->GetMinimum(), 5);
  EXPECT_DOUBLE_EQ(left()->GetMaximum(), 40);
  container.coordinateWindows.clear();
  container.redraw();
  EXPECT_EQ(bottom()->GetBehavior(), vtkAxis::FIXED);
  EXPECT_EQ(left()->GetBehavior(), vtkAxis::AUTO);
}

TEST_F(RunsChartTest, APanIsRemembered)
{
  load(1);
  bottom()->SetRange(0.5, 1.0);
  chart()->InvokeEvent(vtkCommand::InteractionEvent);
  bottom()->SetRange(0, 100);
  container.redraw();
  EXPECT_DOUBLE_EQ(bottom()->GetMinimum(), 0.5);
  EXPECT_DOUBLE_EQ(bottom()->GetMaximum(), 1.0);
}

TEST_F(RunsChartTest, ATimeColumnThatIsMissingOrNotOfDoublesLeavesTheRangeAlone)
{
  load(1);
  container.plotData->AddColumn(makeColumn<vtkFloatArray, float>("f", std::vector<float>(18, 7.0f)));
  for (int column : {4, 99, -1}) {
    settings().xColumns = {column};
    container.redraw();
    EXPECT_LT(bottom()->GetUnscaledMaximum(), 1e100) << column;
    RecordingPainter recorder;
    paint(recorder);
  }
}

TEST_F(RunsChartTest, TickLabelsStandAtZeroOneTwo)
{
  container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"none", "half"});
  container.xTickPositions = makeColumn("positions", {5.0, 35.0});
  load(1);
  ASSERT_EQ(bottom()->GetTickPositions()->GetNumberOfTuples(), 2);
  EXPECT_EQ(bottom()->GetTickPositions()->GetValue(1), 1.0) << "positions do not count in this view";
  EXPECT_EQ(bottom()->GetTickLabels()->GetValue(1), "half");
}

TEST_F(RunsChartTest, RunsHaveTheColourOfTheSettings)
{
  load(1);
  settings().red = 12;
  container.redraw();
  auto* points = vtkPlotPoints::SafeDownCast(runs());
  EXPECT_EQ(penColor(points)[0], 12);
  EXPECT_FALSE(points->GetScalarVisibility());
}

TEST_F(RunsChartTest, RunsCanBeColouredByAColumn)
{
  load(1);
  settings().useSolidColor = false;
  settings().colorColumn = 3;
  container.redraw();
  auto* points = vtkPlotPoints::SafeDownCast(runs());
  EXPECT_TRUE(points->GetScalarVisibility());
  EXPECT_EQ(points->GetColorArrayName(), "Parameter: k1");
  RecordingPainter recorder;
  paint(recorder);
  ASSERT_FALSE(recorder.markers().empty());
  EXPECT_TRUE(recorder.markers()[0].ownColors);
}

TEST_F(RunsChartTest, CanBePaintedBeforeAnySelectionWithoutAColourColumn)
{
  load(1);
  settings().useSolidColor = false;
  settings().colorColumn = -1;
  container.redraw();
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_FALSE(recorder.markers().empty());
}

struct PaintedRunsTest : RunsChartTest
{
  /// Runs whose highlight was painted; their lines start at 10 r.
  std::vector<int> highlighted()
  {
    RecordingPainter recorder;
    paint(recorder);
    std::vector<int> found;
    for (Stroke const& line : recorder.polyLines())
      if (line.pen == selectionColor) found.push_back(static_cast<int>(line.points[0].second / 10));
    return found;
  }
};

TEST_F(PaintedRunsTest, RunsThatPassThroughAllPlacesLightUp)
{
  load(1);
  settings().setPlotLine(true);
  selectRows(container, {1 * 3 + 0, 2 * 3 + 0, 2 * 3 + 2, 5 * 3 + 2});
  EXPECT_THAT(highlighted(), ElementsAre(2, 2));
}

TEST_F(PaintedRunsTest, ASecondSelectionReplacesTheHighlight)
{
  load(1);
  settings().setPlotLine(true);
  selectRows(container, {0});
  selectRows(container, {4 * 3});
  EXPECT_THAT(highlighted(), ElementsAre(4));
}

TEST_F(PaintedRunsTest, BandsAndTheHighlightArePaintedTogether)
{
  load(1);
  settings().setPlotLine(true);
  showBands();
  selectRows(container, {3 * 3 + 1});
  EXPECT_THAT(highlighted(), ElementsAre(3));
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_THAT(recorder.ofKind(Stroke::QuadStrip), SizeIs(2)) << "range and quartiles";
}

// Press, move and release on the chart itself, as a window would send them.
TEST_F(PaintedRunsTest, ADragOverBandsSelectsTheRunsUnderIt)
{
  load(5);
  settings().setPlotLine(true);
  showBands();
  RecordingPainter recorder;
  paint(recorder);
  vtkChart* dragged = chart();
  vtkContextMouseEvent mouse;
  mouse.SetInteractor(nullptr);
  mouse.SetButton(vtkContextMouseEvent::RIGHT_BUTTON);
  auto const corner1 = dragged->GetPoint1();
  auto const corner2 = dragged->GetPoint2();
  mouse.SetPos(vtkVector2f(corner1[0] + 1.0f, corner1[1] + 1.0f));
  dragged->MouseButtonPressEvent(mouse);
  mouse.SetPos(vtkVector2f(corner2[0] - 1.0f, corner2[1] - 1.0f));
  dragged->MouseMoveEvent(mouse);
  dragged->MouseButtonReleaseEvent(mouse);
  auto flags = vtkSmartPointer<vtkIntArray>::Take(container.getCurrentSelection());
  ASSERT_NE(flags, nullptr);
  EXPECT_GT(flags->GetRange()[1], 0) << "something was selected";
  EXPECT_EQ(scene->GetNumberOfItems(), 1u);
}

} // namespace
} // namespace runsieve::test
