#include "support/PlotScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkFloatArray.h>
#include <vtkLookupTable.h>
#include <vtkPlotPoints.h>

#include <cmath>

namespace runsieve::test {
namespace {

struct AppearanceTest : testing::Test
{
  PlotScene plot;

  AppearanceTest()
  {
    plot.container.setPlotData(makeTable({{"a", {1, 2, 3}}, {"b", {2, 3, 1}}, {"c", {30, 10, 20}}}));
    plot.settings().yColumns = {1};
    plot.container.redraw();
  }

  vtkPlotPoints* points(int index = 0) { return vtkPlotPoints::SafeDownCast(plot.chart()->GetPlot(index)); }

  void setStyleSilently(plotStyles style)
  {
    plot.settings().blockSignals(true);
    plot.settings().setPlotStyle(style);
    plot.settings().blockSignals(false);
  }
};

TEST_F(AppearanceTest, PointSizeIsStoredAndShownAtOnce)
{
  plot.container.setPointSize(3.5);
  EXPECT_DOUBLE_EQ(plot.settings().pointSize, 3.5);
  EXPECT_FLOAT_EQ(points()->GetMarkerSize(), 3.5f);
}

TEST_F(AppearanceTest, PointSizeSurvivesAChartWithoutPlots)
{
  plot.chart()->ClearPlots();
  plot.container.setPointSize(3.5);
  EXPECT_DOUBLE_EQ(plot.settings().pointSize, 3.5);
}

TEST_F(AppearanceTest, PointSizeOfOtherStylesIsOnlyStored)
{
  setStyleSilently(parallelCoordinatesPlot);
  plot.container.setPointSize(9);
  EXPECT_DOUBLE_EQ(plot.settings().pointSize, 9);
  EXPECT_FLOAT_EQ(points()->GetMarkerSize(), 5.0f);
}

TEST_F(AppearanceTest, ScatterMatrixShowsItsActivePlotHalfAsLargeAgain)
{
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  plot.show();
  RecordingPainter recorder;
  plot.paint(recorder);
  plot.container.setPointSize(4);
  auto* matrix = plot.container.scatterPlotMatrix.Get();
  auto sizeIn = [](vtkChart* chart) {
    return vtkPlotPoints::SafeDownCast(chart->GetPlot(0))->GetMarkerSize();
  };
  EXPECT_FLOAT_EQ(sizeIn(matrix->GetMainChart()), 6);
  for (vtkVector2i cell : {vtkVector2i(0, 0), vtkVector2i(1, 0), vtkVector2i(0, 1)})
    EXPECT_FLOAT_EQ(sizeIn(matrix->GetChart(cell)), 4);
}

struct MultiPlotSizeTest : AppearanceTest
{
  void fillMatrix(int parameters)
  {
    plot.settings().parameterColumns.assign(parameters, 0);
    setStyleSilently(multiPlot);
    auto* matrix = plot.container.chartMatrix.Get();
    matrix->SetSize({parameters, parameters});
    for (int column = 0; column < parameters; ++column)
      for (int row = 0; row < parameters; ++row) matrix->GetChart({column, row})->AddPlot(vtkChart::POINTS);
  }

  float size(int column, int row)
  {
    vtkChart* chart = plot.container.chartMatrix->GetChart({column, row});
    return vtkPlotPoints::SafeDownCast(chart->GetPlot(0))->GetMarkerSize();
  }
};

TEST_F(MultiPlotSizeTest, MarkersAreTwiceAsLargeInTheTriangleAndInTheLargeChart)
{
  fillMatrix(4);
  float const untouched = size(3, 3);
  plot.container.setPointSize(3);
  for (int column = 0; column < 4; ++column)
    for (int row = 0; row < 4; ++row) {
      bool const small = column + row <= 2;
      bool const large = column == 2 && row == 2;
      EXPECT_FLOAT_EQ(size(column, row), small || large ? 6 : untouched) << column << " " << row;
    }
}

TEST_F(MultiPlotSizeTest, SurvivesFewOrNoParametersAndEmptyCharts)
{
  for (int parameters : {0, 1, 2}) {
    plot.settings().parameterColumns.assign(parameters, 0);
    setStyleSilently(multiPlot);
    plot.container.setPointSize(3);
    EXPECT_DOUBLE_EQ(plot.settings().pointSize, 3);
  }
}

TEST_F(AppearanceTest, ASolidColourIsThatOfTheSettings)
{
  plot.settings().red = 10;
  plot.settings().green = 20;
  plot.settings().blue = 30;
  plot.settings().alpha = 40;
  plot.container.redraw();
  EXPECT_EQ(penColor(points()), (Color{10, 20, 30, 40}));
  EXPECT_FALSE(points()->GetScalarVisibility());
}

TEST_F(AppearanceTest, ColourPartsAreCutToEightBits)
{
  plot.settings().red = 256 + 44;
  plot.settings().green = -1;
  plot.container.useColors(nullptr);
  EXPECT_EQ(penColor(points())[0], 44);
  EXPECT_EQ(penColor(points())[1], 255);
}

TEST_F(AppearanceTest, AColumnColoursThePointsThroughALinearScale)
{
  plot.settings().useSolidColor = false;
  plot.settings().colorColumn = 2;
  plot.container.redraw();
  EXPECT_TRUE(points()->GetScalarVisibility());
  EXPECT_EQ(points()->GetColorArrayName(), "c");
  auto* scale = vtkLookupTable::SafeDownCast(points()->GetLookupTable());
  ASSERT_NE(scale, nullptr);
  EXPECT_DOUBLE_EQ(scale->GetRange()[0], 10);
  EXPECT_DOUBLE_EQ(scale->GetRange()[1], 30);
  EXPECT_DOUBLE_EQ(scale->GetHueRange()[0], 0.2);
  EXPECT_DOUBLE_EQ(scale->GetHueRange()[1], 0.8);
  EXPECT_DOUBLE_EQ(scale->GetSaturationRange()[0], 0.95);
  EXPECT_DOUBLE_EQ(scale->GetSaturationRange()[1], 1.0);
  EXPECT_DOUBLE_EQ(scale->GetValueRange()[0], 0.9);
  EXPECT_DOUBLE_EQ(scale->GetValueRange()[1], 0.9);
  EXPECT_DOUBLE_EQ(scale->GetAlpha(), 1.0);
  EXPECT_EQ(scale->GetRamp(), VTK_RAMP_LINEAR);
}

TEST_F(AppearanceTest, TheColourScaleRunsFromYellowGreenToViolet)
{
  plot.settings().useSolidColor = false;
  plot.settings().colorColumn = 2;
  plot.container.redraw();
  unsigned char const* low = points()->GetLookupTable()->MapValue(10);
  EXPECT_EQ((Color{low[0], low[1], low[2], low[3]}), (Color{186, 230, 11, 255}));
  unsigned char const* high = points()->GetLookupTable()->MapValue(30);
  EXPECT_EQ((Color{high[0], high[1], high[2], high[3]}), (Color{184, 0, 230, 255}));
}

TEST_F(AppearanceTest, AColourColumnThatIsMissingOrNotOfDoublesColoursNothing)
{
  plot.container.plotData->AddColumn(makeColumn<vtkFloatArray, float>("f", {1, 2, 3}));
  plot.settings().useSolidColor = false;
  for (int column : {3, 4, -1, 1000}) {
    plot.settings().colorColumn = column;
    plot.container.redraw();
    EXPECT_FALSE(points()->GetScalarVisibility()) << column;
    RecordingPainter recorder;
    plot.paint(recorder);
  }
}

TEST_F(AppearanceTest, ColoursGoToThePlotThatIsNamed)
{
  auto* second = plot.chart()->AddPlot(vtkChart::POINTS);
  plot.settings().green = 77;
  plot.container.useColors(second);
  EXPECT_EQ(penColor(second)[1], 77);
  EXPECT_NE(penColor(points())[1], 77);
}

TEST_F(AppearanceTest, ColoursSkipPlotsWithoutPointsAndChartsWithoutPlots)
{
  auto* bars = plot.chart()->AddPlot(vtkChart::BAR);
  Color const former = penColor(bars);
  plot.settings().red = 99;
  plot.container.useColors(bars);
  EXPECT_EQ(penColor(bars), former);
  plot.chart()->ClearPlots();
  plot.container.useColors(nullptr);
}

struct DecorationTest : AppearanceTest
{
  void decorate(int columns)
  {
    std::vector<std::pair<std::string, std::vector<double>>> table;
    for (int i = 0; i < columns; ++i)
      table.emplace_back("curve " + std::to_string(i), std::vector<double>{1, 2});
    plot.container.decorationTable = makeTable(table);
    plot.container.showDecorationPlots = true;
  }
};

TEST_F(DecorationTest, EachColumnButTheLastIsACurveOverTheLast)
{
  decorate(3);
  plot.container.redraw();
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 3);
  for (int i = 0; i < 2; ++i) {
    vtkPlot* curve = plot.chart()->GetPlot(i + 1);
    EXPECT_TRUE(curve->IsA("vtkPlotLine"));
    EXPECT_EQ(drawnColumn(curve, 0), "curve 2");
    EXPECT_EQ(drawnColumn(curve, 1), "curve " + std::to_string(i));
    EXPECT_FLOAT_EQ(curve->GetWidth(), 4);
  }
}

TEST_F(DecorationTest, ColoursComeFromAPaletteOfTwelve)
{
  std::vector<Color> const palette{{120, 180, 180, 230}, {180, 180, 120, 230}, {120, 120, 180, 230},
                                   {180, 120, 60, 230},  {60, 120, 180, 230},  {180, 60, 120, 230},
                                   {120, 180, 60, 230},  {180, 120, 180, 230}, {180, 180, 180, 230},
                                   {120, 60, 120, 230},  {120, 180, 120, 230}, {180, 180, 60, 230}};
  decorate(15);
  plot.container.redraw();
  ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 15);
  for (int i = 0; i < 14; ++i) EXPECT_EQ(penColor(plot.chart()->GetPlot(i + 1)), palette[i % 12]) << i;
  EXPECT_EQ(penColor(plot.chart()->GetPlot(13)), penColor(plot.chart()->GetPlot(1)));
}

// Their rows are not rows of the main table: a rectangle over them must not select any.
TEST_F(DecorationTest, CurvesTakeNoPartInSelecting)
{
  decorate(2);
  plot.container.redraw();
  EXPECT_FALSE(plot.chart()->GetPlot(1)->GetSelectable());
  EXPECT_FALSE(plot.chart()->GetPlot(1)->GetInteractive());
}

TEST_F(DecorationTest, TablesWithoutCurvesAddNothing)
{
  for (int columns : {0, 1}) {
    decorate(columns);
    plot.container.redraw();
    EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1) << columns;
  }
  plot.container.decorationTable = nullptr;
  plot.container.redraw();
  EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
}

TEST_F(DecorationTest, CurvesStayAwayUntilAHostShowsThem)
{
  decorate(3);
  plot.container.showDecorationPlots = false;
  plot.container.redraw();
  EXPECT_EQ(plot.chart()->GetNumberOfPlots(), 1);
}

TEST_F(DecorationTest, StylesWithoutAPlainChartIgnoreThem)
{
  decorate(3);
  plot.container.setPlotStyle(scatterPlotMatrixStyle);
  plot.container.setPlotStyle(scatterPlot3D);
  EXPECT_EQ(plot.container.chartXY, nullptr);
}

} // namespace
} // namespace runsieve::test
