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
  double opacity = 1.0;     ///< of the colour, as in the chart
};

/// What a line says in words: its text, and the numbers of runs of its shades.
[[nodiscard]] QString legendText(LegendLine const& line);

/// Draws the lines of a legend one beside the other, up to the right end of a room: for shades a bar with the
/// smallest and the largest number of runs in a pixel. In a small room bars become short, numbers are left
/// out, then texts are cut, then lines are left out: notes, that of the ground, which is first, and others
/// from the end.
void paintLegend(QPainter& painter, QRectF const& room, std::vector<LegendLine> const& lines,
                 Theme const& theme);

} // namespace runsieve::app
