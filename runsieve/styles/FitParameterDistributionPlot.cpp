#include <runsieve/styles/FitParameterDistributionPlot.h>

#include <runsieve/charts/ChartLooks.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ChartParts.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkColorTransferFunction.h>
#include <vtkDoubleArray.h>
#include <vtkPlotPoints.h>
#include <vtkTable.h>

#include <cmath>

namespace runsieve {

namespace {

constexpr int scoreColumn = 0;
constexpr int iterationColumn = 1;

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

void addScoredPoints(vtkChart* chart, vtkTable* table, int x, int y, vtkColorTransferFunction* colors)
{
  auto* points = vtkPlotPoints::SafeDownCast(addPointPlot(chart));
  if (!setPlotInput(points, table, x, y) || !colors) return;
  points->SetScalarVisibility(1);
  points->SetLookupTable(colors);
  points->SelectColorArray(static_cast<vtkIdType>(scoreColumn));
}

void buildPair(StyleModel& model, int i, int j, vtkColorTransferFunction* colors)
{
  std::vector<int> const& parameters = model.settings.parameterColumns;
  const int x = parameters[static_cast<std::size_t>(i)];
  const int y = parameters[parameters.size() - 1 - static_cast<std::size_t>(j)];
  vtkChart* chart = model.stage.cell({i, j}, ChartPart::scoredPair);
  makeSelectable(chart, model.stage.link);
  fixView(chart);
  addScoredPoints(chart, model.data, x, y, colors);
  setParameterAxes(chart, model, x, y, j == 0, i == 0);
}

void buildIterations(StyleModel& model, int i, int n, vtkColorTransferFunction* colors)
{
  const int parameter = model.settings.parameterColumns[static_cast<std::size_t>(i)];
  const bool log = model.settings.getLogParameterAxes();
  vtkChart* chart = model.stage.cell({i, n - 1 - i}, ChartPart::iterations);
  fixView(chart);
  addScoredPoints(chart, model.data, iterationColumn, parameter, colors);
  chart->GetAxis(vtkAxis::BOTTOM)->SetTitle("Iteration");
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  setParameterTitle(left, model.data, parameter);
  left->SetLogScale(log);
  settleLogScale(chart, log);
}

void build(StyleModel& model, vtkContextScene* scene)
{
  const int n = static_cast<int>(model.settings.parameterColumns.size());
  // A cell of the grid that served as the large chart gets another role here.
  model.stage.alone();
  model.stage.matrix->SetScene(scene);
  model.stage.item = model.stage.matrix;
  model.stage.layOutGrid({n, n});
  setGridMarginsTurned(model.stage.matrix, model.stage.margins);
  const auto colors = scoreColors(doubleColumn(model.data, scoreColumn));
  for (int i = 0; i <= n - 2; ++i)
    for (int j = 0; j <= n - 2 - i; ++j) buildPair(model, i, j, colors);
  for (int i = 0; i < n; ++i) buildIterations(model, i, n, colors);
  model.stage.makeCellsReachable();
}

} // namespace

const Style fitParameterBuilder = {fitParameterDistributionPlot, false, build, nullptr, nullptr};

} // namespace runsieve
