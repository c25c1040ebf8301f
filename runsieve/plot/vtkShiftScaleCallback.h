#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkCommand.h>

class PlotContainer;

/// Observer of the interaction of a chart: stores its axis ranges under the current columns and style, so
/// that a plot comes back with the zoom that the user left it in.
class RUNSIEVE_EXPORT vtkShiftScaleCallback : public vtkCommand
{
public:
  static vtkShiftScaleCallback* New();
  ~vtkShiftScaleCallback() override = default;

  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

  PlotContainer* plotContainer = nullptr; ///< not owned; null once the container is gone

protected:
  vtkShiftScaleCallback() = default;
};
