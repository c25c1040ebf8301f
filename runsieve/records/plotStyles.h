#pragma once

/// What a plot draws. The value is stored as a 32-bit integer and travels in files.
enum plotStyles : int
{
  scatterPlot = 0,                  ///< one chart of two columns, as points or as one line per run
  barPlot = 1,                      ///< one chart of bars
  stackedPlot = 2,                  ///< one chart of stacked areas
  scatterPlotMatrixStyle = 3,       ///< a scatter plot matrix over the table
  scatterPlot3D = 4,                ///< three columns in space
  multiPlot = 5,                    ///< pairwise scatter of the parameters beside one large chart
  selectionCdfPlot = 6,             ///< all runs above, parameter distributions of the selection below
  scatterPlotWithErrorBars = 7,     ///< one chart with error bars
  fitParameterDistributionPlot = 8, ///< distribution of the parameters of a fit
  parallelCoordinatesPlot = 9       ///< parallel coordinates over the table
};
