#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/figure/FigureContent.h"

#include <QStringList>

#include <cstddef>
#include <vector>

class QPainter;

namespace runsieve::app {

/// The gates on an output with their names, as translucent rectangles without handles.
void paintFigureGates(QPainter& painter, FigureContent const& content, std::size_t output,
                      ChartFrame const& frame, Theme const& theme, PlotNames& names);

/// What gates ask for that stand in none of the charts of some outputs: those on parameters, on runs, and on
/// other outputs. The last of many are counted.
[[nodiscard]] QStringList unseenGates(FigureContent const& content, std::vector<std::size_t> const& outputs);

} // namespace runsieve::app
