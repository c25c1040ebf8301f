#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/parameters/OutputFeature.h"
#include "app/explorer/parameters/ParameterRuns.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QRectF>

class QPainter;

namespace runsieve::app {

/// What the charts of parameters show, for all of them.
struct ChartScene
{
  ParameterRuns const& runs;
  OutputFeature const& feature; ///< up to date
  ParameterSpans const& spans;
  Theme theme;
  double ratio = 1.0;   ///< device pixels per pixel
  bool isLarge = false; ///< alone in its window: with titles of axes and medians
};

/// The chart of a parameter in a rectangle: name, numbers, axes, the runs by the look of the state, and
/// gates.
class ParameterChart
{
public:
  ParameterChart(ChartScene const& scene, std::size_t parameter, QRectF const& area);

  /// Whether it has an axis of numbers.
  [[nodiscard]] bool hasAxis() const { return !isText; }
  [[nodiscard]] QRectF const& plot() const { return inner; }
  /// For gates; of a chart with an axis.
  [[nodiscard]] SpanAxis axis() const;

  void paint(QPainter& painter) const;

private:
  [[nodiscard]] ParameterLook look() const;
  void paintTexts(QPainter& painter, std::size_t passing, std::size_t others) const;
  void paintNumbers(QPainter& painter) const;
  void paintBars(QPainter& painter) const;
  void paintScatter(QPainter& painter) const;
  void paintMarks(QPainter& painter) const;
  void paintMedians(QPainter& painter) const;

  ChartScene const& scene;
  Document const& document;
  std::size_t parameter;
  QRectF area;
  QRectF inner;
  bool isText;
  AxisMap values;
  ChartFrame frame;
};

/// Spans as bands with ends over the plot of their axis. \param across whether the axis is, or up and down
void paintSpans(QPainter& painter, std::vector<ParameterSpan> const& spans, SpanAxis const& axis,
                QRectF const& plot, bool across, Theme const& theme);

} // namespace runsieve::app
