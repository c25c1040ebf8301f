#pragma once

#include <QPolygonF>

namespace runsieve::app {

/// A line with fewer points that nowhere lies further than that above or below it. Its ends stay, and points
/// one above the other. Sleeve fitting, of Zhao and Saalfeld (1997): linear in the points. \param line from
/// left to right \param tolerance pixels
[[nodiscard]] QPolygonF thinned(QPolygonF const& line, double tolerance);

} // namespace runsieve::app
