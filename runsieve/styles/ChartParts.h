#pragma once

#include <runsieve/styles/Style.h>

#include <vtkSmartPointer.h>

class vtkAxis;
class vtkChart;
class vtkPlot;
class vtkPlotPoints;

namespace runsieve {

/// Titles of a chart and of its axes, from the settings.
void setTitles(vtkChart* chart, StyleModel const& model);

/// Puts the texts of the model on an axis, at 0, 1, 2 and so on.
void setTickTexts(vtkAxis* axis, StyleModel& model);

/// Gives a chart the ranges that the user left the same columns with in the same style. Returns whether there
/// are any.
bool applyRememberedWindow(vtkChart* chart, StyleModel const& model);

/// Points a plot at the main columns.
void setMainInput(vtkPlot* plot, StyleModel const& model);

/// A line for each run.
/// \param onlySelected leave out what is not selected
vtkSmartPointer<vtkPlotPoints> runLines(StyleModel const& model, bool onlySelected);

/// Sets the marker size of plot 0 of a chart, if it has markers.
void setMarkerSize(vtkChart* chart, double size);

/// Titles an axis with the bare name of a parameter column.
void setParameterTitle(vtkAxis* axis, vtkTable* table, int column);

/// Axes of a chart of two parameters: titles, or neither titles nor numbers, and the scale.
void setParameterAxes(vtkChart* chart, StyleModel const& model, int x, int y, bool titleX, bool titleY);

} // namespace runsieve
