#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/figure/FigureContent.h"

#include <cstddef>

class QPainter;

namespace runsieve::app {

/// The gates on an output with their names, as translucent rectangles without handles.
void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme, PlotNames& names);

} // namespace runsieve::app
