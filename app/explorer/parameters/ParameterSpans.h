#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/document/Document.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// A gate that asks for a range of a parameter, or for some of its texts.
struct ParameterSpan
{
  std::size_t gate;                    ///< of the state; their number for one that is being drawn
  GateRange range;                     ///< of a number parameter
  std::vector<std::size_t> texts = {}; ///< of a text parameter: positions of those it asks for, ascending
  bool negated = false;
  bool isOn = true;
  bool isChosen = false;
};

/// The gates on parameters, by the position of the parameter: those of the list, as they are at this moment,
/// and one that is being drawn.
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

/// The name by which a new gate means a parameter, whatever the outputs are called. \param gate with its kind
[[nodiscard]] std::string columnFor(Gate gate, Scan const& scan, std::size_t parameter);

} // namespace runsieve::app
