#pragma once

#include "app/explorer/parameters/GateHold.h"

#include <QPointF>
#include <QString>

#include <memory>

namespace runsieve::app {

/// The hand that draws and changes gates on parameters, in whatever chart: what is held, while a button is
/// down, is shown as the gate would be, and becomes a step to undo when the button comes up.
class GateHand
{
public:
  explicit GateHand(Document& document) : document(document) {}

  /// A button is down. \param hold null: on nothing that a gate could be on \param origin of the chart's
  /// pixels in those of the places of the pointer
  void take(std::unique_ptr<GateHold> hold, QPointF const& at, QPointF const& origin = {});
  /// The pointer has moved. \return whether this is a drag, no click, by now
  bool follow(QPointF const& to);
  /// The button is up. \return what came of it
  enum class End
  {
    Click,
    ClickOnGate, ///< it is selected
    Changed,
    Nothing ///< no run is there: all is as it was
  };
  End finish();
  void cancel();

  /// Whether something is held.
  [[nodiscard]] bool isActive() const { return held != nullptr; }
  /// Whether a gate is shown as it would be.
  [[nodiscard]] bool isMoving() const { return held && moving; }

  /// For the status bar.
  [[nodiscard]] static QString wordsFor(Document const& document);
  [[nodiscard]] static QString wordsFor(End end);

private:
  Document& document;
  std::unique_ptr<GateHold> held;
  QPointF zero;
  bool moving = false;
};

} // namespace runsieve::app
