#include "support/StyleScene.h"

#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

/// Hosts may call the builders of four styles by themselves.
struct DrawMembersTest : testing::Test
{
  StyleScene plot;

  DrawMembersTest()
  {
    ScanShape shape;
    shape.parameters = 3;
    plot.load(shape);
    plot.settings().blockSignals(true);
  }

  vtkChartMatrix& matrix() { return *plot.container.chartMatrix; }
};

TEST_F(DrawMembersTest, PairsOfParameters)
{
  plot.settings().setPlotStyle(multiPlot);
  plot.container.drawMulitPlot(plot.scene);
  EXPECT_EQ(plot.container.getItem(), &matrix());
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(3, 3));
  EXPECT_EQ(plot.chart(), matrix().GetChart({1, 1}));
}

TEST_F(DrawMembersTest, TheCompositeView)
{
  plot.settings().setPlotStyle(selectionCdfPlot);
  plot.container.drawSelectionCdfPlot(plot.scene);
  EXPECT_EQ(plot.scene->GetItem(0), &matrix());
  EXPECT_EQ(matrix().GetSize(), vtkVector2i(3, 2));
  EXPECT_EQ(plot.container.tables.size(), 2u) << "the distributions of all runs";
}

TEST_F(DrawMembersTest, TheCourseOfAFit)
{
  plot.settings().setPlotStyle(fitParameterDistributionPlot);
  plot.container.drawFitParameterDistributionPlot(plot.scene);
  EXPECT_EQ(plot.container.getItem(), &matrix());
  EXPECT_EQ(matrix().GetChart({2, 0})->GetAxis(vtkAxis::BOTTOM)->GetTitle(), "Iteration");
}

TEST_F(DrawMembersTest, PointsWithErrorBars)
{
  plot.settings().setPlotStyle(scatterPlotWithErrorBars);
  plot.container.drawScatterPlotWithErrorBars(plot.scene);
  EXPECT_EQ(plot.container.getItem(), plot.chart());
  EXPECT_TRUE(plot.chart()->GetPlot(0)->IsA("vtkPlotErrorPoints"));
}

TEST_F(DrawMembersTest, NothingWithoutAScene)
{
  vtkAbstractContextItem* const before = plot.container.getItem();
  plot.container.drawMulitPlot(nullptr);
  plot.container.drawSelectionCdfPlot(nullptr);
  plot.container.drawFitParameterDistributionPlot(nullptr);
  plot.container.drawScatterPlotWithErrorBars(nullptr);
  EXPECT_EQ(plot.container.getItem(), before);
}

} // namespace
} // namespace runsieve::test
