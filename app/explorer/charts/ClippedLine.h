#pragma once

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace runsieve::app {

/// The parts of a line that lie in a rectangle: not every format of pictures can cut them off by itself.
/// Points that are not finite interrupt the line, and points that stand closer to the one before than a
/// distance are left out, but for the ends.
[[nodiscard]] std::vector<QPolygonF> clippedLine(QPolygonF const& line, QRectF const& to,
                                                 double distance = 0.0);

} // namespace runsieve::app
