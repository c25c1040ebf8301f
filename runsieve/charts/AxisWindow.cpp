#include <runsieve/charts/AxisWindow.h>

#include <vtkAxis.h>
#include <vtkChart.h>

#include <cmath>

namespace runsieve {

namespace {

WindowScale scaleOf(vtkAxis* axis)
{
  return axis->GetLogScaleActive() ? WindowScale::logarithmic : WindowScale::linear;
}

/// Makes a log axis active, whatever its range was: only then it takes powers of ten.
void activateLogScale(vtkAxis* axis)
{
  if (axis->GetLogScaleActive()) return;
  axis->SetUnscaledRange(1.0, 10.0);
  axis->SetLogScale(true);
  axis->Update();
}

void applyRange(vtkAxis* axis, double minimum, double maximum, WindowScale scale, bool log)
{
  axis->SetBehavior(vtkAxis::FIXED);
  if (log && scale != WindowScale::linear)
    activateLogScale(axis);
  else if (scale != WindowScale::asTheAxis)
    axis->SetLogScale(false);
  const bool toNumbers = scale == WindowScale::logarithmic && !log;
  axis->SetMinimum(toNumbers ? std::pow(10.0, minimum) : minimum);
  axis->SetMaximum(toNumbers ? std::pow(10.0, maximum) : maximum);
  axis->SetLogScale(log); // converts by itself
}

} // namespace

CoordinateWindow windowOf(vtkChart* chart)
{
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  return {bottom->GetMinimum(), left->GetMinimum(), bottom->GetMaximum(), left->GetMaximum(), true,
          scaleOf(bottom),      scaleOf(left)};
}

void applyWindow(vtkChart* chart, CoordinateWindow const& window, bool logX)
{
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  applyRange(bottom, window.xMin, window.xMax, window.xScale, logX);
  applyRange(left, window.yMin, window.yMax, window.yScale, left->GetLogScale());
}

} // namespace runsieve
