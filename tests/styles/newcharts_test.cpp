#include "support/StyleScene.h"

#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>

#include <gtest/gtest.h>
#include <vtkTextProperty.h>

namespace runsieve::test {
namespace {

using Kestrane::TypedConcentrationName;

/// Whatever makes a chart, it has margins, link and scene, so that axes and titles can be seen.
struct NewChartTest : testing::Test
{
  StyleScene plot;
  RecordingPainter recorder;

  void showAndPaint()
  {
    plot.show();
    plot.paint(recorder);
  }

  /// The plot area lies within the margins, and the texts of the axes within the scene.
  void expectFullySetUp()
  {
    vtkChart* chart = plot.chart();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(plot.container.getItem(), chart);
    EXPECT_EQ(chart->GetScene(), plot.scene.Get());
    EXPECT_EQ(chart->GetAnnotationLink(), plot.container.annotationLink.Get());
    EXPECT_EQ(chart->GetSelectionMode(), vtkContextScene::SELECTION_ADDITION);
    showAndPaint();
    EXPECT_EQ(chart->GetPoint1()[0], plot.container.leftMargin);
    EXPECT_EQ(chart->GetPoint1()[1], plot.container.bottomMargin);
    EXPECT_EQ(chart->GetPoint2()[0], 800 - plot.container.rightMargin);
    EXPECT_EQ(chart->GetPoint2()[1], 600 - plot.container.topMargin);
  }

  void showItems()
  {
    std::vector<double> times{0, 1, 2};
    std::vector<double> values{2, 3, 4};
    LinePlotData data;
    data.timeLabel = "Time [s]";
    data.times = &times;
    const TypedConcentrationName a(Kestrane::Molecule, "A");
    data.series[a] = &values;
    plot.container.setLinePlotData(&data);
    std::vector<TypedConcentrationName> items{a};
    plot.container.setLinePlotItems(&items);
  }

  void showResiduals()
  {
    FitRun run;
    run.times = {0, 1, 2};
    FitSettings settings;
    settings.observations = {{1, 2, 3}};
    settings.observationErrors = {{1, 1, 1}};
    settings.seriesNames = {{Kestrane::Molecule, "A"}};
    std::vector<std::vector<double>> predictions{{1, 2, 4}};
    plot.container.setResidualPlot(&run, &settings, predictions, false, false);
  }
};

TEST_F(NewChartTest, OfANewContainerThatIsGivenAStyleWithoutABuilder)
{
  plot.container.setPlotStyle(barPlot);
  expectFullySetUp();
}

TEST_F(NewChartTest, OfAStyleWithoutABuilderAfterChartsOfOtherKinds)
{
  for (plotStyles former : {scatterPlotMatrixStyle, scatterPlot3D, multiPlot, selectionCdfPlot}) {
    plot.load({});
    plot.container.setPlotStyle(former);
    plot.container.setPlotStyle(barPlot);
    expectFullySetUp();
    EXPECT_EQ(plot.chart()->GetTitle(), "Not yet implemented") << former;
  }
}

TEST_F(NewChartTest, OfTimeCoursesAfterAMatrix)
{
  plot.load({});
  plot.change(scatterPlotMatrixStyle);
  showItems();
  expectFullySetUp();
  EXPECT_FALSE(recorder.polyLines().empty());
}

TEST_F(NewChartTest, OfADistributionAfterAMatrix)
{
  plot.load({});
  plot.change(scatterPlotMatrixStyle);
  plot.container.setDistribution(normalDistribution(5.0, 1.0).get());
  expectFullySetUp();
}

TEST_F(NewChartTest, OfResidualsAfterAChartInSpace)
{
  plot.load({});
  plot.change(scatterPlot3D);
  showResiduals();
  expectFullySetUp();
  EXPECT_FALSE(recorder.markers().empty());
}

TEST_F(NewChartTest, FollowsMarginsThatWereSetBefore)
{
  plot.container.setLeftMargin(120);
  plot.container.setTopMargin(55);
  plot.container.setPlotStyle(scatterPlot3D);
  plot.container.setPlotStyle(barPlot);
  expectFullySetUp();
}

// The scene goes on from item to item although nothing is shown in between.
struct UnseenTransitionTest : testing::TestWithParam<std::tuple<int, int>>
{};

TEST_P(UnseenTransitionTest, EndsWithADrawnChart)
{
  StyleScene plot;
  ScanShape shape;
  shape.parameters = 3;
  shape.species = 2;
  plot.load(shape);
  testing::internal::CaptureStdout();
  plot.container.setPlotStyle(static_cast<plotStyles>(std::get<0>(GetParam())));
  plot.container.setPlotStyle(static_cast<plotStyles>(std::get<1>(GetParam())));
  plot.container.setPlotStyle(scatterPlot);
  plot.container.redraw();
  EXPECT_EQ(testing::internal::GetCapturedStdout().find("invalid scene"), std::string::npos);
  EXPECT_FALSE(plot.settings().signalsBlocked());
  EXPECT_EQ(plot.container.getItem(), plot.chart());
  plot.show();
  RecordingPainter recorder;
  plot.paint(recorder);
  EXPECT_FALSE(recorder.markers().empty());
}

INSTANTIATE_TEST_SUITE_P(Styles, UnseenTransitionTest,
                         testing::Combine(testing::Range(0, styleCount), testing::Range(0, styleCount)));

} // namespace
} // namespace runsieve::test
