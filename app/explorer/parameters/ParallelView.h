#pragma once

#include "app/explorer/charts/RunsPicture.h"
#include "app/explorer/charts/TextBars.h"
#include "app/explorer/parameters/ParameterArea.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace runsieve::app {

/// All parameters as parallel axes, and each run as a line over them: all as densely as they are, the passing
/// ones above, pinned and hovered ones one by one. Scrolls where the axes would be too near to one another.
class ParallelView : public ParameterArea
{
  Q_OBJECT

public:
  explicit ParallelView(ParameterRuns& runs, QWidget* parent = nullptr);

  /// The axis of a parameter in the viewport.
  [[nodiscard]] QLineF axisLine(std::size_t parameter) const;
  /// Whether the picture is the one of the present state.
  [[nodiscard]] bool isSettled() const { return picture.isSettled(); }

protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

  void relayout() override;
  void refresh() override;
  void reset() override;
  /// The one whose axis is near.
  [[nodiscard]] std::optional<std::size_t> parameterAt(QPointF const& at) const override;
  [[nodiscard]] QRectF placeOf(std::size_t parameter) const override;
  [[nodiscard]] std::unique_ptr<GateHold> holdAt(QPointF const& at, std::size_t parameter,
                                                 Qt::KeyboardModifiers modifiers) override;
  void hoverAt(QPointF const& at) override;
  [[nodiscard]] QString tipAt(QPointF const& at) override;

private:
  void requestPicture();
  void paintAxis(QPainter& painter, std::size_t place) const;
  void paintTextsOf(QPainter& painter, std::size_t parameter) const;
  void paintRun(QPainter& painter, std::size_t run, QColor const& color) const;
  [[nodiscard]] QRectF band() const; ///< of the axes, from top to bottom
  [[nodiscard]] double xOf(std::size_t place) const;
  [[nodiscard]] SpanAxis spanAxis(std::size_t parameter) const;
  /// Where the texts of a parameter stand on its axis, and the gates on them beside it.
  [[nodiscard]] TextBarRows textRowsOf(std::size_t parameter) const;
  /// The run near a place; nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> runAt(QPointF const& at) const;

  RunsPicture picture;
  double step = 90.0;         ///< pixels from one axis to the next
  std::size_t firstShown = 0; ///< axes of the picture
  std::size_t lastShown = 0;
  std::shared_ptr<Scan const> lines; ///< of the axes of the picture
  std::shared_ptr<Scan const> linesOf;
  std::vector<std::size_t> linesFor;
  std::vector<bool> linesLog;
  std::optional<std::size_t> pressedRun;
};

} // namespace runsieve::app
