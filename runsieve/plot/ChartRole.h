#pragma once

#include <vtkVector.h>

class vtkAnnotationLink;
class vtkChart;
class vtkChartMatrix;
class vtkPlot;

namespace runsieve {

/// The first plot of a chart; null if there is no chart or no plot.
vtkPlot* plot0(vtkChart* chart);

/// Gives a chart the title, mouse actions, legend and axes of a new one, without plots. Observers stay.
void resetLooks(vtkChart* chart);

/// Takes from a chart whatever a former role has left, observers and annotation link too. A chart matrix
/// hands charts from cell to cell when its size changes.
void takeRole(vtkChart* chart);

/// Lets the user select rows by a drag. A click selects nothing: VTK would add the point to the link
/// unannounced.
void makeSelectable(vtkChart* chart, vtkAnnotationLink* link);

/// Adds markers, or a line, for rows of a table. See addPlot().
vtkPlot* addPointPlot(vtkChart* chart);
vtkPlot* addLinePlot(vtkChart* chart);

/// A plot that the mouse passes through to its chart. If the plot were picked, a redraw between press and
/// release would lose the release.
void addPlot(vtkChart* chart, vtkPlot* plot);

/// A plot whose points stand for no rows of the main table: it must not take part in selecting.
void addAuxiliaryPlot(vtkChart* chart, vtkPlot* plot);

/// Pixels above each small chart of a selection view, for its p-value.
constexpr int smallChartTitleSpace = 25;

/// Gives a matrix a size with all cells in a neutral role and of one cell each. A change of size would
/// otherwise hand charts and spans on to other cells.
void layOutCells(vtkChartMatrix* matrix, vtkVector2i size);

/// Lets the mouse reach exactly those cells that show something, and no axis of them: axes are hit in a strip
/// across the whole scene, and a cell without plots keeps the place of its last paint.
void makeCellsReachable(vtkChartMatrix* matrix);

} // namespace runsieve
