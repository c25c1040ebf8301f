#include "app/explorer/parameters/ParameterSpans.h"

#include "app/explorer/charts/RoundedValue.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double reach = 5.0; ///< pixels from an end of a span

void add(ParameterSpans& spans, ResolvedGate const& resolved, ParameterSpan span)
{
  if (resolved.target != GateTarget::Parameter || resolved.gate.kind != GateKind::Inside) return;
  span.range = resolved.gate.range;
  span.negated = resolved.gate.negated;
  spans[resolved.column].push_back(span);
}

double pixelOfEnd(SpanAxis const& axis, double value, double open)
{
  const double pixel = axis.pixelAt(value);
  return std::isfinite(pixel) ? pixel : open;
}

std::optional<SpanGrip> gripOf(ParameterSpan const& span, SpanAxis const& axis, double pixel)
{
  const double low = axis.lowPixel(span);
  const double high = axis.highPixel(span);
  const double inside = std::min(reach, std::fabs(high - low) / 4.0); // of a narrow span the middle moves it
  auto const isAt = [&](double end, double other) {
    const double inwards = other > end ? pixel - end : end - pixel;
    return inwards >= -reach && inwards <= inside;
  };
  if (std::isfinite(span.range.low) && isAt(low, high)) return SpanGrip::Low;
  if (std::isfinite(span.range.high) && isAt(high, low)) return SpanGrip::High;
  if (pixel >= std::min(low, high) && pixel <= std::max(low, high)) return SpanGrip::Whole;
  return std::nullopt;
}

} // namespace

ParameterSpans spansOf(Document const& document)
{
  ParameterSpans spans;
  if (!document.isOpen()) return spans;
  std::size_t moving = 0;
  Gate const* previewed = document.previewedGate(&moving);
  auto const& gates = document.state().gates;
  auto const& outcomes = document.outcomes();
  for (std::size_t i = 0; i < gates.size(); ++i) {
    if ((previewed && i == moving) || !outcomes[i].resolved) continue;
    add(spans, *outcomes[i].resolved, {i, {}, false, gates[i].on, document.selectedGate() == i});
  }
  if (!previewed) return spans;
  try {
    const bool isOn = moving >= gates.size() || gates[moving].on;
    add(spans, resolveGate(*previewed, document.scan()), {moving, {}, false, isOn, true});
  } catch (GateError const&) {
    return spans; // a gate that doesn't fit is nowhere
  }
  return spans;
}

double SpanAxis::lowPixel(ParameterSpan const& span) const
{
  return pixelOfEnd(*this, span.range.low, first);
}

double SpanAxis::highPixel(ParameterSpan const& span) const
{
  return pixelOfEnd(*this, span.range.high, std::isfinite(span.range.high) ? first : last);
}

std::optional<SpanUnderPointer> spanAt(std::vector<ParameterSpan> const& spans, SpanAxis const& axis,
                                       double pixel)
{
  std::optional<SpanUnderPointer> found;
  for (ParameterSpan const& span : spans) {
    const std::optional<SpanGrip> grip = gripOf(span, axis, pixel);
    if (grip && (!found || !found->span.isChosen)) found = SpanUnderPointer{span, *grip};
  }
  return found;
}

void SpanDrag::begin(SpanAxis const& axis, double pixel, bool excludes)
{
  along = axis;
  from = pixel;
  negated = excludes;
  active = true;
  moving = false;
  const ParameterSpans spans = spansOf(document);
  auto const here = spans.find(axis.parameter);
  held = here == spans.end() ? std::nullopt : spanAt(here->second, axis, pixel);
  if (!held) return;
  begun = document.state().gates[held->span.gate].gate;
  document.selectGate(held->span.gate);
}

Gate SpanDrag::draggedGate(double pixel) const
{
  auto const step = [&](double value) {
    const double at = along.pixelAt(value);
    return std::fabs(along.valueAt(at + 1.0) - along.valueAt(at));
  };
  const double low = std::min(along.first, along.last);
  const double high = std::max(along.first, along.last);
  auto const valueAt = [&](double at) {
    const double value = along.valueAt(std::clamp(at, low, high));
    return roundedValue(value, step(value));
  };
  double a = valueAt(from);
  double b = valueAt(pixel);
  Gate gate;
  if (held) {
    gate = begun;
    auto const moved = [&](double end) {
      if (!std::isfinite(end)) return end;
      const double at = along.pixelAt(end) + pixel - from;
      if (!std::isfinite(at)) return end; // not on this axis
      const double value = along.valueAt(at);
      return roundedValue(value, step(value));
    };
    a = held->grip == SpanGrip::High ? gate.range.low : moved(gate.range.low);
    b = held->grip == SpanGrip::Low ? gate.range.high : moved(gate.range.high);
  } else {
    gate.negated = negated;
    gate.column =
        "Parameter: " + document.scan().parameters[along.parameter].label.fullName(); // whatever outputs say
    try {
      gate.column = resolveGate(gate, document.scan()).gate.column;
    } catch (GateError const&) {
      return gate; // the preview tells the same
    }
  }
  gate.range = {std::min(a, b), std::max(a, b)};
  return gate;
}

bool SpanDrag::follow(double pixel)
{
  if (!active) return false;
  if (!moving && std::fabs(pixel - from) < QApplication::startDragDistance() / 2.0) return false;
  moving = true;
  document.previewGate(held ? held->span.gate : document.state().gates.size(), draggedGate(pixel));
  return true;
}

SpanDrag::End SpanDrag::finish()
{
  if (!active) return End::Click;
  active = false;
  if (!moving) return held ? End::ClickOnSpan : End::Click;
  const bool isNew = !held.has_value();
  const QString name = isNew ? "Draw gate" : held->grip == SpanGrip::Whole ? "Move gate" : "Resize gate";
  return document.commitPreview(name) ? End::Changed : End::Nothing;
}

void SpanDrag::cancel()
{
  if (!active) return;
  active = false;
  if (moving) document.cancelPreview();
}

} // namespace runsieve::app
