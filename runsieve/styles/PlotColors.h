#pragma once

class PlotMetaData;
class vtkPlot;
class vtkTable;

namespace runsieve {

/// Colours a plot of points in one colour or by a column of doubles, as the settings say. Without such a
/// column it keeps the colour that it has.
void colorPlot(vtkPlot* plot, vtkTable* table, PlotMetaData const& settings);

} // namespace runsieve
