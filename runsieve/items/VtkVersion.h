#pragma once

#include <runsieve/runsieve_export.h>

class vtkContextView;
class vtkPlotPoints;
class vtkTable;

/// What differs between the versions of VTK that the library builds with, 9.1 and 9.3.
namespace runsieve {

/// Rebuilds the points that a plot has cached from the table that is its input.
void rebuildPoints(vtkPlotPoints* plot, vtkTable* input);

/// Lets the points in a view be exported as vector graphics. To be called before the view is drawn.
RUNSIEVE_EXPORT void makePrintable(vtkContextView* view);

} // namespace runsieve
