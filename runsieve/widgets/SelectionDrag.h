#pragma once

#include <runsieve/runsieve_export.h>
#include <runsieve/widgets/DragRectangle.h>

#include <QObject>
#include <QPointF>

#include <optional>

class QMouseEvent;
class vtkChart;

namespace runsieve {

/// Follows the mouse from the press that begins a selection in a chart to the release that ends it, and tells
/// of it. A VtkPlotWidget has one, which it feeds.
class RUNSIEVE_EXPORT SelectionDrag : public QObject
{
  Q_OBJECT

public:
  using QObject::QObject;

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

Q_SIGNALS:
  /// At the press, with no extent, and at each move, before the frame that shows it is drawn. The selection
  /// itself changes at the release.
  void moved(DragRectangle const& rectangle);
  /// The drag is over: before the selection changes, or without a change if Esc was pressed.
  void ended(bool cancelled);

private:
  vtkChart* chart = nullptr; ///< its events run while this is used
  Qt::MouseButton selects = Qt::NoButton;
  QPointF start;
  QPointF sceneStart;
};

} // namespace runsieve
