#pragma once

#include "app/explorer/charts/TextBars.h"
#include "app/explorer/parameters/GateHold.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <Qt>

namespace runsieve::app {

/// Texts of a parameter: a gate on the rows from the one where the button went down to the pointer. On rows
/// of a gate a click selects it, and a drag adds the rows that it goes over. With Ctrl rows are added to the
/// gate that is there, or taken away if the first one is of it; the last text stays.
class TextHold : public GateHold
{
public:
  /// \param at on a row
  TextHold(Document const& document, ParameterSpans const& spans, std::size_t parameter,
           TextBarRows const& rows, QPointF const& at, Qt::KeyboardModifiers modifiers);

  [[nodiscard]] bool isDrag(QPointF const& to) const override;
  [[nodiscard]] std::optional<Gate> dragged(QPointF const& to) const override;
  [[nodiscard]] QString stepName() const override { return held ? "Change texts of gate" : "Draw gate"; }
  [[nodiscard]] Qt::CursorShape cursor() const override { return held ? Qt::SizeVerCursor : Qt::CrossCursor; }

private:
  void hold(Document const& document, std::vector<ParameterSpan> const& here, bool asksOthers);

  std::vector<std::string> names; ///< all texts of the parameter
  TextBarRows rows;
  std::size_t from;               ///< row
  std::vector<std::size_t> texts; ///< of the gate that is held
  bool takesAway = false;
  bool changesAtOnce; ///< with the button down already
  Gate begun;
};

} // namespace runsieve::app
