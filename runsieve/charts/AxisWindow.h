#pragma once

#include <runsieve/records/CoordinateWindow.h>

class vtkChart;

namespace runsieve {

/// The ranges of the bottom and left axes of a chart, with their scales.
CoordinateWindow windowOf(vtkChart* chart);

/// Gives both axes the ranges of a window and fixes them. A range that was read from an axis of another scale
/// is converted. The bottom axis becomes logarithmic or not as logX says; the left one stays as it is.
void applyWindow(vtkChart* chart, CoordinateWindow const& window, bool logX);

} // namespace runsieve
