#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/document/Document.h"

#include <QString>

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

namespace runsieve::app {

/// A gate that asks for a range of a parameter.
struct ParameterSpan
{
  std::size_t gate; ///< of the state; their number for one that is being drawn
  GateRange range;
  bool negated = false;
  bool isOn = true;
  bool isChosen = false;
};

/// The gates on number parameters, by the position of the parameter: those of the list, as they are at this
/// moment, and one that is being drawn.
using ParameterSpans = std::map<std::size_t, std::vector<ParameterSpan>>;
[[nodiscard]] ParameterSpans spansOf(Document const& document);

/// An axis of a parameter on a screen, across it or up and down.
struct SpanAxis
{
  std::size_t parameter = 0;
  AxisMap map;
  double first = 0.0; ///< pixel of the low end of the map
  double last = 1.0;  ///< pixel of its high end; smaller than the first on an axis that rises

  [[nodiscard]] double pixelAt(double value) const { return first + map.place(value) * (last - first); }
  [[nodiscard]] double valueAt(double pixel) const { return map.value((pixel - first) / (last - first)); }
  /// Where a span begins and ends; open ends, and what the axis doesn't have, stand at its ends.
  [[nodiscard]] double lowPixel(ParameterSpan const& span) const;
  [[nodiscard]] double highPixel(ParameterSpan const& span) const;
};

/// What of a span is under a pointer.
enum class SpanGrip
{
  Whole,
  Low,
  High
};

struct SpanUnderPointer
{
  ParameterSpan span;
  SpanGrip grip;
};

/// The span under a pointer, the selected one first; nothing if there is none.
[[nodiscard]] std::optional<SpanUnderPointer> spanAt(std::vector<ParameterSpan> const& spans,
                                                     SpanAxis const& axis, double pixel);

/// A gate on a parameter that is drawn, moved or resized along an axis.
class SpanDrag
{
public:
  explicit SpanDrag(Document& document) : document(document) {}

  /// A button is down. \param negated for a new gate: runs must not pass
  void begin(SpanAxis const& axis, double pixel, bool negated);
  /// The pointer has moved. \return whether this is a drag, no click, by now
  bool follow(double pixel);
  /// The button is up. \return what came of it
  enum class End
  {
    Click,
    ClickOnSpan, ///< the gate is selected
    Changed,
    Nothing ///< no run is there: all is as it was
  };
  End finish();
  void cancel();

  [[nodiscard]] bool isActive() const { return active; }
  [[nodiscard]] bool isMoving() const { return active && moving; }
  [[nodiscard]] SpanAxis const& axis() const { return along; }

private:
  [[nodiscard]] Gate draggedGate(double pixel) const;

  Document& document;
  SpanAxis along;
  std::optional<SpanUnderPointer> held;
  Gate begun; ///< of the one that is held
  double from = 0.0;
  bool negated = false;
  bool active = false;
  bool moving = false;
};

} // namespace runsieve::app
