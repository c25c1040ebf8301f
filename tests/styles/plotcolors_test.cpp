#include "support/StyleScene.h"

#include <gtest/gtest.h>
#include <vtkChartXY.h>
#include <vtkPlotPoints.h>

#include <memory>

namespace runsieve::test {
namespace {

/// Colours of points by a column, and of series by the chart.
struct PlotColorsTest : testing::Test, PlotScene
{
  void showTable()
  {
    container.setPlotData(makeTable({{"c", {5, 6, 7}}, {"x", {0, 1, 2}}, {"y", {1, 2, 3}}}));
    settings().xColumns = {1};
    settings().yColumns = {2};
    settings().zColumns = {2};
    container.setColorScheme("c", false);
    container.redraw();
  }

  Stroke paintedMarkers()
  {
    RecordingPainter recorder;
    paint(recorder);
    EXPECT_FALSE(recorder.markers().empty());
    return recorder.markers().empty() ? Stroke{} : recorder.markers().front();
  }
};

TEST_F(PlotColorsTest, PointsGoOnInTheColourOfThePenWhenTheColumnOfTheirColoursIsRemoved)
{
  showTable();
  EXPECT_TRUE(paintedMarkers().ownColors);
  std::unique_ptr<char[]> text(
      container.saveData("", false)); // number 0 is no colour column, so it is removed
  ASSERT_EQ(container.plotData->GetColumnByName("c"), nullptr);
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(paintedMarkers().ownColors);
    container.plotData->Modified();
  }
}

TEST_F(PlotColorsTest, PointsAreColouredAgainWhenTheColumnIsBack)
{
  showTable();
  auto const column = makeColumn<vtkDoubleArray>("c", std::vector<double>{1, 2, 3});
  container.plotData->RemoveColumnByName("c");
  EXPECT_FALSE(paintedMarkers().ownColors);
  container.plotData->AddColumn(column);
  EXPECT_TRUE(paintedMarkers().ownColors);
}

TEST_F(PlotColorsTest, RunsArePaintedWhenTheirColourColumnIsRemoved)
{
  ScanShape shape;
  container.setPlotStyle(selectionCdfPlot);
  container.setLinePlotTable(makeScan(shape), false);
  settings().setPlotLine(false);
  container.setColorScheme("Parameter: k1", false);
  container.redraw();
  show();
  EXPECT_TRUE(paintedMarkers().ownColors);
  container.plotData->RemoveColumnByName("Parameter: k1");
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(paintedMarkers().ownColors);
    container.plotData->Modified();
  }
}

TEST_F(PlotColorsTest, ErrorPointsArePaintedWhenTheirColourColumnIsRemoved)
{
  std::vector<double> x{0, 1, 2};
  std::vector<double> y{3, 4, 5};
  std::vector<double> errors{1, 1, 1};
  container.setSimpleXYPlot(x, y, errors);
  container.addColumn({5, 6, 7}, "c");
  container.setColorScheme("c", false);
  container.redraw();
  show();
  EXPECT_TRUE(paintedMarkers().ownColors);
  container.plotData->RemoveColumnByName("c");
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(paintedMarkers().ownColors);
    container.plotData->Modified();
  }
}

TEST_F(PlotColorsTest, TheSecondSeriesHasTheNextColourOfTheChart)
{
  std::vector<double> x{0, 1, 2};
  std::vector<double> y{3, 4, 5};
  std::vector<double> errors{1, 1, 1};
  container.setSimpleXYPlot(x, y, errors);
  settings().xColumns = {0, 0};
  settings().yColumns = {1, 1};
  container.redraw();
  ASSERT_EQ(chart()->GetNumberOfPlots(), 2);
  vtkNew<vtkChartXY> other;
  other->AddPlot(vtkChart::POINTS);
  EXPECT_EQ(penColor(chart()->GetPlot(1)), penColor(other->AddPlot(vtkChart::LINE)));
  EXPECT_NE(penColor(chart()->GetPlot(1)), (Color{0, 0, 0, 255}));
}

TEST_F(PlotColorsTest, RowsThatAShorterTableDoesNotHaveAreNotMarked)
{
  ScanShape large;
  large.runs = 400;
  large.times = 5;
  container.setPlotStyle(selectionCdfPlot);
  settings().setPlotLine(false);
  container.setLinePlotTable(makeScan(large), false);
  show();
  Rows all;
  for (vtkIdType row = 0; row < 2000; ++row) all.push_back(row);
  selectRows(container, all);
  show();
  RecordingPainter recorder;
  paint(recorder);
  ScanShape small;
  small.runs = 10;
  small.times = 5;
  container.setLinePlotTable(makeScan(small), false);
  show();
  RecordingPainter after;
  paint(after);
  for (Stroke const& markers : after.markers()) EXPECT_LE(markers.points.size(), 50u);
  EXPECT_EQ(after.markers().size(), 2u) << "all points, and those selected";
}

} // namespace
} // namespace runsieve::test
