#pragma once

#include "app/explorer/charts/Theme.h"

#include <runsieve/core/coverage/DensityScale.h>

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace runsieve::app {

/// A line of a legend: what a colour, or the shades of a colour, stand for; without a colour a note on all.
struct LegendLine
{
  QString text;
  QColor color;
  DensityScale shades = {}; ///< that of an empty picture: one colour
};

/// Draws a legend in the upper right corner of a plot: for shades a bar with the smallest and the largest
/// number of runs in a pixel.
void paintLegend(QPainter& painter, QRectF const& plot, std::vector<LegendLine> const& lines,
                 Theme const& theme);

} // namespace runsieve::app
