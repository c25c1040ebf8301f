#pragma once

#include <QPolygonF>
#include <QRectF>

namespace runsieve::app {

/// The area around a curve from some pixels above it to as many below, as far as it lies within the height of
/// a plot.
[[nodiscard]] QPolygonF bandAround(QPolygonF const& curve, QRectF const& plot, double reach);

} // namespace runsieve::app
