#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkSmartPointer.h>

class vtkContextView;
class vtkPlotPoints;
class vtkScatterPlotMatrix;
class vtkTable;

/// What differs between the versions of VTK that the library builds with, 9.1 and 9.3.
namespace runsieve {

/// Rebuilds the points that a plot has cached from the table that is its input.
void rebuildPoints(vtkPlotPoints* plot, vtkTable* input);

/// A scatter plot matrix whose large chart shows all points of the active plot after every layout.
vtkSmartPointer<vtkScatterPlotMatrix> makeScatterPlotMatrix();

/// Lets the points in a view be exported as vector graphics. To be called before the view is drawn.
RUNSIEVE_EXPORT void makePrintable(vtkContextView* view);

} // namespace runsieve
