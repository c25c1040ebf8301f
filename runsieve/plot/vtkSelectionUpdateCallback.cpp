#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <runsieve/plot/PlotContainerPrivate.h>
#include <runsieve/records/PlotMetaData.h>

#include <vtkAnnotationLink.h>

vtkSelectionUpdateCallback* vtkSelectionUpdateCallback::New()
{
  return new vtkSelectionUpdateCallback;
}

void vtkSelectionUpdateCallback::Execute(vtkObject* caller, unsigned long, void*)
{
  auto* link = vtkAnnotationLink::SafeDownCast(caller);
  if (!link || !this->plotContainer || this->plotContainer->metaData->parameterColumns.empty()) return;
  this->plotContainer->d->evaluateSelection(link);
}
