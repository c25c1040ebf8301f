#pragma once

#include <string>

class vtkChart;
class vtkPlot;
class vtkTable;

namespace runsieve {

/// The first plot of a chart; null if there is no chart or no plot.
vtkPlot* plot0(vtkChart* chart);

/// Adds markers, or a line, for rows of a table, in the colour that the chart has next. See addPlot().
vtkPlot* addPointPlot(vtkChart* chart);
vtkPlot* addLinePlot(vtkChart* chart);

/// A plot that the mouse passes through to its chart. If the plot were picked, a redraw between press and
/// release would lose the release.
void addPlot(vtkChart* chart, vtkPlot* plot);

/// A plot whose points stand for no rows of the main table: it must not take part in selecting.
void addAuxiliaryPlot(vtkChart* chart, vtkPlot* plot);

/// Points a plot at two columns; without them the plot is left as it is. Returns whether it has them.
bool setPlotInput(vtkPlot* plot, vtkTable* table, long long x, long long y);
bool setPlotInput(vtkPlot* plot, vtkTable* table, std::string const& x, std::string const& y);

} // namespace runsieve
