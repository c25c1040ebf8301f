#pragma once

#include "app/explorer/parameters/GateHold.h"
#include "app/explorer/parameters/ParameterSpans.h"

namespace runsieve::app {

/// A span on an axis: drawn, moved by its middle, resized by an end.
class SpanHold : public GateHold
{
public:
  /// \param across whether the axis is, or up and down \param excludes for a new gate: runs must not pass
  SpanHold(Document const& document, ParameterSpans const& spans, SpanAxis const& axis, bool across,
           QPointF const& at, bool excludes);

  [[nodiscard]] bool isDrag(QPointF const& to) const override;
  [[nodiscard]] std::optional<Gate> dragged(QPointF const& to) const override;
  [[nodiscard]] QString stepName() const override;
  [[nodiscard]] Qt::CursorShape cursor() const override;

private:
  [[nodiscard]] double along(QPointF const& at) const { return across ? at.x() : at.y(); }
  [[nodiscard]] double roundedAt(double pixel) const;
  [[nodiscard]] double moved(double end, double pixels) const;

  SpanAxis axis;
  bool across;
  double from;
  SpanGrip grip = SpanGrip::Whole; ///< of a gate that is held
  Gate begun;                      ///< as it was; of a new one without a range
};

} // namespace runsieve::app
