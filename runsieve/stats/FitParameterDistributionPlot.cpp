#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkAxis.h>
#include <vtkColorTransferFunction.h>
#include <vtkPlotPoints.h>

#include <cmath>

using namespace runsieve;

namespace {

constexpr int scoreColumn = 0;
constexpr int iterationColumn = 1;
constexpr int noButton = -1;

/// Blue over black to red along the scores, null if they are not doubles. Without a positive lowest score
/// there is no geometric mean and no logarithm, and the scale is linear.
vtkSmartPointer<vtkColorTransferFunction> scoreColors(vtkDoubleArray* scores)
{
  if (!scores) return nullptr;
  double range[2];
  scores->GetRange(range, 0);
  const double low = range[0];
  const double high = range[1];
  const bool logarithmic = low > 0.0 && low <= high;
  auto colors = vtkSmartPointer<vtkColorTransferFunction>::New();
  colors->AddRGBPoint(low, 0.1, 0.1, 0.8);
  colors->AddRGBPoint(logarithmic ? std::sqrt(high * low) : 0.5 * (low + high), 0.1, 0.1, 0.1);
  colors->AddRGBPoint(high, 0.8, 0.1, 0.1);
  if (logarithmic) colors->SetScale(VTK_CTF_LOG10);
  return colors;
}

void fixView(vtkChart* chart)
{
  chart->SetActionToButton(vtkChart::PAN, noButton);
  chart->SetActionToButton(vtkChart::ZOOM, noButton);
}

void addScoredPoints(vtkChart* chart, vtkTable* table, int x, int y, vtkColorTransferFunction* colors)
{
  auto* points = vtkPlotPoints::SafeDownCast(addPointPlot(chart));
  if (!setPlotInput(points, table, x, y) || !colors) return;
  points->SetScalarVisibility(1);
  points->SetLookupTable(colors);
  points->SelectColorArray(static_cast<vtkIdType>(scoreColumn));
}

} // namespace

void PlotContainer::drawFitParameterDistributionPlot(vtkContextScene* scene)
{
  if (!scene) return;
  const std::vector<int>& parameters = metaData->parameterColumns;
  const int n = static_cast<int>(parameters.size());
  // A cell of the matrix that served as the large chart gets another role here.
  ensureStandaloneChart();
  chartMatrix->SetScene(scene);
  item = chartMatrix;
  layOutCells(chartMatrix, {n, n});
  chartMatrix->SetGutter({static_cast<float>(verticalGutter), static_cast<float>(horizontalGutter)});
  chartMatrix->SetBorders(leftMargin, bottomMargin, rightMargin, topMargin);

  const auto colors = scoreColors(doubleColumn(plotData, scoreColumn));
  for (int i = 0; i <= n - 2; ++i)
    for (int j = 0; j <= n - 2 - i; ++j) {
      vtkChart* chart = chartMatrix->GetChart({i, j});
      makeSelectable(chart, annotationLink);
      fixView(chart);
      const int x = parameters[static_cast<std::size_t>(i)];
      const int y = parameters[static_cast<std::size_t>(n - 1 - j)];
      addScoredPoints(chart, plotData, x, y, colors);
      setParameterAxes(chart, x, y, j == 0, i == 0);
    }
  for (int i = 0; i < n; ++i) {
    vtkChart* chart = chartMatrix->GetChart({i, n - 1 - i});
    fixView(chart);
    const int parameter = parameters[static_cast<std::size_t>(i)];
    addScoredPoints(chart, plotData, iterationColumn, parameter, colors);
    chart->GetAxis(vtkAxis::BOTTOM)->SetTitle("Iteration");
    vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
    setParameterTitle(left, parameter);
    left->SetLogScale(metaData->getLogParameterAxes());
    if (metaData->getLogParameterAxes()) chart->RecalculateBounds();
  }
  makeCellsReachable(chartMatrix);
}
