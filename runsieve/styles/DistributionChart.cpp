#include <runsieve/styles/DistributionChart.h>

#include <runsieve/charts/ChartLooks.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkFloatArray.h>
#include <vtkPlot.h>
#include <vtkTable.h>

namespace runsieve {

namespace {

constexpr double headroom = 1.05;

int decimals(double span)
{
  if (span >= 100.0) return 0;
  return span >= 10.0 ? 1 : 2;
}

/// A stacked plot would always show 0.
void showRangeOf(vtkAxis* axis, vtkFloatArray* x)
{
  double range[2];
  x->GetRange(range, 0);
  if (!(range[0] < range[1])) return;
  axis->SetUnscaledRange(range[0], range[1]);
  axis->SetBehavior(vtkAxis::FIXED);
}

} // namespace

void showDensity(vtkChart* chart, vtkTable* samples, double height, double span)
{
  chart->ClearPlots();
  vtkPlot* plot = chart->AddPlot(vtkChart::STACKED);
  if (samples) plot->SetInputData(samples, vtkIdType(0), vtkIdType(1));
  plot->SetColor(30, 30, 230, 255);
  chart->GetAxis(vtkAxis::LEFT)->SetRange(0.0, height * headroom);
  shapeAsDistribution(chart, decimals(span));
  if (samples) showRangeOf(chart->GetAxis(vtkAxis::BOTTOM), floatColumn(samples, 0));
}

} // namespace runsieve
