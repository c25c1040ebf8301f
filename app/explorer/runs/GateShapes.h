#pragma once

#include "app/explorer/charts/ChartFrame.h"

#include <runsieve/core/gate/ResolvedGate.h>

#include <QRectF>

#include <cstdint>
#include <optional>

namespace runsieve::app {

/// Which sides of a rectangle a pointer holds; none of them: all of it.
struct GateGrip
{
  bool left = false;
  bool right = false;
  bool top = false;
  bool bottom = false;

  [[nodiscard]] bool isWhole() const { return !left && !right && !top && !bottom; }
};

/// Whether gates of a kind like this stand in the chart of their output, if it is one.
[[nodiscard]] bool hasShape(Gate const& gate);

/// Where a gate on an output stands in the chart of that output: from its first to its last time and over its
/// range; what is open reaches to the ends of the chart. Nothing for gates that are no rectangles.
[[nodiscard]] std::optional<QRectF> shapeOf(Gate const& gate, ChartFrame const& frame);

/// What of a shape is under a pointer; nothing if it is not. \param reach in pixels, of a pointer on its
/// sides
[[nodiscard]] std::optional<GateGrip> gripAt(QRectF const& shape, QPointF const& pointer, double reach);

/// A gate whose held sides have been dragged. Open ends stay open, but for one that is held. \param by
/// pixels, to the right and downwards
[[nodiscard]] Gate draggedGate(Gate const& gate, ChartFrame const& frame, GateGrip const& grip,
                               QPointF const& by);

/// A new gate over a rectangle of a chart.
[[nodiscard]] Gate gateOver(QRectF const& rectangle, ChartFrame const& frame, std::string const& output);

} // namespace runsieve::app
