#include "support/StyleScene.h"

#include <runsieve/selection/ColumnPool.h>

#include <gtest/gtest.h>
#include <vtkPlot.h>
#include <vtkWeakPointer.h>

#include <memory>

namespace runsieve::test {
namespace {

/// What a plot no longer shows it gives back at once, also where no event loop runs.
struct MemoryTest : testing::Test
{
  StyleScene plot;

  /// A scan of other parameters than the one before, with a selection.
  void showScan(int parameters)
  {
    ScanShape shape;
    shape.runs = 20;
    shape.parameters = parameters;
    plot.container.setPlotStyle(selectionCdfPlot);
    plot.load(shape);
    plot.redrawAndPaint();
    selectRows(plot.container, {1, 4, 7, 10});
    plot.redrawAndPaint();
  }
};

TEST_F(MemoryTest, TablesShownInTurnDoNotPileUp)
{
  std::vector<vtkWeakPointer<vtkTable>> shown;
  for (int i = 0; i < 6; ++i) {
    showScan(2 + i % 3);
    shown.emplace_back(plot.container.plotData);
  }
  for (std::size_t i = 0; i + 1 < shown.size(); ++i) EXPECT_EQ(shown[i].GetPointer(), nullptr) << i;
  EXPECT_NE(shown.back().GetPointer(), nullptr);
}

TEST_F(MemoryTest, ACellThatIsDroppedLosesItsPlotsAtOnce)
{
  showScan(3);
  const vtkWeakPointer<vtkChart> cell = plot.container.chartMatrix->GetChart({2, 0});
  const vtkWeakPointer<vtkPlot> curve = cell->GetPlot(0);
  ASSERT_NE(curve.GetPointer(), nullptr);
  showScan(2);
  EXPECT_NE(cell.GetPointer(), nullptr) << "an event may still stand in the chart";
  EXPECT_EQ(curve.GetPointer(), nullptr);
}

TEST_F(MemoryTest, SensitivitiesShownInTurnDoNotPileUp)
{
  std::vector<vtkWeakPointer<vtkTable>> shown;
  plot.container.setPlotStyle(barPlot);
  for (int i = 0; i < 4; ++i) {
    plot.container.setPlotData(makeTable({{"a", {0.1, 0.2}}, {"b", {0.3, 0.4}}}));
    plot.container.setupStackedSobol(false);
    plot.show();
    shown.emplace_back(plot.container.plotData);
  }
  // The last but one chart left the scene after it was replaced.
  for (std::size_t i = 0; i + 2 < shown.size(); ++i) EXPECT_EQ(shown[i].GetPointer(), nullptr) << i;
}

TEST_F(MemoryTest, TheSamplesOfASelectionAreGivenBackWithTheTable)
{
  showScan(3);
  plot.container.setPlotData(makeTable({{"x", {1}}, {"y", {2}}}));
  EXPECT_EQ(ColumnPool::idleBytes(), 0u);
}

TEST_F(MemoryTest, TheSamplesOfASelectionAreGivenBackAfterTheNextOne)
{
  showScan(3);
  Rows many;
  for (vtkIdType row = 1; row < 60; row += 3) many.push_back(row);
  many.pop_back();
  selectRows(plot.container, many);
  selectRows(plot.container, {1, 4});
  EXPECT_EQ(ColumnPool::idleBytes(), 0u);
}

TEST(PlotMemoryTest, AContainerThatIsGoneHasGivenEverythingBack)
{
  vtkNew<vtkContextScene> scene;
  scene->SetGeometry(800, 600);
  vtkWeakPointer<vtkTable> table;
  vtkWeakPointer<vtkChart> chart;
  {
    PlotContainer container(nullptr);
    scene->AddItem(container.getItem());
    container.setPlotStyle(selectionCdfPlot);
    ScanShape shape;
    shape.runs = 20;
    shape.parameters = 3;
    container.setLinePlotTable(makeScan(shape), false);
    selectRows(container, {1, 4, 7, 10});
    table = container.plotData;
    chart = container.chartXY;
    scene->ClearItems();
  }
  EXPECT_EQ(ColumnPool::idleBytes(), 0u);
  EXPECT_EQ(table.GetPointer(), nullptr);
}

} // namespace
} // namespace runsieve::test
