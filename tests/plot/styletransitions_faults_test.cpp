#include "support/StyleScene.h"

#include <gmock/gmock.h>
#include <vtkFloatArray.h>
#include <vtkPlot3D.h>
#include <vtkPlotParallelCoordinates.h>

namespace runsieve::test {
namespace {

/// Settings that no chart can be made of.
struct Fault
{
  char const* name;
  void (*inflict)(PlotContainer& plot);
};

int addTexts(PlotContainer& plot)
{
  std::vector<std::string> texts(plot.plotData->GetNumberOfRows(), "text");
  plot.plotData->AddColumn(makeColumn<vtkStringArray, std::string>("texts", texts));
  return static_cast<int>(plot.plotData->GetNumberOfColumns()) - 1;
}

int addFloats(PlotContainer& plot)
{
  std::vector<float> floats(plot.plotData->GetNumberOfRows(), 1.5f);
  plot.plotData->AddColumn(makeColumn<vtkFloatArray, float>("floats", floats));
  return static_cast<int>(plot.plotData->GetNumberOfColumns()) - 1;
}

void colorBy(PlotContainer& plot, int column)
{
  plot.metaData->useSolidColor = false;
  plot.metaData->colorColumn = column;
}

// Those with texts in the place of numbers come last.
Fault const faults[] = {
    {"NegativeX", [](PlotContainer& plot) { plot.metaData->xColumns = {-1}; }},
    {"XOutsideTheTable", [](PlotContainer& plot) { plot.metaData->xColumns = {999}; }},
    {"NegativeY", [](PlotContainer& plot) { plot.metaData->yColumns = {-1}; }},
    {"YOutsideTheTable", [](PlotContainer& plot) { plot.metaData->yColumns = {999}; }},
    {"ThreeYOutsideTheTable",
     [](PlotContainer& plot) {
       plot.metaData->yColumns = {-1, 999, -1};
     }},
    {"NegativeZ", [](PlotContainer& plot) { plot.metaData->zColumns = {-1}; }},
    {"ZOutsideTheTable", [](PlotContainer& plot) { plot.metaData->zColumns = {999}; }},
    {"NegativeColor", [](PlotContainer& plot) { colorBy(plot, -1); }},
    {"ColorOutsideTheTable", [](PlotContainer& plot) { colorBy(plot, 999); }},
    {"ColorByFloats", [](PlotContainer& plot) { colorBy(plot, addFloats(plot)); }},
    {"NoX", [](PlotContainer& plot) { plot.metaData->xColumns.clear(); }},
    {"NoY", [](PlotContainer& plot) { plot.metaData->yColumns.clear(); }},
    {"NoZ", [](PlotContainer& plot) { plot.metaData->zColumns.clear(); }},
    {"NoParameters", [](PlotContainer& plot) { plot.metaData->parameterColumns.clear(); }},
    {"ParametersOutsideTheTable",
     [](PlotContainer& plot) {
       plot.metaData->parameterColumns = {-1, 999};
     }},
    {"ColorByTexts", [](PlotContainer& plot) { colorBy(plot, addTexts(plot)); }},
    {"TextsAsX", [](PlotContainer& plot) { plot.metaData->xColumns = {addTexts(plot)}; }},
    {"TextsAsY", [](PlotContainer& plot) { plot.metaData->yColumns = {addTexts(plot)}; }},
    {"TextsAsZ", [](PlotContainer& plot) { plot.metaData->zColumns = {addTexts(plot)}; }},
    {"TextsAsParameter", [](PlotContainer& plot) { plot.metaData->parameterColumns = {addTexts(plot)}; }},
};
constexpr int faultCount = sizeof faults / sizeof faults[0];
constexpr int firstWithTexts = faultCount - 5;

using Case = std::tuple<int, int>;

std::string nameOf(testing::TestParamInfo<Case> const& info)
{
  return std::string(faults[std::get<1>(info.param)].name) + "InStyle" +
         std::to_string(std::get<0>(info.param));
}

struct FaultTest : testing::TestWithParam<Case>
{
  OutputWindowLog log; // texts among the numbers are reported at every paint
  StyleScene plot;
  plotStyles const style = static_cast<plotStyles>(std::get<0>(GetParam()));
  Fault const& fault = faults[std::get<1>(GetParam())];

  void loadScan()
  {
    ScanShape shape;
    shape.species = 2;
    shape.parameters = 3;
    plot.load(shape);
    plot.settings().xColumns = {2};
    plot.settings().yColumns = {0};
    plot.settings().zColumns = {1};
    plot.settings().useSolidColor = true;
    plot.settings().colorColumn = 0;
  }

  std::string column(int number) { return plot.container.plotData->GetColumnName(number); }

  /// The style shows the scan as it does without any fault before.
  void checkStyle()
  {
    EXPECT_EQ(plot.container.getItem(), itemOf(plot.container, style));
    EXPECT_FALSE(plot.settings().signalsBlocked());
    switch (style) {
    case scatterPlot:
    case scatterPlotWithErrorBars:
      return checkPoints(plot.chart());
    case scatterPlotMatrixStyle:
      return checkScatterMatrix();
    case scatterPlot3D:
      return checkSpace();
    case multiPlot:
      return checkMatrix(3, 3, 4);
    case selectionCdfPlot:
      return checkMatrix(3, 2, 4);
    case fitParameterDistributionPlot:
      return checkMatrix(3, 3, 6);
    case parallelCoordinatesPlot:
      return checkParallel();
    default:
      EXPECT_EQ(plot.chart()->GetTitle(), "Not yet implemented");
    }
  }

  void checkPoints(vtkChart* chart)
  {
    ASSERT_EQ(chart->GetNumberOfPlots(), 1);
    EXPECT_EQ(drawnColumn(chart->GetPlot(0), 0), column(2));
    EXPECT_EQ(drawnColumn(chart->GetPlot(0), 1), column(0));
    RecordingPainter recorder;
    plot.paint(recorder);
    ASSERT_FALSE(recorder.markers().empty());
    EXPECT_EQ(recorder.markers()[0].points.size(), 9u);
  }

  void checkMatrix(int columns, int rows, int filled)
  {
    vtkChartMatrix* matrix = plot.container.chartMatrix;
    ASSERT_EQ(matrix->GetSize(), vtkVector2i(columns, rows));
    int found = 0;
    for (int x = 0; x < columns; ++x)
      for (int y = 0; y < rows; ++y)
        if (matrix->GetChart({x, y})->GetNumberOfPlots() > 0) ++found;
    EXPECT_EQ(found, filled);
    if (style != fitParameterDistributionPlot) {
      EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 0), column(2));
      EXPECT_EQ(drawnColumn(plot.chart()->GetPlot(0), 1), column(0));
    }
  }

  void checkScatterMatrix()
  {
    EXPECT_EQ(plot.container.scatterPlotMatrix->GetVisibleColumns()->GetNumberOfValues(),
              plot.container.plotData->GetNumberOfColumns());
  }

  void checkSpace()
  {
    vtkPlot3D* points = nullptr;
    for (vtkIdType i = 0; i < plot.container.chartXYZ->GetNumberOfItems(); ++i)
      if (auto* found = vtkPlot3D::SafeDownCast(plot.container.chartXYZ->GetItem(i))) points = found;
    ASSERT_NE(points, nullptr);
    EXPECT_EQ(points->GetPoints().size(), 9u);
    EXPECT_EQ(points->GetZAxisLabel(), column(1));
  }

  void checkParallel()
  {
    auto* chart = plot.container.chartParallelCoordinates.Get();
    EXPECT_EQ(chart->GetVisibleColumns()->GetNumberOfValues(), plot.container.plotData->GetNumberOfColumns());
    EXPECT_EQ(chart->GetPlot(0)->GetInput(), plot.container.plotData.Get());
  }
};

TEST_P(FaultTest, IsSurvivedAndForgotten)
{
  loadScan();
  plot.change(style);
  checkStyle();
  fault.inflict(plot.container);
  plot.redrawAndPaint();
  EXPECT_FALSE(plot.settings().signalsBlocked());
  loadScan();
  plot.redrawAndPaint();
  checkStyle();
}

TEST_P(FaultTest, IsSurvivedByTheFirstDrawingOfTheStyle)
{
  loadScan();
  fault.inflict(plot.container);
  plot.change(style);
  loadScan();
  plot.redrawAndPaint();
  checkStyle();
}

INSTANTIATE_TEST_SUITE_P(Styles, FaultTest,
                         testing::Combine(testing::Range(0, styleCount), testing::Range(0, faultCount)),
                         nameOf);

struct NumberFaultTest : FaultTest
{};

TEST_P(NumberFaultTest, IsSilent)
{
  loadScan();
  fault.inflict(plot.container);
  plot.change(style);
  EXPECT_EQ(log.text(), "");
}

INSTANTIATE_TEST_SUITE_P(Styles, NumberFaultTest,
                         testing::Combine(testing::Range(0, styleCount), testing::Range(0, firstWithTexts)),
                         nameOf);

/// A column outside the table leaves a plot without input, but its chart in place.
struct NoInputTest : testing::TestWithParam<int>
{
  StyleScene plot;

  NoInputTest() { plot.load({}); }
};

TEST_P(NoInputTest, XOfTheMainPlot)
{
  for (plotStyles style : {scatterPlot, scatterPlotWithErrorBars, multiPlot}) {
    plot.settings().xColumns = {GetParam()};
    plot.change(style);
    ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 1) << style;
    EXPECT_EQ(plot.chart()->GetPlot(0)->GetInput(), nullptr) << style;
  }
}

TEST_P(NoInputTest, YOfTheMainPlot)
{
  for (plotStyles style : {scatterPlot, scatterPlotWithErrorBars, multiPlot}) {
    plot.settings().yColumns = {GetParam()};
    plot.change(style);
    ASSERT_EQ(plot.chart()->GetNumberOfPlots(), 1) << style;
    EXPECT_EQ(plot.chart()->GetPlot(0)->GetInput(), nullptr) << style;
  }
}

INSTANTIATE_TEST_SUITE_P(Columns, NoInputTest, testing::Values(-1, 999));

TEST(NullSceneTest, DrawsNothingAndLeavesTheChartInItsScene)
{
  PlotScene plot;
  plot.container.plotData = makeTable({{"x", {1, 2, 3}}, {"y", {3, 1, 2}}});
  plot.show();
  vtkContextScene* scene = plot.container.item->GetScene();
  plot.container.drawScatterPlotWithErrorBars(nullptr);
  plot.container.drawMulitPlot(nullptr);
  plot.container.drawFitParameterDistributionPlot(nullptr);
  plot.container.drawSelectionCdfPlot(nullptr);
  EXPECT_EQ(plot.container.item->GetScene(), scene);
  RecordingPainter recorder;
  plot.paint(recorder);
}

} // namespace
} // namespace runsieve::test
