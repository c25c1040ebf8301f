#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/TableAccess.h>

#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPlot.h>

#include <algorithm>
#include <cmath>

using namespace runsieve;

namespace {

constexpr int densityPoints = 50;
constexpr double headroom = 1.05;
constexpr double mostDrawable = 1e30; ///< beyond it the axes of VTK, which reckon in floats, find no ticks

/// The samples of one distribution, as they are drawn.
struct SampledDensity
{
  vtkNew<vtkFloatArray> x;
  vtkNew<vtkFloatArray> pdf;
  double height = 0.0; ///< the highest density; 0 for a point value, although its peak is drawn at 1

  void add(double at, double density)
  {
    x->InsertNextValue(static_cast<float>(at));
    pdf->InsertNextValue(static_cast<float>(density));
  }
};

void samplePoint(SampledDensity& samples, double at)
{
  samples.add(0.5 * at, 0.0);
  samples.add(0.98 * at, 0.0);
  samples.add(at, 1.0);
  samples.add(at / 0.98, 0.0);
  samples.add(2.0 * at, 0.0);
}

/// Whether the density at x is infinite, or stands for one that is: rounding can put the last sample just
/// beside the end of the range.
bool isEndless(Distribution& distribution, double density, double end)
{
  constexpr double suspicious = 1e6;
  return std::isinf(density) || (density > suspicious && std::isinf(distribution.getPdf(end)));
}

void sampleDensity(SampledDensity& samples, Distribution& distribution, double lower, double span)
{
  const double step = span / (densityPoints - 1.0);
  for (int i = 0; i < densityPoints; ++i) {
    const double x = i * step + lower;
    const bool isLast = i == densityPoints - 1;
    double density = distribution.getPdf(x);
    // What is a little further inside stands for it.
    if (isEndless(distribution, density, isLast ? lower + span : x))
      density = distribution.getPdf(x + (isLast ? -0.1 : 0.1) * step);
    density = std::min(density, mostDrawable);
    samples.add(x, density);
    if (density > samples.height) samples.height = density;
  }
}

int decimals(double span)
{
  if (span >= 100.0) return 0;
  return span >= 10.0 ? 1 : 2;
}

/// Whether values span a range in which the axes of VTK find ticks.
bool isDrawable(vtkFloatArray* x)
{
  double range[2];
  x->GetRange(range, 0);
  return std::abs(range[0]) <= mostDrawable && std::abs(range[1]) <= mostDrawable;
}

/// A stacked plot would always show 0.
void showRangeOf(vtkAxis* axis, vtkFloatArray* x)
{
  double range[2];
  x->GetRange(range, 0);
  if (!(range[0] < range[1]) || !isDrawable(x)) return;
  axis->SetUnscaledRange(range[0], range[1]);
  axis->SetBehavior(vtkAxis::FIXED);
}

} // namespace

void PlotContainer::setDistribution(Distribution* distribution)
{
  if (!distribution) return;
  metaData->blockSignals(true);
  const auto [lower, upper] = distribution->getRange(Distribution::shown);
  const double span = upper - lower;
  SampledDensity samples;
  samples.x->SetName("x");
  samples.pdf->SetName("pdf");
  if (distribution->getType() == Distribution::pointValue)
    samplePoint(samples, lower);
  else
    sampleDensity(samples, *distribution, lower, span);
  auto table = vtkSmartPointer<vtkTable>::New();
  table->AddColumn(samples.x);
  table->AddColumn(samples.pdf);
  replacePlotData(table);

  vtkChart* chart = chartToFill();
  resetLooks(chart);
  shapedChart = chart;
  vtkPlot* plot = chart->AddPlot(vtkChart::STACKED);
  if (isDrawable(samples.x)) plot->SetInputData(plotData, vtkIdType(0), vtkIdType(1));
  plot->SetColor(30, 30, 230, 255);

  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  left->SetRange(0.0, samples.height * headroom);
  left->SetRangeLabelsVisible(false);
  left->SetLabelsVisible(false);
  left->SetTitle("");
  left->SetMargins(0, 0);
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTitle("");
  showRangeOf(bottom, samples.x);
  bottom->SetNumberOfTicks(3);
  bottom->SetPrecision(decimals(span));
  bottom->SetNotation(vtkAxis::FIXED_NOTATION);
  chart->SetInteractive(false);
  if (auto* xy = vtkChartXY::SafeDownCast(chart)) xy->DrawAxesAtOriginOff();
  chart->SetTitle(chartText(metaData->plotTitle));
  metaData->blockSignals(false);
}
