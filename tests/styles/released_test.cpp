#include "support/StyleScene.h"

#include <runsieve/items/vtkPlotStepLine.h>

#include <gtest/gtest.h>
#include <vtkCommand.h>
#include <vtkPlot.h>
#include <vtkPoints2D.h>
#include <vtkWeakPointer.h>

#include <QApplication>
#include <QEvent>

namespace runsieve::test {
namespace {

/// Nothing of a plot outlives it, or a redraw of it, but for the charts that wait for the event loop.
struct ReleasedTest : testing::Test
{
  static void finishEvents() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  /// Everything in the charts of a container.
  static std::vector<vtkWeakPointer<vtkObject>> partsOf(PlotContainer& container)
  {
    std::vector<vtkWeakPointer<vtkObject>> parts;
    for (vtkObject* part : std::initializer_list<vtkObject*>{container.chartMatrix, container.plotData,
                                                             container.annotationLink})
      parts.emplace_back(part);
    auto addChart = [&parts](vtkChart* chart) {
      parts.emplace_back(chart);
      for (vtkIdType i = 0; i < chart->GetNumberOfPlots(); ++i) parts.emplace_back(chart->GetPlot(i));
    };
    if (container.chartXY) addChart(container.chartXY);
    for (vtkIdType i = 0; i < container.chartMatrix->GetNumberOfItems(); ++i)
      addChart(vtkChart::SafeDownCast(container.chartMatrix->GetItem(i)));
    for (auto const& table : container.tables) parts.emplace_back(table.GetPointer());
    return parts;
  }
};

TEST_F(ReleasedTest, AContainerTakesAllItsChartsPlotsAndTablesAlong)
{
  for (int style = 0; style < styleCount; ++style) {
    std::vector<vtkWeakPointer<vtkObject>> parts;
    {
      StyleScene plot;
      ScanShape shape;
      shape.runs = 10;
      shape.parameters = 3;
      shape.species = 2;
      plot.load(shape);
      plot.change(static_cast<plotStyles>(style));
      selectRows(plot.container, {1, 4, 7});
      plot.redrawAndPaint();
      parts = partsOf(plot.container);
    }
    finishEvents();
    for (std::size_t i = 0; i < parts.size(); ++i)
      EXPECT_EQ(parts[i].GetPointer(), nullptr) << "style " << style << ", part " << i;
  }
}

TEST_F(ReleasedTest, ARedrawLetsGoOfTheFormerPlots)
{
  for (plotStyles style : {scatterPlot, multiPlot, selectionCdfPlot, scatterPlotWithErrorBars}) {
    StyleScene plot;
    ScanShape shape;
    shape.parameters = 3;
    shape.species = 2;
    plot.load(shape);
    plot.change(style);
    const vtkWeakPointer<vtkPlot> former = plot.chart()->GetPlot(0);
    plot.redrawAndPaint();
    EXPECT_EQ(former.GetPointer(), nullptr) << style;
  }
}

TEST_F(ReleasedTest, AStaircaseTakesItsCornersAlong)
{
  struct OpenStairs : vtkPlotStepLine
  {
    static OpenStairs* create()
    {
      auto* stairs = new OpenStairs;
      stairs->InitializeObjectBase();
      return stairs;
    }
    vtkPoints2D* corners() { return this->StepPoints; }
  };
  vtkWeakPointer<vtkPoints2D> corners;
  {
    auto stairs = vtkSmartPointer<OpenStairs>::Take(OpenStairs::create());
    stairs->SetInputData(makeTable({{"x", {1, 2}}, {"y", {0.5, 1}}}), "x", "y");
    stairs->Update();
    corners = stairs->corners();
    ASSERT_NE(corners.GetPointer(), nullptr);
  }
  EXPECT_EQ(corners.GetPointer(), nullptr);
}

TEST_F(ReleasedTest, ASelectionRedrawsOnce)
{
  StyleScene plot;
  ScanShape shape;
  shape.runs = 10;
  shape.parameters = 3;
  plot.load(shape);
  plot.change(selectionCdfPlot);
  // Each redraw marks the quartile table as modified once, before it draws the bands.
  int redraws = 0;
  struct Counter : vtkCommand
  {
    void Execute(vtkObject*, unsigned long, void*) override { ++*count; }
    int* count = nullptr;
  };
  auto counter = vtkSmartPointer<Counter>::Take(new Counter);
  counter->count = &redraws;
  plot.container.quartileTable = makeTable({{"Time", {0, 1, 2}}});
  plot.settings().blockSignals(true);
  plot.settings().setShowQuantiles(true);
  plot.settings().blockSignals(false);
  plot.container.quartileTable->AddObserver(vtkCommand::ModifiedEvent, counter); // once for each set of bands
  selectRows(plot.container, {1, 4, 7});
  EXPECT_EQ(redraws, 1);
  selectRows(plot.container, {});
  EXPECT_EQ(redraws, 2);
}

} // namespace
} // namespace runsieve::test
