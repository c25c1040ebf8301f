#pragma once

#include "app/explorer/document/Document.h"

#include <QPointF>
#include <QString>

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// A gate on a parameter under the pointer, or the place where a new one would begin: says what the gate is
/// when the pointer has been dragged. Places are in pixels of the chart.
class GateHold
{
public:
  virtual ~GateHold() = default;

  /// The gate of the list that is held; nothing for a new one.
  [[nodiscard]] std::optional<std::size_t> gate() const { return held; }

  /// Whether a pointer that went down and is there now has changed something: else it is a click so far.
  [[nodiscard]] virtual bool isDrag(QPointF const& to) const = 0;
  /// The gate with the pointer there; nothing if there can be none.
  [[nodiscard]] virtual std::optional<Gate> dragged(QPointF const& to) const = 0;
  /// Of the change, for the menu.
  [[nodiscard]] virtual QString stepName() const = 0;
  /// That tells what a drag would do.
  [[nodiscard]] virtual Qt::CursorShape cursor() const = 0;

protected:
  GateHold() = default;
  GateHold(GateHold const&) = default;
  GateHold& operator=(GateHold const&) = default;

  std::optional<std::size_t> held;
};

} // namespace runsieve::app
