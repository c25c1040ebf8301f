#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkCommand.h>

class PlotContainer;

/// Observer of a container's annotation link: turns each change of the selection into flag columns and
/// statistics and redraws. Does nothing in a plot without parameter columns.
class RUNSIEVE_EXPORT vtkSelectionUpdateCallback : public vtkCommand
{
public:
  static vtkSelectionUpdateCallback* New();
  ~vtkSelectionUpdateCallback() override = default;

  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

  PlotContainer* plotContainer = nullptr; ///< not owned; null once the container is gone

protected:
  vtkSelectionUpdateCallback() = default;
};
