#pragma once

#include <runsieve/charts/ChartRoles.h>
#include <runsieve/charts/Margins.h>

#include <vtkSmartPointer.h>
#include <vtkVector.h>

class vtkAbstractContextItem;
class vtkAnnotationLink;
class vtkChart;
class vtkChartMatrix;
class vtkChartParallelCoordinates;
class vtkChartXYZ;
class vtkCommand;
class vtkScatterPlotMatrix;

namespace runsieve {

class ChartLifetime;
class CustomTicks;

/// The charts of one plot, which builders draw in, and the one place that makes and hands out charts.
struct ChartStage
{
  vtkSmartPointer<vtkChart>& chart;              ///< chartXY of the container; may be null
  vtkSmartPointer<vtkAbstractContextItem>& item; ///< what stands in the scene; null only at the very start
  vtkScatterPlotMatrix* scatterMatrix;
  vtkChartMatrix* matrix;
  vtkChartXYZ* chart3D;
  vtkChartParallelCoordinates* parallel; ///< null in a copy
  vtkAnnotationLink* link;
  vtkCommand* interactionObserver;
  Margins margins;
  ChartRoles& roles;
  ChartLifetime& lifetime;
  CustomTicks& ticks;

  /// A chart of its own for one plot, fully set up: margins, link, the scene of the item, an empty plot of
  /// points. It is the present one unless that has another role.
  vtkChart* alone();

  /// The chart that an adapter fills: whatever stands, cells of a grid too; a new one that becomes the item
  /// if there is none. \param part plain or distribution
  vtkChart* toFill(ChartPart part);

  /// A new chart for Sobol indices, which lays itself out and becomes the item. It has no scene yet.
  vtkChart* forSensitivities();

  /// Gives the grid a size, with all cells empty and of one cell each. A change of size makes all cells anew:
  /// VTK would hand charts and spans on to other cells.
  void layOutGrid(vtkVector2i size);

  /// A cell of the grid in a role, without plots.
  vtkChart* cell(vtkVector2i position, ChartPart part);

  /// The same for the cell that is the chart of the plot. One that takes the place of another chart starts
  /// with neither legend nor logarithms, as any new chart.
  vtkChart* mainCell(vtkVector2i position, ChartPart part);

  /// Lets the mouse reach exactly those cells that show something, and no axis of them: axes are hit in a
  /// strip across the whole scene, and a cell without plots keeps the place of its last paint.
  void makeCellsReachable();

private:
  vtkSmartPointer<vtkChart> newChart() const;
};

} // namespace runsieve
