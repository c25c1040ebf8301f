#include "app/explorer/parameters/ParameterSpans.h"

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double reach = 5.0; ///< pixels from an end of a span

void add(ParameterSpans& spans, ResolvedGate const& resolved, Scan const& scan, ParameterSpan span)
{
  if (resolved.target != GateTarget::Parameter) return;
  const bool isText = scan.parameters[resolved.column].isText();
  if (resolved.gate.kind != (isText ? GateKind::Is : GateKind::Inside)) return;
  span.range = resolved.gate.range;
  for (double const text : resolved.wanted)
    if (isText) span.texts.push_back(static_cast<std::size_t>(text));
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
    add(spans, *outcomes[i].resolved, document.scan(),
        {i, {}, {}, false, gates[i].on, document.selectedGate() == i});
  }
  if (!previewed) return spans;
  try {
    const bool isOn = moving >= gates.size() || gates[moving].on;
    add(spans, resolveGate(*previewed, document.scan()), document.scan(),
        {moving, {}, {}, false, isOn, true});
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

std::string columnFor(Gate gate, Scan const& scan, std::size_t parameter)
{
  gate.column = "Parameter: " + scan.parameters[parameter].label.fullName();
  try {
    return resolveGate(gate, scan).gate.column;
  } catch (GateError const&) {
    return gate.column; // whoever applies the gate tells why
  }
}

} // namespace runsieve::app
