#pragma once

#include "app/explorer/parameters/ParameterArea.h"
#include "app/explorer/parameters/ParameterChart.h"

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// Small charts of all parameters, in rows that scroll. Only what is visible is counted and painted.
class ParameterGrid : public ParameterArea
{
  Q_OBJECT

public:
  explicit ParameterGrid(ParameterRuns& runs, QWidget* parent = nullptr);

  /// Where the chart of a parameter stands in the viewport.
  [[nodiscard]] QRectF cell(std::size_t parameter) const;
  /// The plot in it.
  [[nodiscard]] QRectF plot(std::size_t parameter);
  /// Of a parameter of texts: the row of a text in it.
  [[nodiscard]] QRectF row(std::size_t parameter, std::size_t text);
  [[nodiscard]] int columns() const { return perRow; }

  [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {210, 160}; }

protected:
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

  void relayout() override;
  void refresh() override;
  void reset() override;
  [[nodiscard]] Theme themeOf(QWidget const& widget) const override;
  [[nodiscard]] std::optional<std::size_t> parameterAt(QPointF const& at) const override;
  [[nodiscard]] QRectF placeOf(std::size_t parameter) const override { return cell(parameter); }
  [[nodiscard]] std::unique_ptr<GateHold> holdAt(QPointF const& at, std::size_t parameter,
                                                 Qt::KeyboardModifiers modifiers) override;
  [[nodiscard]] QPointF originOf(std::size_t parameter) const override { return cell(parameter).topLeft(); }
  void hoverAt(QPointF const& at) override;
  [[nodiscard]] QString tipAt(QPointF const& at) override;
  [[nodiscard]] int stepOf(int key) const override;

private:
  void prepare();
  void paintCell(QPainter& painter, std::size_t parameter, QRectF const& area);
  /// Places the runs of the parameters that are visible, for some milliseconds. \return whether all are
  bool placeVisible(QRect const& visible) const;
  [[nodiscard]] bool isPlaced(std::size_t parameter) const;
  [[nodiscard]] double neededWidth() const;
  [[nodiscard]] QRectF cellAtPlace(std::size_t place) const;
  /// Up to date.
  [[nodiscard]] ParameterChart& chart(std::size_t parameter);

  OutputFeature feature;
  ChartScene scene;
  ParameterCharts charts;
  int perRow = 1;
  QSizeF size; ///< of a cell
  std::optional<std::size_t> hovered;
};

} // namespace runsieve::app
