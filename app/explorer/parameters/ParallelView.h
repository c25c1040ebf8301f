#pragma once

#include "app/explorer/charts/RunsPicture.h"
#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterRuns.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace runsieve::app {

/// All parameters as parallel axes, and each run as a line over them: all as densely as they are, the passing
/// ones above, pinned and hovered ones one by one. Scrolls where the axes would be too near to one another.
class ParallelView : public QAbstractScrollArea
{
  Q_OBJECT

public:
  explicit ParallelView(ParameterRuns& runs, QWidget* parent = nullptr);

  /// The axis of a parameter in the viewport.
  [[nodiscard]] QLineF axisLine(std::size_t parameter) const;
  /// Whether the picture is the one of the present state.
  [[nodiscard]] bool isSettled() const { return picture.isSettled(); }
  [[nodiscard]] std::optional<std::size_t> current() const;

Q_SIGNALS:
  /// The user wants a parameter's chart large.
  void chosen(std::size_t parameter);
  void told(QString const& text);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

private:
  void relayout();
  void refresh();
  void requestPicture();
  void hoverAt(QPointF const& at);
  void moveCurrent(int by);
  void paintAxis(QPainter& painter, std::size_t place) const;
  void paintTextsOf(QPainter& painter, ScanParameter const& parameter, double x) const;
  void paintRun(QPainter& painter, std::size_t run, QColor const& color) const;
  [[nodiscard]] QRectF band() const; ///< of the axes, from top to bottom
  [[nodiscard]] double xOf(std::size_t place) const;
  [[nodiscard]] SpanAxis spanAxis(std::size_t parameter) const;
  /// The axis near a place, and the run; nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> axisAt(QPointF const& at) const;
  [[nodiscard]] std::optional<std::size_t> runAt(QPointF const& at) const;

  ParameterRuns& runs;
  Document& document;
  Theme theme;
  RunsPicture picture;
  ParameterSpans spans;
  SpanDrag drag;
  double step = 90.0;         ///< pixels from one axis to the next
  std::size_t firstShown = 0; ///< axes of the picture
  std::size_t lastShown = 0;
  std::shared_ptr<Scan const> lines; ///< of the axes of the picture
  std::shared_ptr<Scan const> linesOf;
  std::vector<std::size_t> linesFor;
  std::vector<bool> linesLog;
  std::optional<std::size_t> currentParameter;
  std::optional<std::size_t> pressedRun;
};

} // namespace runsieve::app
