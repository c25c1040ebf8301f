#include "app/explorer/parameters/SpanHold.h"

#include "app/explorer/charts/RoundedValue.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

SpanHold::SpanHold(Document const& document, ParameterSpans const& spans, SpanAxis const& onAxis,
                   bool isAcross, QPointF const& at, bool excludes)
    : axis(onAxis), across(isAcross), from(along(at))
{
  auto const here = spans.find(axis.parameter);
  auto const found = here == spans.end() ? std::nullopt : spanAt(here->second, axis, from);
  if (found && found->span.gate < document.state().gates.size()) {
    held = found->span.gate;
    grip = found->grip;
    begun = document.state().gates[*held].gate;
    return;
  }
  begun.negated = excludes;
  begun.column = columnFor(begun, document.scan(), axis.parameter);
}

bool SpanHold::isDrag(QPointF const& to) const
{
  return std::fabs(along(to) - from) >= QApplication::startDragDistance() / 2.0;
}

/// As many digits as pixels tell.
double SpanHold::roundedAt(double pixel) const
{
  const double value = axis.valueAt(pixel);
  const double at = axis.pixelAt(value);
  return roundedValue(value, std::fabs(axis.valueAt(at + 1.0) - axis.valueAt(at)));
}

double SpanHold::moved(double end, double pixels) const
{
  if (!std::isfinite(end)) return end;
  const double at = axis.pixelAt(end) + pixels;
  return std::isfinite(at) ? roundedAt(at) : end; // what is not on this axis stays
}

std::optional<Gate> SpanHold::dragged(QPointF const& to) const
{
  const double pixel = along(to);
  double a = 0.0;
  double b = 0.0;
  if (held) {
    a = grip == SpanGrip::High ? begun.range.low : moved(begun.range.low, pixel - from);
    b = grip == SpanGrip::Low ? begun.range.high : moved(begun.range.high, pixel - from);
  } else {
    const double low = std::min(axis.first, axis.last);
    const double high = std::max(axis.first, axis.last);
    a = roundedAt(std::clamp(from, low, high));
    b = roundedAt(std::clamp(pixel, low, high));
  }
  Gate gate = begun;
  gate.range = {std::min(a, b), std::max(a, b)};
  return gate;
}

QString SpanHold::stepName() const
{
  return !held ? "Draw gate" : grip == SpanGrip::Whole ? "Move gate" : "Resize gate";
}

Qt::CursorShape SpanHold::cursor() const
{
  if (!held) return Qt::CrossCursor;
  if (grip == SpanGrip::Whole) return Qt::SizeAllCursor;
  return across ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace runsieve::app
