#pragma once

#include <vtkPlotPoints.h>
#include <vtkVersionMacros.h>

/// All differences between the versions of VTK that the library builds with: 9.1 and 9.3.
namespace runsieve {

/// Reaches what vtkPlotPoints keeps for its subclasses.
struct PlotPointsAccess : vtkPlotPoints
{
  /// Rebuilds the points that a plot has cached from the table that is its input.
  static void rebuildPoints(vtkPlotPoints* plot, vtkTable* input)
  {
#if VTK_VERSION_NUMBER >= VTK_VERSION_CHECK(9, 2, 0)
    (void)input;
    plot->UpdateCache();
#else
    (plot->*(&PlotPointsAccess::UpdateTableCache))(input);
#endif
  }
};

} // namespace runsieve
