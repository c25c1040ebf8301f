#include "support/CdfScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkContextMouseEvent.h>
#include <vtkWeakPointer.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

/// Which parameters the composite view shows, and how it is laid out.
using SelectionCdfPlotTest = CdfScene;

TEST_F(SelectionCdfPlotTest, TheMatrixIsTheOnlyItemOfTheScene)
{
  load(2);
  EXPECT_EQ(container.getItem(), &matrix());
  ASSERT_EQ(scene->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene->GetItem(0), &matrix());
  container.redraw();
  EXPECT_EQ(scene->GetNumberOfItems(), 1u);
}

TEST_F(SelectionCdfPlotTest, BeforeAnySelectionTheFirstFourParametersAreShown)
{
  load(6);
  EXPECT_THAT(shown(), ElementsAre("k1", "k2", "k3", "k4"));
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(4, 2));
}

TEST_F(SelectionCdfPlotTest, FewerParametersAreAllShown)
{
  for (int parameters : {1, 2, 3, 4}) {
    load(parameters);
    EXPECT_THAT(shown(), SizeIs(parameters));
    EXPECT_EQ(matrix().GetSize(), vtkVector2i(parameters, 2));
  }
}

TEST_F(SelectionCdfPlotTest, SignificantParametersComeFirstAndOthersFillTheLastRow)
{
  load(10);
  std::vector<PlotContainer::KsStatistics> statistics(10, insignificant);
  for (int i : {1, 3, 4, 6, 8, 9}) statistics[i] = significant;
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k2", "k4", "k5", "k7", "k9", "k10", "k1", "k3"));
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(4, 4));
  EXPECT_EQ(matrix().GetChartSpan({0, 2}), vtkVector2i(4, 2));
  EXPECT_EQ(matrix().GetChart({0, 2}), chart());
}

TEST_F(SelectionCdfPlotTest, WithoutASignificantParameterTheFirstFourAreShown)
{
  load(6);
  drawWith(std::vector<PlotContainer::KsStatistics>(6, insignificant));
  EXPECT_THAT(shown(), ElementsAre("k1", "k2", "k3", "k4"));
}

TEST_F(SelectionCdfPlotTest, SignificanceNeedsASmallPValueAndALargeStatistic)
{
  settings().setPThreshold(0.05);
  settings().setKsThreshold(0.1);
  load(6);
  std::vector<PlotContainer::KsStatistics> statistics(6, insignificant);
  statistics[3] = {0.01, 0.05};
  statistics[4] = {0.5, 0.9};
  statistics[5] = {0.01, 0.9};
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k6", "k1", "k2", "k3"));
}

TEST_F(SelectionCdfPlotTest, ValuesAtTheThresholdsAreSignificant)
{
  settings().setPThreshold(0.03);
  settings().setKsThreshold(0.4);
  load(5);
  std::vector<PlotContainer::KsStatistics> statistics(5, insignificant);
  statistics[4] = {0.03, 0.4};
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k5", "k1", "k2", "k3"));
}

TEST_F(SelectionCdfPlotTest, ANotANumberIsNotSignificant)
{
  load(5);
  std::vector<PlotContainer::KsStatistics> statistics(5, insignificant);
  statistics[4] = {std::numeric_limits<double>::quiet_NaN(), 0.9};
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k1", "k2", "k3", "k4"));
}

TEST_F(SelectionCdfPlotTest, MovingAThresholdRegroupsTheGrid)
{
  load(5);
  std::vector<PlotContainer::KsStatistics> statistics(5, insignificant);
  statistics[4] = {0.03, 0.4};
  drawWith(statistics);
  settings().setPThreshold(0.01);
  EXPECT_THAT(shown(), ElementsAre("k1", "k2", "k3", "k4"));
}

TEST_F(SelectionCdfPlotTest, AFullLastRowNeedsNoFilling)
{
  load(6);
  std::vector<PlotContainer::KsStatistics> statistics(6, significant);
  statistics[0] = statistics[1] = insignificant;
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k3", "k4", "k5", "k6"));
}

TEST_F(SelectionCdfPlotTest, FillingEndsWithTheParameters)
{
  load(6);
  std::vector<PlotContainer::KsStatistics> statistics(6, significant);
  statistics[2] = insignificant;
  drawWith(statistics);
  EXPECT_THAT(shown(), ElementsAre("k1", "k2", "k4", "k5", "k6", "k3"));
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(4, 4));
}

TEST_F(SelectionCdfPlotTest, ThreeParametersStandInOneRowBelowTheRuns)
{
  load(3);
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(3, 2));
  EXPECT_EQ(matrix().GetChartSpan({0, 1}), vtkVector2i(3, 1));
  EXPECT_EQ(matrix().GetChart({0, 1}), chart());
  for (int column = 0; column < 3; ++column) EXPECT_EQ(matrix().GetChartSpan({column, 0}), vtkVector2i(1, 1));
}

TEST_F(SelectionCdfPlotTest, StatisticsOfAWiderTableAreIgnored)
{
  load(2);
  drawWith(std::vector<PlotContainer::KsStatistics>(7, significant));
  EXPECT_THAT(shown(), ElementsAre("k1", "k2"));
  drawWith({insignificant, insignificant, significant, significant});
  EXPECT_THAT(shown(), ElementsAre("k1", "k2"));
}

TEST_F(SelectionCdfPlotTest, MissingStatisticsFillUpWithoutShowingAParameterTwice)
{
  load(6);
  drawWith({insignificant, significant});
  EXPECT_THAT(shown(), ElementsAre("k2", "k1", "k3", "k4"));
}

TEST_F(SelectionCdfPlotTest, WithoutParametersTheViewSurvives)
{
  load(0);
  EXPECT_EQ(container.getItem(), &matrix());
  EXPECT_EQ(scene->GetNumberOfItems(), 1u);
  RecordingPainter recorder;
  paint(recorder);
  drawWith({significant});
}

TEST_F(SelectionCdfPlotTest, GuttersAndMarginsLeaveRoomForTitles)
{
  container.horizontalGutter = 11;
  container.verticalGutter = 22;
  container.leftMargin = 1;
  container.bottomMargin = 2;
  container.rightMargin = 3;
  container.topMargin = 4;
  load(2);
  EXPECT_EQ(matrix().GetGutter(), vtkVector2f(11, 47));
  int borders[4];
  matrix().GetBorders(borders);
  EXPECT_THAT(borders, ElementsAre(1, 2, 3, 29)) << "left, bottom, right, top";
}

TEST_F(SelectionCdfPlotTest, RankedTablesAreMadeOnceAndKept)
{
  load(2);
  ASSERT_THAT(container.tables, SizeIs(2));
  EXPECT_TRUE(settings().rankedParametersValid);
  EXPECT_EQ(container.tables[0]->GetNumberOfRows(), 6) << "one row per run";
  auto ranked = container.tables[0];
  container.redraw();
  EXPECT_EQ(container.tables[0], ranked);
}

TEST_F(SelectionCdfPlotTest, RankedTablesOfOtherDataAreMadeAnew)
{
  load(2);
  container.setPlotStyle(scatterPlot);
  vtkNew<vtkTable> other;
  other->DeepCopy(container.plotData);
  for (vtkIdType row = 0; row < other->GetNumberOfRows(); ++row)
    other->SetValueByName(row, "Parameter: k1", 500.0);
  container.setPlotData(other.Get());
  container.setPlotStyle(selectionCdfPlot);
  ASSERT_GE(container.tables.size(), 2u);
  EXPECT_NEAR(container.tables[0]->GetValueByName(0, "Sorted k1").ToDouble(), 500, 50);
}

TEST_F(SelectionCdfPlotTest, RankedTablesThatVanishedAreMadeAnew)
{
  load(2);
  container.tables = {nullptr, nullptr};
  container.redraw();
  EXPECT_NE(container.tables[0], nullptr);
  container.tables.clear();
  container.redraw();
  ASSERT_THAT(container.tables, SizeIs(2));
  EXPECT_EQ(small(0, 0)->GetPlot(0)->GetInput(), container.tables[0].Get());
}

TEST_F(SelectionCdfPlotTest, SideTablesThatAreNullDrawNothing)
{
  load(1);
  container.tables.resize(8);
  container.redraw();
  RecordingPainter recorder;
  paint(recorder);
  int curves = 0;
  for (Stroke const& line : recorder.polyLines()) curves += line.points.size() == 2 * 6 + 2;
  EXPECT_EQ(curves, 1) << "that of all runs";
  for (vtkIdType i = 1; i < small(0, 0)->GetNumberOfPlots(); ++i)
    EXPECT_EQ(drawnColumn(small(0, 0)->GetPlot(i), 1), "") << i;
}

TEST_F(SelectionCdfPlotTest, NamesOfAnEarlierWiderTableDoNoHarm)
{
  load(4);
  selectRows(container, {0});
  container.setPlotData(makeTable({{"Molecule: A", {1, 2, 3, 4, 5, 6}},
                                   {": Time [s]", {0, 1, 2, 0, 1, 2}},
                                   {": Run Index", {0, 0, 0, 1, 1, 1}},
                                   {"Parameter: k1", {1, 1, 1, 2, 2, 2}}}));
  container.redraw();
  selectRows(container, {1});
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_EQ(scene->GetItem(0), &matrix());
}

// Another table in the same view changes the number of cells; each chart must forget its former role.
struct RolesTest : CdfScene
{
  void expectRoles()
  {
    vtkVector2i const size = matrix().GetSize();
    for (int row = 0; row < size.GetY(); ++row)
      for (int column = 0; column < size.GetX(); ++column) {
        vtkChart* cell = small(column, row);
        bool const large = cell == chart();
        bool const used = cell->GetNumberOfPlots() > 0;
        std::string const where = "column " + std::to_string(column) + ", row " + std::to_string(row);
        EXPECT_EQ(cell->GetInteractive(), used) << where;
        for (int i = 0; i < 4; ++i) EXPECT_FALSE(axis(cell, i)->GetInteractive()) << where;
        if (!used) continue;
        EXPECT_EQ(cell->GetAnnotationLink(), large ? container.annotationLink.Get() : nullptr) << where;
        EXPECT_EQ(cell->GetActionToButton(vtkChart::SELECT), large ? vtkContextMouseEvent::RIGHT_BUTTON : -1)
            << where;
        EXPECT_EQ(cell->GetActionToButton(vtkChart::PAN), large ? vtkContextMouseEvent::LEFT_BUTTON : -1)
            << where;
        EXPECT_EQ(cell->GetActionToButton(vtkChart::ZOOM), large ? vtkContextMouseEvent::MIDDLE_BUTTON : -1)
            << where;
        EXPECT_EQ(axis(cell, 0)->GetLabelsVisible(), column == 0) << where;
        if (!large) {
          EXPECT_EQ(cell->GetTitle(), "") << where;
        }
        EXPECT_EQ(axis(cell, 1)->GetBehavior(), large ? vtkAxis::FIXED : vtkAxis::AUTO) << where;
        EXPECT_EQ(axis(cell, 0)->GetBehavior(), !large && column == 0 ? vtkAxis::FIXED : vtkAxis::AUTO)
            << where;
      }
  }
};

TEST_F(RolesTest, HoldWhileTheGridGrowsAndShrinks)
{
  container.xTickLabels = makeColumn<vtkStringArray, std::string>("labels", {"none", "half", "full"});
  settings().plotTitle = "all runs";
  for (int parameters : {16, 3, 8, 1, 24, 6, 2, 16}) {
    load(parameters);
    drawWith(std::vector<PlotContainer::KsStatistics>(parameters, significant));
    EXPECT_THAT(shown(), SizeIs(parameters));
    EXPECT_EQ(chart()->GetTitle(), "all runs");
    for (int column = 0; column < std::min(parameters, 4); ++column)
      EXPECT_EQ(axis(small(column, 0), 1)->GetTickLabels()->LookupValue("half"), -1)
          << "ticks of the large chart";
    expectRoles();
  }
}

TEST_F(RolesTest, HoldAfterASelectionWasCleared)
{
  load(6);
  selectRows(container, {0, 3});
  EXPECT_NE(small(0, 0)->GetTitle(), "");
  selectRows(container, {});
  expectRoles();
}

// The redraw often runs inside a mouse event of the very chart that it drops.
TEST_F(RolesTest, AChartThatIsDroppedOutlivesTheRedraw)
{
  load(16);
  drawWith(std::vector<PlotContainer::KsStatistics>(16, significant));
  vtkWeakPointer<vtkChart> former = container.chartXY.Get();
  drawWith(std::vector<PlotContainer::KsStatistics>(16, insignificant));
  EXPECT_NE(former, nullptr);
}

} // namespace
} // namespace runsieve::test
