#include "support/StyleScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>

namespace runsieve::test {
namespace {

using Pair = std::tuple<int, int>;

std::string nameOf(testing::TestParamInfo<Pair> const& info)
{
  return std::to_string(std::get<0>(info.param)) + "To" + std::to_string(std::get<1>(info.param));
}

bool isCell(vtkChartMatrix* matrix, vtkChart* chart)
{
  vtkVector2i const size = matrix->GetSize();
  for (int column = 0; column < size.GetX(); ++column)
    for (int row = 0; row < size.GetY(); ++row)
      if (matrix->GetChart({column, row}) == chart) return true;
  return false;
}

/// Every style after every other, and after itself.
struct StyleTransitionTest : testing::TestWithParam<Pair>
{
  OutputWindowLog log;
  StyleScene plot;
  plotStyles const from = static_cast<plotStyles>(std::get<0>(GetParam()));
  plotStyles const to = static_cast<plotStyles>(std::get<1>(GetParam()));

  void checkItem()
  {
    ASSERT_NE(plot.container.getItem(), nullptr);
    EXPECT_EQ(plot.container.getItem(), itemOf(plot.container, to));
    EXPECT_FALSE(plot.settings().signalsBlocked());
    if (to == barPlot || to == stackedPlot) {
      EXPECT_EQ(plot.chart()->GetTitle(), "Not yet implemented");
    }
    if (to == scatterPlot || to == scatterPlotWithErrorBars) checkPlainChart();
  }

  /// A chart of its own that fills the scene within the margins and selects rows as the first one did.
  void checkPlainChart()
  {
    ASSERT_NE(plot.chart(), nullptr);
    EXPECT_TRUE(plot.chart()->IsA("vtkChartXY"));
    EXPECT_FALSE(isCell(plot.container.chartMatrix, plot.chart()));
    EXPECT_EQ(plot.chart()->GetPoint1()[0], plot.container.leftMargin);
    EXPECT_EQ(plot.chart()->GetPoint1()[1], plot.container.bottomMargin);
    EXPECT_EQ(plot.chart()->GetPoint2()[0], 800 - plot.container.rightMargin);
    EXPECT_EQ(plot.chart()->GetPoint2()[1], 600 - plot.container.topMargin);
    EXPECT_EQ(plot.chart()->GetAnnotationLink(), plot.container.annotationLink.Get());
    EXPECT_EQ(plot.chart()->GetSelectionMode(), vtkContextScene::SELECTION_ADDITION);
    EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
  }

  void goThere()
  {
    plot.change(from);
    plot.change(to);
    checkItem();
    EXPECT_EQ(log.text(), "");
  }
};

TEST_P(StyleTransitionTest, OfAScan)
{
  ScanShape shape;
  shape.species = 2;
  shape.parameters = 3;
  plot.load(shape);
  goThere();
}

TEST_P(StyleTransitionTest, OfAScanOfOneRow)
{
  ScanShape shape;
  shape.runs = 1;
  shape.times = 1;
  plot.load(shape);
  goThere();
}

TEST_P(StyleTransitionTest, OfAnEmptyTable)
{
  vtkNew<vtkTable> empty;
  plot.container.setPlotData(empty.Get());
  goThere();
}

TEST_P(StyleTransitionTest, OfATableWithoutRows)
{
  plot.container.setPlotData(makeTable({{"x", {}}, {"y", {}}, {"Parameter: a", {}}, {"Parameter: b", {}}}));
  plot.settings().yColumns = {1};
  plot.settings().parameterColumns = {2, 3};
  goThere();
}

TEST_P(StyleTransitionTest, ThereAndBackAgain)
{
  plot.load({});
  plot.change(to);
  plot.change(from);
  goThere();
}

// Both changes are only taken down; the first redraw in a scene draws the second one.
TEST_P(StyleTransitionTest, WithoutASceneOnlyAMessageIsPrinted)
{
  plot.load({});
  plot.change(scatterPlot);
  vtkNew<vtkContextScene> scene; // outlives the container
  scene->SetGeometry(800, 600);
  PlotContainer alone(nullptr);
  alone.setPlotData(plot.container.plotData);
  alone.metaData->parameterColumns = plot.settings().parameterColumns;
  std::string const message = "void PlotContainer::redraw(): invalid scene\n";
  testing::internal::CaptureStdout();
  for (plotStyles style : {from, to}) {
    alone.metaData->blockSignals(true);
    alone.setPlotStyle(style);
    alone.redraw();
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), message + message);
  EXPECT_EQ(alone.getItem(), alone.chartXY.Get()) << "nothing has been drawn";
  alone.setScene(scene);
  alone.redraw();
  EXPECT_EQ(alone.getItem(), itemOf(alone, to));
  EXPECT_FALSE(alone.metaData->signalsBlocked());
  scene->ClearItems();
  scene->AddItem(alone.getItem());
  RecordingPainter recorder;
  scene->Paint(recorder.painter);
}

INSTANTIATE_TEST_SUITE_P(Styles, StyleTransitionTest,
                         testing::Combine(testing::Range(0, styleCount), testing::Range(0, styleCount)),
                         nameOf);

} // namespace
} // namespace runsieve::test
