#include <runsieve/plot/vtkShiftScaleCallback.h>

#include <runsieve/plot/PlotContainer.h>

#include <vtkAxis.h>

vtkShiftScaleCallback* vtkShiftScaleCallback::New()
{
  return new vtkShiftScaleCallback;
}

void vtkShiftScaleCallback::Execute(vtkObject* caller, unsigned long, void*)
{
  auto* chart = vtkChart::SafeDownCast(caller);
  if (!chart || !this->plotContainer) return;
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  if (!bottom || !left) return;
  PlotMetaData const& settings = *this->plotContainer->metaData;
  if (settings.xColumns.empty() || settings.yColumns.empty()) return;
  CoordinateWindow& window = this->plotContainer->coordinateWindows[ReducedMetaData{
      settings.xColumns[0], settings.yColumns[0], settings.getPlotStyle()}];
  window = {bottom->GetMinimum(), left->GetMinimum(), bottom->GetMaximum(), left->GetMaximum(), true};
}
