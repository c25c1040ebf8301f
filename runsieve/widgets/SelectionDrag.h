#pragma once

#include <runsieve/widgets/DragRectangle.h>

#include <QPointF>

#include <optional>

class QMouseEvent;
class vtkChart;

namespace runsieve {

/// Follows the mouse from the press that begins a selection in a chart to the release that ends it.
class SelectionDrag
{
public:
  /// A press in a chart. \param scene place in the scene, pixels from its lower left corner
  /// \return whether it begins a selection: with the button that selects, on the plane of a chart
  bool begin(vtkChart* chart, QMouseEvent const& press, QPointF const& scene);
  void end() { chart = nullptr; }
  [[nodiscard]] bool isUnderWay() const { return chart != nullptr; }

  /// The rectangle from the press to a place; nothing if the chart has no axes or no extent.
  [[nodiscard]] std::optional<DragRectangle> to(QPointF const& scene, Qt::KeyboardModifiers modifiers) const;

  /// Of the press.
  [[nodiscard]] Qt::MouseButton button() const { return selects; }
  /// Where the press was, in pixels of the widget.
  [[nodiscard]] QPointF pressed() const { return start; }

private:
  vtkChart* chart = nullptr; ///< its events run while this is used
  Qt::MouseButton selects = Qt::NoButton;
  QPointF start;
  QPointF sceneStart;
};

} // namespace runsieve
