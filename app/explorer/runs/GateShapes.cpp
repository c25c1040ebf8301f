#include "app/explorer/runs/GateShapes.h"

#include <runsieve/core/gate/GateText.h>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// Kinds whose range is one of values and whose span is one of times.
bool isRectangle(GateKind kind)
{
  return kind <= GateKind::Last;
}

/// Kinds whose range is one of times.
bool isTimeRange(GateKind kind)
{
  return kind == GateKind::TimeOfMax || kind == GateKind::TimeOfMin;
}

double within(double pixel, double low, double high)
{
  return std::isnan(pixel) ? low : std::clamp(pixel, low, high);
}

/// Ends in order, whichever was dragged beyond the other.
template <class Ends, class Value> void setEnds(Ends& first, Ends& last, Value a, Value b)
{
  first = std::min(a, b);
  last = std::max(a, b);
}

} // namespace

bool hasShape(Gate const& gate)
{
  return isRectangle(gate.kind) || isTimeRange(gate.kind);
}

std::optional<QRectF> shapeOf(Gate const& gate, ChartFrame const& frame)
{
  const QRectF plot = frame.plot();
  constexpr double beyond = 4.0; // open ends have no side to be seen
  double left = plot.left() - beyond;
  double right = plot.right() + beyond;
  if (isTimeRange(gate.kind)) {
    left = within(frame.xAt(gate.range.low), left, right);
    right = within(frame.xAt(gate.range.high), left, right);
    return QRectF(QPointF(left, plot.top() - beyond), QPointF(right, plot.bottom() + beyond));
  }
  if (!isRectangle(gate.kind)) return std::nullopt;
  if (gate.span && gate.span->first) left = frame.xAt(*gate.span->first);
  if (gate.span && gate.span->last) right = frame.xAt(*gate.span->last);
  double top = plot.top() - beyond;
  double bottom = plot.bottom() + beyond;
  if (std::isfinite(gate.range.high)) {
    const double y = frame.yAt(gate.range.high);
    top = std::isnan(y) ? bottom : y;
  }
  if (std::isfinite(gate.range.low)) {
    const double y = frame.yAt(gate.range.low);
    if (!std::isnan(y)) bottom = y; // not positive on a logarithmic axis: below all that it shows
  }
  return QRectF(QPointF(left, top), QPointF(right, bottom));
}

std::optional<GateGrip> gripAt(QRectF const& shape, QPointF const& pointer, double reach)
{
  if (!shape.adjusted(-reach, -reach, reach, reach).contains(pointer)) return std::nullopt;
  // Of a narrow shape the middle moves it.
  const double inX = std::min(reach, shape.width() / 4.0);
  const double inY = std::min(reach, shape.height() / 4.0);
  GateGrip grip;
  grip.left = pointer.x() <= shape.left() + inX;
  grip.right = !grip.left && pointer.x() >= shape.right() - inX;
  grip.top = pointer.y() <= shape.top() + inY;
  grip.bottom = !grip.top && pointer.y() >= shape.bottom() - inY;
  return grip;
}

Gate draggedGate(Gate const& gate, ChartFrame const& frame, GateGrip const& grip, QPointF const& by)
{
  Gate moved = gate;
  const bool whole = grip.isWhole();
  auto const shiftedX = [&](double value, bool held) {
    return held || whole ? frame.xValue(frame.xAt(value) + by.x()) : value;
  };
  auto const shiftedY = [&](double value, bool held) {
    const double pixel = frame.yAt(value);
    return (held || whole) && std::isfinite(value) && !std::isnan(pixel) ? frame.yValue(pixel + by.y())
                                                                         : value;
  };
  if (isTimeRange(gate.kind)) {
    if (std::isfinite(gate.range.low)) moved.range.low = shiftedX(gate.range.low, grip.left);
    if (std::isfinite(gate.range.high)) moved.range.high = shiftedX(gate.range.high, grip.right);
    setEnds(moved.range.low, moved.range.high, moved.range.low, moved.range.high);
    return moved;
  }
  if (moved.span) {
    const bool single = moved.span->first && moved.span->last && *moved.span->first == *moved.span->last;
    const bool pulled = single && (grip.left || grip.right);
    if (moved.span->first) moved.span->first = shiftedX(*gate.span->first, pulled ? by.x() < 0.0 : grip.left);
    if (moved.span->last) moved.span->last = shiftedX(*gate.span->last, pulled ? by.x() > 0.0 : grip.right);
    if (moved.span->first && moved.span->last)
      setEnds(moved.span->first, moved.span->last, *moved.span->first, *moved.span->last);
  }
  moved.range.low = shiftedY(gate.range.low, grip.bottom);
  moved.range.high = shiftedY(gate.range.high, grip.top);
  setEnds(moved.range.low, moved.range.high, moved.range.low, moved.range.high);
  return moved;
}

Gate gateOver(QRectF const& rectangle, ChartFrame const& frame, std::string const& output)
{
  Gate gate;
  gate.kind = GateKind::Inside;
  gate.column = output;
  gate.span = GateSpan{frame.xValue(rectangle.left()), frame.xValue(rectangle.right())};
  gate.range = {frame.yValue(rectangle.bottom()), frame.yValue(rectangle.top())};
  return gate;
}

} // namespace runsieve::app
