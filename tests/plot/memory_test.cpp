#include "support/StyleScene.h"

#include <runsieve/selection/ColumnPool.h>

#include <gtest/gtest.h>
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
  const vtkSmartPointer<vtkChart> cell = plot.container.chartMatrix->GetChart({2, 0});
  ASSERT_GT(cell->GetNumberOfPlots(), 0);
  showScan(2);
  EXPECT_EQ(cell->GetNumberOfPlots(), 0);
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
