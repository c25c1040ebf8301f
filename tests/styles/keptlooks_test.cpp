#include "support/StyleScene.h"

#include <gtest/gtest.h>
#include <vtkCallbackCommand.h>
#include <vtkCommand.h>

namespace runsieve::test {
namespace {

/// What a host sets on a chart stays as long as the chart is the same object in the same role.
struct KeptLooksTest : testing::Test
{
  StyleScene plot;
  int heard = 0;

  void load(plotStyles style, int parameters = 3)
  {
    ScanShape shape;
    shape.runs = 10;
    shape.parameters = parameters;
    shape.value = [](int, int run, int time) { return 1.0 + run + time; };
    plot.load(shape);
    plot.change(style);
  }

  void setLooks()
  {
    plot.container.setLogScaleY(true);
    plot.container.setShowLegend(true);
  }

  void select()
  {
    selectRows(plot.container, {1, 4, 7});
    plot.show();
    RecordingPainter recorder;
    plot.paint(recorder);
  }

  /// Counts the events of a chart that a host listens to.
  void listen(vtkChart* chart)
  {
    vtkNew<vtkCallbackCommand> observer;
    observer->SetClientData(&heard);
    observer->SetCallback([](vtkObject*, unsigned long, void* count, void*) { ++*static_cast<int*>(count); });
    chart->AddObserver(vtkCommand::UserEvent, observer);
  }
};

TEST_F(KeptLooksTest, ASelectionLeavesLogScaleAndLegendOfTheLargeChartAlone)
{
  for (plotStyles style : {multiPlot, selectionCdfPlot}) {
    load(style);
    setLooks();
    vtkChart* large = plot.chart();
    select();
    ASSERT_EQ(plot.chart(), large) << style;
    EXPECT_TRUE(large->GetShowLegend()) << style;
    EXPECT_TRUE(large->GetAxis(vtkAxis::LEFT)->GetLogScale()) << style;
    EXPECT_TRUE(large->GetAxis(vtkAxis::LEFT)->GetLogScaleActive()) << style;
  }
}

TEST_F(KeptLooksTest, ACellThatChangesItsRoleStartsAnew)
{
  // Both grids have 4 x 4 cells, which keep their charts.
  load(multiPlot, 4);
  setLooks();
  vtkChart* small = plot.container.chartMatrix->GetChart({0, 0});
  small->SetShowLegend(true);
  plot.container.ksStatistics = std::vector<PlotContainer::KsStatistics>(8, {0.001, 0.9});
  plot.settings().blockSignals(true);
  plot.settings().setPlotStyle(selectionCdfPlot);
  plot.settings().blockSignals(false);
  ScanShape eight;
  eight.parameters = 8;
  plot.load(eight);
  ASSERT_EQ(plot.container.chartMatrix->GetSize(), vtkVector2i(4, 4));
  ASSERT_EQ(plot.container.chartMatrix->GetChart({0, 0}), small);
  EXPECT_FALSE(small->GetShowLegend());
  EXPECT_EQ(small->GetAnnotationLink(), nullptr);
  EXPECT_FALSE(plot.chart()->GetShowLegend());
  EXPECT_FALSE(plot.chart()->GetAxis(vtkAxis::LEFT)->GetLogScale());
}

TEST_F(KeptLooksTest, ALargeChartThatTakesThePlaceOfAnotherStartsWithoutThem)
{
  for (plotStyles style : {multiPlot, selectionCdfPlot}) {
    load(style);
    setLooks();
    vtkChart* large = plot.chart();
    plot.change(scatterPlot);
    plot.change(style);
    ASSERT_EQ(plot.chart(), large);
    EXPECT_FALSE(large->GetShowLegend()) << style;
    EXPECT_FALSE(large->GetAxis(vtkAxis::LEFT)->GetLogScale()) << style;
  }
}

TEST_F(KeptLooksTest, ObserversOfAHostStayInPairCharts)
{
  load(multiPlot);
  vtkChart* small = plot.container.chartMatrix->GetChart({0, 0});
  listen(small);
  listen(plot.chart());
  plot.container.redraw();
  select();
  small->InvokeEvent(vtkCommand::UserEvent);
  plot.chart()->InvokeEvent(vtkCommand::UserEvent);
  EXPECT_EQ(heard, 2);
}

TEST_F(KeptLooksTest, ObserversOfAHostStayInThePlainChart)
{
  load(scatterPlot);
  listen(plot.chart());
  plot.container.redraw();
  plot.container.setDistribution(normalDistribution(5.0, 1.0).get());
  plot.container.redraw();
  plot.chart()->InvokeEvent(vtkCommand::UserEvent);
  EXPECT_EQ(heard, 1);
}

TEST_F(KeptLooksTest, TheCompositeViewTakesAllObserversFromItsCells)
{
  load(selectionCdfPlot);
  listen(plot.chart());
  listen(plot.container.chartMatrix->GetChart({0, 0}));
  plot.container.redraw();
  plot.chart()->InvokeEvent(vtkCommand::UserEvent);
  plot.container.chartMatrix->GetChart({0, 0})->InvokeEvent(vtkCommand::UserEvent);
  EXPECT_EQ(heard, 0);
}

TEST_F(KeptLooksTest, ADistributionLeavesLogScaleAndLegendOfAHostAlone)
{
  load(scatterPlot);
  setLooks();
  plot.container.setDistribution(normalDistribution(5.0, 1.0).get());
  EXPECT_TRUE(plot.chart()->GetShowLegend());
  EXPECT_TRUE(plot.left()->GetLogScale());
  plot.container.redraw();
  EXPECT_TRUE(plot.chart()->GetShowLegend()) << "it is the same chart still";
  EXPECT_TRUE(plot.left()->GetLogScale());
}

TEST_F(KeptLooksTest, TheSmallChartsOfADeselectedViewHaveNoTitle)
{
  load(selectionCdfPlot);
  select();
  vtkChart* small = plot.container.chartMatrix->GetChart({0, 0});
  ASSERT_NE(small->GetTitle(), "");
  selectRows(plot.container, {});
  EXPECT_EQ(small->GetTitle(), "");
}

TEST_F(KeptLooksTest, ACellOfTheCompositeViewShapedByADistributionIsThatOfTheRunsAgainAfterARedraw)
{
  load(selectionCdfPlot);
  vtkChart* large = plot.chart();
  auto const table = plot.container.plotData;
  plot.container.setDistribution(normalDistribution(5.0, 1.0).get());
  ASSERT_EQ(plot.chart(), large);
  EXPECT_FALSE(large->GetAxis(vtkAxis::LEFT)->GetLabelsVisible());
  plot.container.setPlotData(table);
  plot.container.redraw();
  ASSERT_EQ(plot.chart(), large);
  EXPECT_TRUE(large->GetAxis(vtkAxis::LEFT)->GetLabelsVisible());
  EXPECT_TRUE(large->GetInteractive());
  EXPECT_EQ(large->GetAnnotationLink(), plot.container.annotationLink.Get());
}

} // namespace
} // namespace runsieve::test
