#include "support/CdfScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkContextMouseEvent.h>

#include <limits>

using testing::SizeIs;

namespace runsieve::test {
namespace {

const Color black{0, 0, 0, 255};
const Color red{255, 51, 0, 255};
const Color blue{12, 153, 229, 255};
const Color green{12, 229, 153, 255};

/// The small charts of the composite view, one per parameter.
struct ParameterChartsTest : CdfScene
{
  static double largest(vtkPlot* plot)
  {
    double bounds[4];
    plot->GetUnscaledInputBounds(bounds);
    return bounds[3];
  }

  double largest(vtkChart* cell)
  {
    double height = 0;
    for (vtkIdType i = 0; i < cell->GetNumberOfPlots(); ++i)
      height = std::max(height, largest(cell->GetPlot(i)));
    return height;
  }
};

TEST_F(ParameterChartsTest, ShowTheDistributionOverAllRunsInBlack)
{
  load(6);
  for (int column = 0; column < 4; ++column) {
    vtkChart* cell = small(column, 0);
    ASSERT_EQ(cell->GetNumberOfPlots(), 1);
    vtkPlot* curve = cell->GetPlot(0);
    std::string const name = "k" + std::to_string(column + 1);
    EXPECT_TRUE(curve->IsA("vtkPlotStepLine"));
    EXPECT_EQ(curve->GetInput(), container.tables[0].Get());
    EXPECT_EQ(drawnColumn(curve, 0), "Sorted " + name);
    EXPECT_EQ(drawnColumn(curve, 1), "Rank of " + name);
    EXPECT_EQ(penColor(curve), black);
    EXPECT_EQ(cell->GetTitle(), "");
    EXPECT_EQ(axis(cell, 1)->GetTitle(), name);
    EXPECT_EQ(axis(cell, 1)->GetBehavior(), vtkAxis::AUTO);
    EXPECT_EQ(axis(cell, 1)->GetTickLabelAlgorithm(), vtkAxis::TICK_SIMPLE);
    EXPECT_FALSE(axis(cell, 1)->GetLogScale());
  }
}

TEST_F(ParameterChartsTest, OnlyTheFirstColumnHasAVerticalScale)
{
  load(6);
  vtkAxis* first = axis(small(0, 0), 0);
  EXPECT_EQ(first->GetTitle(), "Ecdf");
  EXPECT_EQ(first->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(first->GetUnscaledMinimum(), 0);
  EXPECT_DOUBLE_EQ(first->GetUnscaledMaximum(), 1);
  EXPECT_TRUE(first->GetLabelsVisible());
  for (int column = 1; column < 4; ++column) {
    vtkAxis* other = axis(small(column, 0), 0);
    EXPECT_EQ(other->GetTitle(), "");
    EXPECT_FALSE(other->GetLabelsVisible());
    EXPECT_EQ(other->GetBehavior(), vtkAxis::AUTO);
  }
}

TEST_F(ParameterChartsTest, CannotBePannedZoomedOrSelectedIn)
{
  load(2);
  for (int column = 0; column < 2; ++column) {
    for (int action : {vtkChart::PAN, vtkChart::ZOOM, vtkChart::SELECT})
      EXPECT_EQ(small(column, 0)->GetActionToButton(action), -1) << action;
    EXPECT_EQ(small(column, 0)->GetAnnotationLink(), nullptr);
    EXPECT_FALSE(small(column, 0)->GetPlot(0)->GetInteractive());
  }
}

TEST_F(ParameterChartsTest, ASelectionAddsTheSelectedRunsInRedAndTheOthersInBlue)
{
  load(2);
  selectRows(container, {0, 3, 6});
  ASSERT_THAT(container.tables, SizeIs(8));
  for (int column = 0; column < 2; ++column) {
    vtkChart* cell = small(column, 0);
    ASSERT_EQ(cell->GetNumberOfPlots(), 3);
    EXPECT_EQ(cell->GetPlot(0)->GetInput(), container.tables[0].Get());
    EXPECT_EQ(cell->GetPlot(1)->GetInput(), container.tables[3].Get());
    EXPECT_EQ(cell->GetPlot(2)->GetInput(), container.tables[6].Get());
    EXPECT_EQ(penColor(cell->GetPlot(0)), black);
    EXPECT_EQ(penColor(cell->GetPlot(1)), red);
    EXPECT_EQ(penColor(cell->GetPlot(2)), blue);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(cell->GetPlot(i)->IsA("vtkPlotStepLine"));
  }
}

TEST_F(ParameterChartsTest, AnExternalSelectionIsTheThirdSeriesInGreen)
{
  load(2);
  selectRows(container, {0, 3});
  ParameterSelection external;
  external.selectedRuns = {4, 5};
  container.setExternalSelection(&external);
  container.redraw();
  ASSERT_THAT(container.tables, SizeIs(11));
  vtkChart* cell = small(1, 0);
  ASSERT_EQ(cell->GetNumberOfPlots(), 4);
  EXPECT_EQ(cell->GetPlot(3)->GetInput(), container.tables[9].Get());
  EXPECT_EQ(penColor(cell->GetPlot(3)), green);
}

TEST_F(ParameterChartsTest, ColoursOfFurtherSeriesStartAgain)
{
  load(1);
  selectRows(container, {0, 3});
  for (int i = 0; i < 2; ++i) {
    ParameterSelection external;
    external.selectedRuns = {1, 2 + i};
    container.setExternalSelection(&external);
  }
  container.redraw();
  ASSERT_EQ(small(0, 0)->GetNumberOfPlots(), 5);
  EXPECT_EQ(penColor(small(0, 0)->GetPlot(4)), red);
}

TEST_F(ParameterChartsTest, TheCurvesArePainted)
{
  load(1);
  selectRows(container, {0, 3, 6});
  RecordingPainter recorder;
  paint(recorder);
  auto curveIn = [&recorder](Color const& color) {
    for (Stroke const& line : recorder.polyLines())
      if (line.pen == color && line.points.size() > 2 && line.points.front().second == 0) return line.points;
    return std::vector<Point>{};
  };
  EXPECT_THAT(curveIn(black), SizeIs(2 * 6 + 2));
  std::vector<Point> const selected = curveIn(red);
  ASSERT_THAT(selected, SizeIs(2 * 3 + 2));
  EXPECT_EQ(selected.front(), Point(1, 0));
  EXPECT_EQ(selected.back(), Point(3, 1));
  EXPECT_THAT(curveIn(blue), SizeIs(2 * 3 + 2));
}

struct TitleCase
{
  double p;
  char const* title;
};

struct PValueTitleTest : ParameterChartsTest, testing::WithParamInterface<TitleCase>
{};

TEST_P(PValueTitleTest, HasTwoDigitsAndAnExponentOnlyForSmallValues)
{
  load(1);
  selectRows(container, {0, 3, 6});
  drawWith({{GetParam().p, 0.5}});
  EXPECT_EQ(small(0, 0)->GetTitle(), GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(Values, PValueTitleTest,
                         testing::Values(TitleCase{0.35, "p = 0.35"}, TitleCase{0.0012, "p = 1.20e-03"},
                                         TitleCase{0.0, "p = 0.00"}, TitleCase{1.0, "p = 1.00"},
                                         TitleCase{0.01, "p = 0.01"}, TitleCase{0.009, "p = 9.00e-03"},
                                         TitleCase{1e-300, "p = 1.00e-300"},
                                         TitleCase{-0.25, "p = -2.50e-01"},
                                         TitleCase{std::numeric_limits<double>::quiet_NaN(), "p = nan"}));

TEST_F(ParameterChartsTest, TitlesFollowTheParametersThroughTheGrid)
{
  load(5);
  selectRows(container, {0, 3});
  drawWith({{0.9, 0}, {0.8, 0}, {0.7, 0}, {0.6, 0}, {0.02, 0.9}});
  EXPECT_EQ(small(0, 0)->GetTitle(), "p = 0.02");
  EXPECT_EQ(small(1, 0)->GetTitle(), "p = 0.90");
  EXPECT_EQ(small(3, 0)->GetTitle(), "p = 0.70");
}

TEST_F(ParameterChartsTest, ParametersWithoutAStatisticHaveNoTitle)
{
  load(2);
  selectRows(container, {0, 3});
  drawWith({{0.5, 0.5}});
  EXPECT_EQ(small(0, 0)->GetTitle(), "p = 0.50");
  EXPECT_EQ(small(1, 0)->GetTitle(), "");
}

TEST_F(ParameterChartsTest, AClearedSelectionTakesItsCurvesAndTitlesAway)
{
  load(5);
  selectRows(container, {0, 3});
  drawWith({insignificant, insignificant, insignificant, insignificant, significant});
  selectRows(container, {});
  ASSERT_THAT(container.tables, SizeIs(2));
  for (int column = 0; column < 4; ++column) {
    EXPECT_EQ(small(column, 0)->GetNumberOfPlots(), 1);
    EXPECT_EQ(small(column, 0)->GetTitle(), "");
  }
  EXPECT_EQ(shown()[0], "k5") << "the last statistics still choose the parameters";
}

TEST_F(ParameterChartsTest, DensitiesReplaceTheCumulativeCurves)
{
  load(2);
  selectRows(container, {0, 3, 6});
  settings().setUseDensity(true);
  vtkChart* cell = small(1, 0);
  ASSERT_EQ(cell->GetNumberOfPlots(), 3);
  int const tables[] = {1, 4, 7};
  Color const colors[] = {black, red, blue};
  for (int i = 0; i < 3; ++i) {
    vtkPlot* curve = cell->GetPlot(i);
    EXPECT_STREQ(curve->GetClassName(), "vtkPlotLine");
    EXPECT_EQ(curve->GetInput(), container.tables[tables[i]].Get());
    EXPECT_EQ(drawnColumn(curve, 0), "Locations of k2");
    EXPECT_EQ(drawnColumn(curve, 1), "Density of k2");
    EXPECT_EQ(penColor(curve), colors[i]);
  }
  EXPECT_EQ(axis(small(0, 0), 0)->GetTitle(), "Density");
}

/// Half of 24 runs selected, so that each sample has a density; k1 spreads ten times wider than k2.
struct DensityScaleTest : ParameterChartsTest
{
  DensityScaleTest()
  {
    ScanShape shape;
    shape.runs = 24;
    shape.parameters = 2;
    shape.parameter = [](int p, int r) { return p == 0 ? 10.0 * r : 1.0 * r; };
    settings().setPlotStyle(selectionCdfPlot);
    settings().setUseDensity(true);
    container.setLinePlotTable(makeScan(shape), false);
    Rows firstHalf;
    for (vtkIdType run = 0; run < 12; ++run) firstHalf.push_back(run * shape.times);
    selectRows(container, firstHalf);
  }
};

TEST_F(DensityScaleTest, EachChartReachesToItsOwnMaximum)
{
  ASSERT_NE(largest(small(0, 0)), largest(small(1, 0)));
  for (int column = 0; column < 2; ++column)
    EXPECT_DOUBLE_EQ(axis(small(column, 0), 0)->GetUnscaledMaximum(), largest(small(column, 0))) << column;
}

TEST_F(DensityScaleTest, ACommonScaleLeavesFivePercentAboveTheLargestOfAll)
{
  settings().setCommonDensityScale(true);
  double const height = 1.05 * std::max(largest(small(0, 0)), largest(small(1, 0)));
  for (int column = 0; column < 2; ++column)
    EXPECT_DOUBLE_EQ(axis(small(column, 0), 0)->GetUnscaledMaximum(), height) << column;
}

TEST_F(DensityScaleTest, ColumnsBehindTheFirstGetALimitButNoTitleAndNoFixedScale)
{
  vtkAxis* first = axis(small(0, 0), 0);
  EXPECT_EQ(first->GetBehavior(), vtkAxis::FIXED);
  EXPECT_DOUBLE_EQ(first->GetUnscaledMinimum(), 0);
  vtkAxis* second = axis(small(1, 0), 0);
  EXPECT_EQ(second->GetBehavior(), vtkAxis::AUTO);
  EXPECT_EQ(second->GetTitle(), "");
  EXPECT_FALSE(second->GetLabelsVisible());
}

TEST_F(ParameterChartsTest, ParameterAxesCanBeLogarithmic)
{
  load(3);
  settings().setLogParameterAxes(true);
  for (int column = 0; column < 3; ++column) {
    EXPECT_TRUE(axis(small(column, 0), 1)->GetLogScale());
    EXPECT_FALSE(axis(small(column, 0), 0)->GetLogScale());
  }
  RecordingPainter recorder;
  paint(recorder);
  EXPECT_TRUE(axis(small(0, 0), 1)->GetLogScaleActive());
  settings().setLogParameterAxes(false);
  EXPECT_FALSE(axis(small(0, 0), 1)->GetLogScale());
}

TEST_F(ParameterChartsTest, AColumnNameShorterThanThePrefixGivesAnEmptyTitle)
{
  settings().setPlotStyle(selectionCdfPlot);
  container.typedColumnNames = {{Kestrane::Molecule, "A"},
                                {Kestrane::Unnamed, "Time"},
                                {Kestrane::Unnamed, "Run"},
                                {Kestrane::Parameter, "p"}};
  container.setPlotData(makeTable({{"A", {1, 2}}, {"Time", {0, 0}}, {"Run", {0, 1}}, {"p", {1, 2}}}));
  container.redraw();
  EXPECT_EQ(drawnColumn(small(0, 0)->GetPlot(0), 0), "Sorted p");
  EXPECT_EQ(axis(small(0, 0), 1)->GetTitle(), "");
}

TEST_F(ParameterChartsTest, NamesLostToAnAdditionalTableAreTakenFromTheMainOne)
{
  load(2);
  auto other = makeScan({});
  container.setLinePlotTableAsAdditionalData(other.get());
  ASSERT_TRUE(container.typedColumnNames.empty());
  container.redraw();
  EXPECT_EQ(drawnColumn(small(1, 0)->GetPlot(0), 0), "Sorted k2");
  selectRows(container, {0, 3});
  ASSERT_EQ(small(1, 0)->GetNumberOfPlots(), 3);
  EXPECT_EQ(drawnColumn(small(1, 0)->GetPlot(1), 1), "Rank of k2");
}

} // namespace
} // namespace runsieve::test
