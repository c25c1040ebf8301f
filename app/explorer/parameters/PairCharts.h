#pragma once

#include "app/explorer/parameters/PaintPair.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <runsieve/core/compare/Pairs.h>

#include <QAbstractScrollArea>

#include <vector>

namespace runsieve::app {

/// Charts of some pairs of parameters: the passing runs above the others.
class PairCharts : public QAbstractScrollArea
{
  Q_OBJECT

public:
  explicit PairCharts(ParameterRuns& runs, QWidget* parent = nullptr);

  /// \param marked position of a pair that stands out; beyond all: none
  void show(std::vector<ParameterPair> pairs, std::size_t marked);
  [[nodiscard]] std::size_t count() const { return pairs.size(); }
  /// In the viewport.
  [[nodiscard]] QRectF cell(std::size_t place) const;

Q_SIGNALS:
  /// A chart was clicked. \param place among the pairs that are shown
  void chosen(std::size_t place);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

private:
  void relayout();
  [[nodiscard]] PairAxis axisOf(std::size_t parameter) const;

  ParameterRuns& runs;
  Document& document;
  Theme theme;
  std::vector<ParameterPair> pairs;
  std::size_t marked = 0;
  int perRow = 1;
  QSizeF size;
};

} // namespace runsieve::app
