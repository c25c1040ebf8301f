#pragma once

#include "app/explorer/parameters/GateHand.h"
#include "app/explorer/parameters/ParameterChart.h"

#include <QDialog>

class QCheckBox;
class QLabel;

namespace runsieve::app {

/// The chart of one parameter as large as a widget, with gates to be drawn on it.
class LargeChartView : public QWidget
{
  Q_OBJECT

public:
  LargeChartView(ParameterRuns& runs, std::size_t parameter, QWidget* parent = nullptr);

  void showParameter(std::size_t parameter);
  [[nodiscard]] QRectF plot();
  /// Of a parameter of texts: the row of a text.
  [[nodiscard]] QRectF row(std::size_t text);
  [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {260, 180}; }

protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  void refresh();
  [[nodiscard]] bool isValid() const;
  /// Up to date.
  [[nodiscard]] ParameterChart& chart();

  ParameterRuns& runs;
  Document& document;
  std::size_t parameter;
  OutputFeature feature;
  ParameterSpans spans;
  Theme theme;
  ChartScene scene;
  ParameterCharts charts;
  GateHand hand;
};

/// A window with the chart of one parameter, which follows the document, and its numbers in words.
class LargeChart : public QDialog
{
  Q_OBJECT

public:
  LargeChart(ParameterRuns& runs, std::size_t parameter, QWidget* parent = nullptr);

  void showParameter(std::size_t parameter);
  [[nodiscard]] std::size_t shownParameter() const { return parameter; }
  [[nodiscard]] LargeChartView* view() const { return chart; }
  [[nodiscard]] QString words() const;

private:
  void refresh();
  void step(int by);

  ParameterRuns& runs;
  Document& document;
  std::size_t parameter;
  LargeChartView* chart = nullptr;
  QCheckBox* logarithmic = nullptr;
  QLabel* numbers = nullptr;
};

} // namespace runsieve::app
