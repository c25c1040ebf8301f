#pragma once

class vtkAnnotationLink;
class vtkChart;
class vtkChartMatrix;
class vtkPlot;

namespace runsieve {

/// Takes from a chart whatever a former role has left: link, title, mouse actions, legend, observers, plots,
/// ticks, scales and behaviour of the axes. A chart matrix hands charts from cell to cell when its size
/// changes.
void takeRole(vtkChart* chart);

/// Lets the user select rows by a drag. A click selects nothing: VTK would add the point to the link
/// unannounced.
void makeSelectable(vtkChart* chart, vtkAnnotationLink* link);

/// A plot that the mouse passes through to its chart. If the plot were picked, a redraw between press and
/// release would lose the release.
void addPlot(vtkChart* chart, vtkPlot* plot);

/// A plot whose points stand for no rows of the main table: it must not take part in selecting.
void addAuxiliaryPlot(vtkChart* chart, vtkPlot* plot);

/// Lets the mouse reach exactly those cells that show something, and no axis of them: axes are hit in a strip
/// across the whole scene, and a cell without plots keeps the place of its last paint.
void makeCellsReachable(vtkChartMatrix* matrix);

} // namespace runsieve
