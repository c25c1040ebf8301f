#pragma once

#include "app/explorer/parameters/ParameterChart.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// Small charts of all parameters, in rows that scroll. Only what is visible is counted and painted.
class ParameterGrid : public QAbstractScrollArea
{
  Q_OBJECT

public:
  explicit ParameterGrid(ParameterRuns& runs, QWidget* parent = nullptr);

  /// Where the chart of a parameter stands in the viewport.
  [[nodiscard]] QRectF cell(std::size_t parameter) const;
  /// The plot in it.
  [[nodiscard]] QRectF plot(std::size_t parameter) const;
  [[nodiscard]] int columns() const { return perRow; }
  /// The parameter that keys act on; nothing without parameters.
  [[nodiscard]] std::optional<std::size_t> current() const;
  void setCurrent(std::size_t parameter);

Q_SIGNALS:
  /// The user wants a chart large.
  void chosen(std::size_t parameter);
  /// For the status bar; empty if there is nothing to tell.
  void told(QString const& text);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {210, 160}; }

private:
  void relayout();
  void refresh();
  void prepare();
  void move(int by);
  void cancelDrag();
  void hoverAt(QPointF const& at);
  void paintCell(QPainter& painter, ChartScene const& shown, std::size_t parameter, QRectF const& area) const;
  /// Places the runs of the parameters that are visible, for some milliseconds. \return whether all are
  bool placeVisible(QRect const& visible) const;
  [[nodiscard]] double neededWidth() const;
  [[nodiscard]] QRectF cellAtPlace(std::size_t place) const;
  [[nodiscard]] std::optional<std::size_t> placeAt(QPointF const& at) const;
  [[nodiscard]] std::size_t placeOf(std::size_t parameter) const;
  [[nodiscard]] ChartScene scene() const;

  ParameterRuns& runs;
  Document& document;
  OutputFeature feature;
  ParameterSpans spans;
  Theme theme;
  int perRow = 1;
  QSizeF size; ///< of a cell
  std::optional<std::size_t> chosenParameter;
  std::optional<std::size_t> hovered;
  std::optional<std::size_t> pressed; ///< parameter whose chart a button has been pressed in
  SpanDrag drag;
};

} // namespace runsieve::app
