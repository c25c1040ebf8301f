#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <runsieve/charts/AxisWindow.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/WindowKey.h>

#include <vtkAxis.h>
#include <vtkChart.h>

vtkShiftScaleCallback* vtkShiftScaleCallback::New()
{
  return new vtkShiftScaleCallback;
}

void vtkShiftScaleCallback::Execute(vtkObject* caller, unsigned long, void*)
{
  auto* chart = vtkChart::SafeDownCast(caller);
  if (!chart || !this->plotContainer) return;
  if (!chart->GetAxis(vtkAxis::BOTTOM) || !chart->GetAxis(vtkAxis::LEFT)) return;
  PlotMetaData const& settings = *this->plotContainer->metaData;
  if (settings.xColumns.empty() || settings.yColumns.empty()) return;
  this->plotContainer->coordinateWindows[runsieve::windowKey(settings)] = runsieve::windowOf(chart);
}
