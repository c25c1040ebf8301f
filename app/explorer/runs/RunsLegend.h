#pragma once

#include "app/explorer/charts/DensityLegend.h"

#include <QWidget>

#include <vector>

namespace runsieve::app {

/// The legend of a chart of runs, beside the chart: none of its lines lies over a run.
class RunsLegend : public QWidget
{
  Q_OBJECT

public:
  explicit RunsLegend(QWidget* parent = nullptr);

  void setLines(std::vector<LegendLine> shown);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  std::vector<LegendLine> lines;
};

} // namespace runsieve::app
