#include "support/MultiPlotScene.h"

#include <gmock/gmock.h>
#include <vtkChartXY.h>
#include <vtkContextMouseEvent.h>
#include <vtkPlotPoints.h>

namespace runsieve::test {
namespace {

const Color black{0, 0, 0, 255};

/// The same view for different numbers of parameters.
struct MultiPlotGridTest : MultiPlotScene, testing::WithParamInterface<int>
{
  int const n = GetParam();
  MultiPlotGridTest() { load(n); }

  bool isSmall(int column, int row) { return column + row <= n - 2; }
  bool isBig(int column, int row) { return column == n / 2 && row == n / 2; }
  std::string name(int parameter) { return std::string(1, static_cast<char>('a' + parameter)); }

  template <class Check> void forSmallCharts(Check check)
  {
    for (int column = 0; column < n; ++column)
      for (int row = 0; row < n; ++row)
        if (isSmall(column, row)) {
          SCOPED_TRACE("cell " + std::to_string(column) + ", " + std::to_string(row));
          check(column, row, cell(column, row));
        }
  }
};

TEST_P(MultiPlotGridTest, HasAColumnAndARowForEachParameter)
{
  EXPECT_EQ(container.getItem(), matrix());
  EXPECT_EQ(matrix()->GetScene(), scene.Get());
  EXPECT_EQ(matrix()->GetSize(), vtkVector2i(n, n));
}

TEST_P(MultiPlotGridTest, OnlyTheTriangleAndTheLargeChartShowSomething)
{
  for (int column = 0; column < n; ++column)
    for (int row = 0; row < n; ++row) {
      bool const shown = isSmall(column, row) || isBig(column, row);
      EXPECT_EQ(cell(column, row)->GetNumberOfPlots(), shown ? 1 : 0) << column << " " << row;
      EXPECT_EQ(cell(column, row)->GetInteractive(), shown) << column << " " << row;
    }
}

TEST_P(MultiPlotGridTest, EachPairOfParametersStandsInTheTriangleOnce)
{
  forSmallCharts([this](int column, int row, vtkChart* chart) {
    ASSERT_EQ(chart->GetNumberOfPlots(), 1);
    vtkPlot* points = chart->GetPlot(0);
    EXPECT_TRUE(points->IsA("vtkPlotPoints"));
    EXPECT_EQ(points->GetInput(), container.plotData.Get());
    EXPECT_EQ(drawnColumn(points, 0), "Parameter: " + name(column));
    EXPECT_EQ(drawnColumn(points, 1), "Parameter: " + name(n - 1 - row));
    EXPECT_NE(column, n - 1 - row) << "no parameter meets itself";
    EXPECT_EQ(penColor(points), black);
  });
}

TEST_P(MultiPlotGridTest, OnlyTheOuterRowAndColumnOfTheTriangleAreLabelled)
{
  forSmallCharts([this](int column, int row, vtkChart* chart) {
    vtkAxis* x = chart->GetAxis(vtkAxis::BOTTOM);
    vtkAxis* y = chart->GetAxis(vtkAxis::LEFT);
    EXPECT_EQ(x->GetTitle(), row == 0 ? name(column) : "");
    EXPECT_EQ(x->GetLabelsVisible(), row == 0);
    EXPECT_EQ(y->GetTitle(), column == 0 ? name(n - 1 - row) : "");
    EXPECT_EQ(y->GetLabelsVisible(), column == 0);
  });
}

TEST_P(MultiPlotGridTest, AllChartsSelectRowsWithTheRightButton)
{
  for (int column = 0; column < n; ++column)
    for (int row = 0; row < n; ++row)
      if (isSmall(column, row) || isBig(column, row)) {
        EXPECT_EQ(cell(column, row)->GetActionToButton(vtkChart::SELECT), vtkContextMouseEvent::RIGHT_BUTTON);
        EXPECT_EQ(cell(column, row)->GetAnnotationLink(), container.annotationLink.Get());
      }
}

TEST_P(MultiPlotGridTest, TheLargeChartFillsTheFreeCorner)
{
  EXPECT_EQ(chart(), cell(n / 2, n / 2));
  EXPECT_EQ(matrix()->GetChartSpan({n / 2, n / 2}), vtkVector2i((n + 1) / 2, (n + 1) / 2));
  forSmallCharts([this](int column, int row, vtkChart*) {
    EXPECT_EQ(matrix()->GetChartSpan({column, row}), vtkVector2i(1, 1));
    EXPECT_TRUE(column < n / 2 || row < n / 2) << "clear of the large chart";
  });
  vtkPlot* points = chart()->GetPlot(0);
  EXPECT_EQ(drawnColumn(points, 0), "x");
  EXPECT_EQ(drawnColumn(points, 1), "y");
  EXPECT_EQ(penColor(points), black);
}

TEST_P(MultiPlotGridTest, MarkersAreTwiceAsLargeAsStated)
{
  settings().pointSize = 3;
  settings().markerStyle = VTK_MARKER_DIAMOND;
  container.redraw();
  forSmallCharts([](int, int, vtkChart* chart) {
    EXPECT_FLOAT_EQ(vtkPlotPoints::SafeDownCast(chart->GetPlot(0))->GetMarkerSize(), 6);
  });
  auto* big = vtkPlotPoints::SafeDownCast(chart()->GetPlot(0));
  EXPECT_FLOAT_EQ(big->GetMarkerSize(), 6);
  EXPECT_EQ(big->GetMarkerStyle(), VTK_MARKER_DIAMOND);
}

TEST_P(MultiPlotGridTest, ParameterAxesCanBeLogarithmic)
{
  for (bool log : {true, false}) {
    settings().setLogParameterAxes(log);
    container.redraw();
    forSmallCharts([log](int, int, vtkChart* chart) {
      EXPECT_EQ(chart->GetAxis(vtkAxis::BOTTOM)->GetLogScale(), log);
      EXPECT_EQ(chart->GetAxis(vtkAxis::LEFT)->GetLogScale(), log);
    });
    EXPECT_FALSE(bottom()->GetLogScale()) << "the large chart has a switch of its own";
  }
}

TEST_P(MultiPlotGridTest, EveryChartIsPainted)
{
  for (int i = 0; i < 2; ++i) {
    RecordingPainter recorder;
    paint(recorder);
    EXPECT_EQ(recorder.markers().size(), static_cast<std::size_t>(n * (n - 1) / 2 + 1));
    container.redraw();
  }
}

INSTANTIATE_TEST_SUITE_P(Parameters, MultiPlotGridTest, testing::Values(1, 2, 3, 5));

} // namespace
} // namespace runsieve::test
