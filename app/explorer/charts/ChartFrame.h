#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/charts/Theme.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace runsieve::app {

/// An axis and what stands at it.
struct ChartAxis
{
  AxisMap map;
  QString title;                ///< with its unit; cut in its middle if it is too long
  bool hasNumbers = true;       ///< else marks alone
  std::vector<Tick> texts = {}; ///< in place of numbers, for an axis of texts
};

/// The axes of a chart in a rectangle: finds the room for numbers and titles, which never touch, and leaves
/// the rest for the plot.
class ChartFrame
{
public:
  ChartFrame() = default;
  /// \param leastLeft room for the numbers of the vertical axis, if more than they need: charts one above the
  /// other line up
  ChartFrame(QRectF const& outer, ChartAxis horizontal, ChartAxis vertical, Theme const& theme,
             double leastLeft = 0.0);

  [[nodiscard]] QRectF const& plot() const { return inner; }
  /// Room left of the plot.
  [[nodiscard]] double left() const { return inner.left() - outer.left(); }
  /// Room that marks, numbers and the title of a horizontal axis take below the plot.
  [[nodiscard]] static double below(ChartAxis const& horizontal, Theme const& theme);
  [[nodiscard]] AxisMap const& horizontal() const { return x.map; }
  [[nodiscard]] AxisMap const& vertical() const { return y.map; }

  /// Where a value stands. NaN for values that an axis does not have.
  [[nodiscard]] double xAt(double value) const { return inner.left() + x.map.place(value) * inner.width(); }
  [[nodiscard]] double yAt(double value) const
  {
    return inner.bottom() - y.map.place(value) * inner.height();
  }
  [[nodiscard]] QPointF at(double xValue, double yValue) const { return {xAt(xValue), yAt(yValue)}; }
  /// What stands there.
  [[nodiscard]] double xValue(double pixel) const
  {
    return x.map.value((pixel - inner.left()) / inner.width());
  }
  [[nodiscard]] double yValue(double pixel) const
  {
    return y.map.value((inner.bottom() - pixel) / inner.height());
  }

  [[nodiscard]] std::vector<Tick> const& horizontalTicks() const { return xTicks; }
  [[nodiscard]] std::vector<Tick> const& verticalTicks() const { return yTicks; }

  /// Axes, marks, numbers and titles.
  void paint(QPainter& painter, Theme const& theme) const;

private:
  void paintHorizontal(QPainter& painter, Theme const& theme) const;
  void paintVertical(QPainter& painter, Theme const& theme) const;

  QRectF outer;
  QRectF inner;
  ChartAxis x;
  ChartAxis y;
  std::vector<Tick> xTicks;
  std::vector<Tick> yTicks;
};

} // namespace runsieve::app
