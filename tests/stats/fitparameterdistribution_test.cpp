#include "support/FitDistributionScene.h"

#include <gmock/gmock.h>
#include <vtkContextMouseEvent.h>

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace runsieve::test {
namespace {

/// Which charts the course of a fit shows, and where.
using FitDistributionTest = FitDistributionScene;

TEST_F(FitDistributionTest, TheMatrixIsTheItemAndKnowsTheScene)
{
  load(3);
  EXPECT_EQ(container.getItem(), &matrix());
  EXPECT_EQ(matrix().GetScene(), scene.Get());
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(3, 3));
}

TEST_F(FitDistributionTest, TheItemsOfTheSceneStay)
{
  vtkAbstractContextItem* before = scene->GetItem(0);
  load(3);
  ASSERT_EQ(scene->GetNumberOfItems(), 1u);
  EXPECT_EQ(scene->GetItem(0), before);
}

TEST_F(FitDistributionTest, TakesTheVerticalGutterFirstAndAddsNothing)
{
  container.horizontalGutter = 11;
  container.verticalGutter = 22;
  container.leftMargin = 1;
  container.bottomMargin = 2;
  container.rightMargin = 3;
  container.topMargin = 4;
  load(2);
  EXPECT_EQ(matrix().GetGutter(), vtkVector2f(22, 11));
  int borders[4];
  matrix().GetBorders(borders);
  EXPECT_THAT(borders, ElementsAre(1, 2, 3, 4)) << "left, bottom, right, top";
}

TEST_F(FitDistributionTest, ThreeParametersFillTheTriangleUpToTheAntiDiagonal)
{
  load(3);
  EXPECT_THAT(usedCells(),
              UnorderedElementsAre(Cell(0, 0), Cell(0, 1), Cell(1, 0), Cell(0, 2), Cell(1, 1), Cell(2, 0)));
  for (Cell const& used : usedCells()) {
    EXPECT_EQ(cell(used.first, used.second)->GetNumberOfPlots(), 1);
    EXPECT_NE(points(used.first, used.second), nullptr);
    EXPECT_EQ(points(used.first, used.second)->GetInput(), container.plotData.Get());
  }
}

TEST_F(FitDistributionTest, APairShowsAParameterAgainstOneCountedFromTheEnd)
{
  load(3);
  EXPECT_THAT(drawnPair(cell(0, 0)), Pair("Parameter: k1", "Parameter: k3"));
  EXPECT_THAT(drawnPair(cell(0, 1)), Pair("Parameter: k1", "Parameter: k2"));
  EXPECT_THAT(drawnPair(cell(1, 0)), Pair("Parameter: k2", "Parameter: k3"));
}

TEST_F(FitDistributionTest, TheAntiDiagonalShowsEachParameterOverTheIterations)
{
  load(3);
  EXPECT_THAT(drawnPair(cell(0, 2)), Pair("iteration", "Parameter: k1"));
  EXPECT_THAT(drawnPair(cell(1, 1)), Pair("iteration", "Parameter: k2"));
  EXPECT_THAT(drawnPair(cell(2, 0)), Pair("iteration", "Parameter: k3"));
}

TEST_F(FitDistributionTest, TheParameterColumnsNeedNotBeNeighbours)
{
  load(4);
  settings().parameterColumns = {2, 5};
  draw();
  EXPECT_THAT(drawnPair(cell(0, 0)), Pair("Parameter: k1", "Parameter: k4"));
  EXPECT_THAT(drawnPair(cell(1, 0)), Pair("iteration", "Parameter: k4"));
}

TEST_F(FitDistributionTest, OneParameterHasNoPairs)
{
  load(1);
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(1, 1));
  EXPECT_THAT(usedCells(), ElementsAre(Cell(0, 0)));
  EXPECT_THAT(drawnPair(cell(0, 0)), Pair("iteration", "Parameter: k1"));
  EXPECT_EQ(cell(0, 0)->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "Iteration");
}

TEST_F(FitDistributionTest, NoParameterLeavesAnEmptyMatrix)
{
  load(0);
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(0, 0));
  EXPECT_EQ(container.getItem(), &matrix());
  paintAll();
  load(2);
  load(0);
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(0, 0));
  paintAll();
}

TEST_F(FitDistributionTest, CellsAboveTheAntiDiagonalAreEmptyAndDeafToTheMouse)
{
  load(4);
  for (int x = 0; x < 4; ++x)
    for (int y = 4 - x; y < 4; ++y) {
      EXPECT_EQ(cell(x, y)->GetNumberOfPlots(), 0) << x << ", " << y;
      EXPECT_FALSE(cell(x, y)->GetInteractive()) << x << ", " << y;
    }
  EXPECT_TRUE(cell(0, 0)->GetInteractive());
}

TEST_F(FitDistributionTest, OnlyTheLeftColumnAndTheBottomRowOfThePairsCarryLabels)
{
  load(4);
  for (int i = 0; i <= 2; ++i)
    for (int j = 0; j <= 2 - i; ++j) {
      vtkAxis* horizontal = cell(i, j)->GetAxis(vtkAxis::BOTTOM);
      vtkAxis* vertical = cell(i, j)->GetAxis(vtkAxis::LEFT);
      EXPECT_EQ(horizontal->GetTitle(), j == 0 ? "k" + std::to_string(i + 1) : "") << i << ", " << j;
      EXPECT_EQ(horizontal->GetLabelsVisible(), j == 0) << i << ", " << j;
      EXPECT_EQ(vertical->GetTitle(), i == 0 ? "k" + std::to_string(4 - j) : "") << i << ", " << j;
      EXPECT_EQ(vertical->GetLabelsVisible(), i == 0) << i << ", " << j;
    }
}

TEST_F(FitDistributionTest, ChartsOverTheIterationsAreTitledOnBothAxes)
{
  load(3);
  for (int i = 0; i < 3; ++i) {
    vtkChart* course = cell(i, 2 - i);
    EXPECT_EQ(course->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "Iteration");
    EXPECT_EQ(course->GetAxis(vtkAxis::LEFT)->GetTitle(), "k" + std::to_string(i + 1));
    EXPECT_TRUE(course->GetAxis(vtkAxis::BOTTOM)->GetLabelsVisible());
    EXPECT_TRUE(course->GetAxis(vtkAxis::LEFT)->GetLabelsVisible());
  }
}

TEST_F(FitDistributionTest, ANameShorterThanThePrefixGivesAnEmptyTitle)
{
  container.setPlotData(makeTable({{"score", {1, 2}}, {"iteration", {0, 1}}, {"short", {1, 2}}}));
  settings().parameterColumns = {2};
  draw();
  EXPECT_EQ(drawnColumn(points(0, 0), 1), "short");
  EXPECT_EQ(cell(0, 0)->GetAxis(vtkAxis::LEFT)->GetTitle(), "");
}

TEST_F(FitDistributionTest, LogarithmicParameterAxesDoNotTouchTheIterations)
{
  load(3);
  for (bool log : {true, false}) {
    settings().setLogParameterAxes(log);
    for (auto [x, y] : {Cell(0, 0), Cell(0, 1), Cell(1, 0)}) {
      EXPECT_EQ(cell(x, y)->GetAxis(vtkAxis::BOTTOM)->GetLogScale(), log);
      EXPECT_EQ(cell(x, y)->GetAxis(vtkAxis::LEFT)->GetLogScale(), log);
    }
    for (auto [x, y] : {Cell(0, 2), Cell(1, 1), Cell(2, 0)}) {
      EXPECT_FALSE(cell(x, y)->GetAxis(vtkAxis::BOTTOM)->GetLogScale());
      EXPECT_EQ(cell(x, y)->GetAxis(vtkAxis::LEFT)->GetLogScale(), log);
    }
  }
}

TEST_F(FitDistributionTest, PairsAreSelectedInByTheRightButtonAndNeverMoved)
{
  load(3);
  for (auto [x, y] : {Cell(0, 0), Cell(0, 1), Cell(1, 0)}) {
    EXPECT_EQ(cell(x, y)->GetAnnotationLink(), container.annotationLink.Get());
    EXPECT_EQ(cell(x, y)->GetActionToButton(vtkChart::SELECT), vtkContextMouseEvent::RIGHT_BUTTON);
    EXPECT_EQ(cell(x, y)->GetActionToButton(vtkChart::PAN), -1);
    EXPECT_EQ(cell(x, y)->GetActionToButton(vtkChart::ZOOM), -1);
    EXPECT_EQ(matrix().GetChartSpan({x, y}), vtkVector2i(1, 1));
  }
}

TEST_F(FitDistributionTest, ChartsOverTheIterationsAreNotLinkedAndNeverMoved)
{
  load(3);
  for (auto [x, y] : {Cell(0, 2), Cell(1, 1), Cell(2, 0)}) {
    EXPECT_EQ(cell(x, y)->GetAnnotationLink(), nullptr);
    EXPECT_EQ(cell(x, y)->GetActionToButton(vtkChart::PAN), -1);
    EXPECT_EQ(cell(x, y)->GetActionToButton(vtkChart::ZOOM), -1);
  }
}

TEST_F(FitDistributionTest, SpansOfAnotherStyleInTheSameMatrixAreGone)
{
  load(4);
  settings().setPlotStyle(multiPlot);
  draw();
  for (int i = 0; i <= 2; ++i)
    for (int j = 0; j <= 2 - i; ++j) EXPECT_EQ(matrix().GetChartSpan({i, j}), vtkVector2i(1, 1));
  EXPECT_EQ(usedCells().size(), 10u);
}

TEST_F(FitDistributionTest, ARedrawRebuildsThePlotsInTheSameCharts)
{
  load(3);
  vtkChart* pair = cell(0, 1);
  vtkChart* course = cell(1, 1);
  draw();
  EXPECT_EQ(cell(0, 1), pair);
  EXPECT_EQ(cell(1, 1), course);
  EXPECT_EQ(pair->GetNumberOfPlots(), 1);
  EXPECT_EQ(course->GetNumberOfPlots(), 1);
}

TEST_F(FitDistributionTest, FewerParametersLeaveNothingOfTheFormerOnes)
{
  load(4);
  load(2);
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(2, 2));
  EXPECT_THAT(usedCells(), UnorderedElementsAre(Cell(0, 0), Cell(0, 1), Cell(1, 0)));
  EXPECT_THAT(drawnPair(cell(0, 0)), Pair("Parameter: k1", "Parameter: k2"));
  EXPECT_THAT(drawnPair(cell(0, 1)), Pair("iteration", "Parameter: k1"));
  EXPECT_EQ(cell(0, 1)->GetAnnotationLink(), nullptr) << "a pair before";
  EXPECT_EQ(cell(0, 1)->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "Iteration");
}

} // namespace
} // namespace runsieve::test
