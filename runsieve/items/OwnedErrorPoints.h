#pragma once

#include <runsieve/items/PlotGuards.h>
#include <runsieve/items/vtkPlotErrorPoints.h>

#include <vtkFloatArray.h>

namespace runsieve {

/// A vtkPlotErrorPoints whose maker need not care for the reference that it gives up: it takes one for the
/// base class at the last moment, so that the count of the column is what it was, however often plots come
/// and go. To everybody else it is a vtkPlotErrorPoints.
class OwnedErrorPoints : public GuardedPlot<vtkPlotErrorPoints>
{
public:
  static vtkSmartPointer<OwnedErrorPoints> create()
  {
    auto* plot = new OwnedErrorPoints;
    plot->InitializeObjectBase();
    return vtkSmartPointer<OwnedErrorPoints>::Take(plot);
  }

protected:
  OwnedErrorPoints() = default;
  ~OwnedErrorPoints() override
  {
    if (vtkFloatArray* errors = this->GetLiveErrorArray()) errors->Register(nullptr);
  }
};

} // namespace runsieve
