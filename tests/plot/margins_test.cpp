#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>

#include <array>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

using Borders = std::array<int, 4>; ///< left, bottom, right, top
using Gutter = std::array<float, 2>;

Borders borders(vtkChartMatrix* matrix)
{
  Borders found;
  matrix->GetBorders(found.data());
  return found;
}

Gutter gutter(vtkChartMatrix* matrix)
{
  vtkVector2f const found = matrix->GetGutter();
  return {found.GetX(), found.GetY()};
}

/// Pixels around charts and between them. The scene has 800 x 600 pixels.
struct MarginsTest : testing::Test
{
  PlotScene plot;

  MarginsTest()
  {
    ScanShape shape;
    shape.parameters = 3;
    plot.container.setLinePlotTable(makeScan(shape), false);
  }

  PlotContainer& container() { return plot.container; }
  vtkChartMatrix* matrix() { return plot.container.chartMatrix; }

  void changeStyle(plotStyles style)
  {
    container().setPlotStyle(style);
    plot.show();
  }

  void setAll()
  {
    container().setLeftMargin(101);
    container().setTopMargin(30);
    container().setBottomMargin(52);
    container().setRightMargin(63);
    container().setHorizontalGutter(11);
    container().setVerticalGutter(22);
  }

  /// Space that the plain chart leaves around its plot area when it is painted.
  Borders paintedBorders()
  {
    RecordingPainter recorder;
    plot.paint(recorder);
    int const* low = plot.chart()->GetPoint1();
    int const* high = plot.chart()->GetPoint2();
    return {low[0], low[1], 800 - high[0], 600 - high[1]};
  }
};

TEST_F(MarginsTest, EverySetterStoresItsValue)
{
  setAll();
  EXPECT_EQ(container().getLeftMargin(), 101);
  EXPECT_EQ(container().getTopMargin(), 30);
  EXPECT_EQ(container().getBottomMargin(), 52);
  EXPECT_EQ(container().getRightMargin(), 63);
  EXPECT_EQ(container().getHorizontalGutter(), 11);
  EXPECT_EQ(container().getVerticalGutter(), 22);
  EXPECT_EQ(container().leftMargin, 101);
  EXPECT_EQ(container().topMargin, 30);
  EXPECT_EQ(container().bottomMargin, 52);
  EXPECT_EQ(container().rightMargin, 63);
  EXPECT_EQ(container().horizontalGutter, 11);
  EXPECT_EQ(container().verticalGutter, 22);
}

TEST_F(MarginsTest, AScatterPlotTakesEachMarginAtOnce)
{
  EXPECT_THAT(paintedBorders(), ElementsAre(80, 40, 20, 20));
  container().setLeftMargin(101);
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 40, 20, 20));
  container().setTopMargin(30);
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 40, 20, 30));
  container().setBottomMargin(52);
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 52, 20, 30));
  container().setRightMargin(63);
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 52, 63, 30));
  container().redraw();
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 52, 63, 30));
}

TEST_F(MarginsTest, FieldsWrittenByHandWaitForTheCall)
{
  paintedBorders();
  container().leftMargin = 101;
  EXPECT_THAT(paintedBorders(), ElementsAre(80, 40, 20, 20));
  container().updateMargins();
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 40, 20, 20));
}

TEST_F(MarginsTest, AScatterPlotWithoutItsChartOnlyStores)
{
  changeStyle(scatterPlot3D);
  plot.settings().blockSignals(true);
  plot.settings().setPlotStyle(scatterPlot);
  plot.settings().blockSignals(false);
  setAll();
  container().redraw();
  plot.show();
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 52, 63, 30));
}

TEST_F(MarginsTest, AMultiPlotTakesMarginsAndGuttersAtOnce)
{
  changeStyle(multiPlot);
  setAll();
  EXPECT_THAT(borders(matrix()), ElementsAre(101, 52, 63, 30));
  EXPECT_THAT(gutter(matrix()), ElementsAre(11, 22)) << "horizontal first";
}

TEST_F(MarginsTest, TheGuttersOfAMultiPlotChangePlacesAtTheRedraw)
{
  changeStyle(multiPlot);
  setAll();
  container().redraw();
  EXPECT_THAT(gutter(matrix()), ElementsAre(22, 11)) << "vertical first";
  EXPECT_THAT(borders(matrix()), ElementsAre(101, 52, 63, 30));
  container().setLeftMargin(90);
  EXPECT_THAT(gutter(matrix()), ElementsAre(11, 22)) << "any setter applies them all";
}

TEST_F(MarginsTest, ACompositeViewAddsRoomForTitles)
{
  changeStyle(selectionCdfPlot);
  container().setTopMargin(30);
  EXPECT_THAT(borders(matrix()), ElementsAre(80, 40, 20, 55));
  setAll();
  EXPECT_THAT(borders(matrix()), ElementsAre(101, 52, 63, 55));
  EXPECT_THAT(gutter(matrix()), ElementsAre(11, 47));
  container().redraw();
  EXPECT_THAT(borders(matrix()), ElementsAre(101, 52, 63, 55));
  EXPECT_THAT(gutter(matrix()), ElementsAre(11, 47)) << "a redraw keeps this order";
}

/// Styles that take margins at a redraw, if at all.
struct PatientStyleTest : MarginsTest, testing::WithParamInterface<plotStyles>
{};

TEST_P(PatientStyleTest, NoChartChangesBeforeTheRedraw)
{
  changeStyle(GetParam());
  auto* scatterMatrix = container().scatterPlotMatrix.Get();
  Borders const formerBorders = borders(matrix());
  Gutter const formerGutter = gutter(matrix());
  Borders const formerScatter = borders(scatterMatrix);
  Gutter const formerScatterGutter = gutter(scatterMatrix);
  setAll();
  EXPECT_EQ(borders(matrix()), formerBorders);
  EXPECT_EQ(gutter(matrix()), formerGutter);
  EXPECT_EQ(borders(scatterMatrix), formerScatter);
  EXPECT_EQ(gutter(scatterMatrix), formerScatterGutter);
  EXPECT_EQ(container().getLeftMargin(), 101);
}

INSTANTIATE_TEST_SUITE_P(Styles, PatientStyleTest,
                         testing::Values(barPlot, stackedPlot, scatterPlotMatrixStyle, scatterPlot3D,
                                         scatterPlotWithErrorBars, fitParameterDistributionPlot,
                                         parallelCoordinatesPlot));

TEST_F(MarginsTest, AScatterMatrixTakesThemAtTheRedraw)
{
  changeStyle(scatterPlotMatrixStyle);
  setAll();
  container().redraw();
  EXPECT_THAT(borders(container().scatterPlotMatrix), ElementsAre(101, 52, 63, 30));
  EXPECT_THAT(gutter(container().scatterPlotMatrix), ElementsAre(22, 11));
}

TEST_F(MarginsTest, AFitPlotTakesThemAtTheRedraw)
{
  changeStyle(fitParameterDistributionPlot);
  setAll();
  container().redraw();
  EXPECT_THAT(borders(matrix()), ElementsAre(101, 52, 63, 30));
  EXPECT_THAT(gutter(matrix()), ElementsAre(22, 11));
}

TEST_F(MarginsTest, AnErrorPlotTakesThemAtTheRedraw)
{
  changeStyle(scatterPlotWithErrorBars);
  EXPECT_THAT(paintedBorders(), ElementsAre(80, 40, 20, 20));
  setAll();
  EXPECT_THAT(paintedBorders(), ElementsAre(80, 40, 20, 20));
  container().redraw();
  EXPECT_THAT(paintedBorders(), ElementsAre(101, 52, 63, 30));
}

} // namespace
} // namespace runsieve::test
