#pragma once

#include "PlotScene.h"
#include "ScanBuilder.h"

#include <gtest/gtest.h>

namespace runsieve::test {

inline constexpr int styleCount = 10;

/// The chart that a style makes the current item.
inline vtkAbstractContextItem* itemOf(PlotContainer& container, plotStyles style)
{
  switch (style) {
  case scatterPlotMatrixStyle:
    return container.scatterPlotMatrix;
  case scatterPlot3D:
    return container.chartXYZ;
  case multiPlot:
  case selectionCdfPlot:
  case fitParameterDistributionPlot:
    return container.chartMatrix;
  case parallelCoordinatesPlot:
    return container.chartParallelCoordinates;
  default:
    return container.chartXY;
  }
}

/// A plot of a scan that is taken through styles as a host does it: the item of the new style goes into the
/// scene and is painted.
struct StyleScene : PlotScene
{
  void load(ScanShape const& shape) { container.setLinePlotTable(makeScan(shape), false); }

  void change(plotStyles style)
  {
    if (settings().getPlotStyle() == style) container.redraw();
    container.setPlotStyle(style);
    showAndPaint();
  }

  void redrawAndPaint()
  {
    container.redraw();
    showAndPaint();
  }

private:
  void showAndPaint()
  {
    show();
    RecordingPainter recorder;
    paint(recorder);
  }
};

} // namespace runsieve::test
