#pragma once

#include "app/explorer/charts/ChartFrame.h"

#include <runsieve/core/compare/StabilityOfComparison.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve::app {

/// |d| of the first parameters of a comparison against the share of the runs, on a logarithmic axis: medians
/// with whiskers of 5 % to 95 % of the samples, beside each other where they would cover each other; full
/// where they are beyond the noise floor, a grey area, in at least 95 % of the samples. Significant
/// parameters have a colour each, the others are grey. Names stand at the ends of the lines.
class StabilityPicture
{
public:
  /// \param ofComparison, ofStability live as long as this does
  StabilityPicture(Comparison const& ofComparison, ComparisonStability const& ofStability, QRectF const& area,
                   Theme const& theme);

  void paint(QPainter& painter) const;

  /// A parameter at a size, both by their places.
  struct Point
  {
    std::size_t parameter;
    std::size_t size;
  };
  /// The nearest point within a distance; nothing if there is none.
  [[nodiscard]] std::optional<Point> pointAt(QPointF const& place, double reach) const;
  /// Where a median stands. \param parameter one of parameters()
  [[nodiscard]] QPointF placeOf(Point const& point) const;
  /// Those that are shown, by their places in the comparison, and in the order of their lines from the left.
  [[nodiscard]] std::vector<std::size_t> const& parameters() const { return shown; }
  [[nodiscard]] ChartFrame const& frame() const { return axes; }

private:
  /// A name beside the end of its line.
  struct Label
  {
    QString text;
    QColor color;
    QPointF from; ///< end of the line
    double y;     ///< of the middle of the text
  };

  [[nodiscard]] DistanceAtSize const& distance(Point const& point) const;
  [[nodiscard]] QString nameOf(std::size_t parameter) const;
  [[nodiscard]] QColor colorOf(std::size_t parameter) const;
  [[nodiscard]] bool hasCounts() const;
  [[nodiscard]] std::vector<Label> labels() const;
  void paintFloor(QPainter& painter) const;
  void paintGrid(QPainter& painter) const;
  void paintLine(QPainter& painter, std::size_t parameter) const;
  void paintSizes(QPainter& painter) const;
  void paintLabels(QPainter& painter) const;

  Comparison const& comparison;
  ComparisonStability const& stability;
  QRectF area;
  Theme theme;
  double line;       ///< height of a line of text
  double names;      ///< width of the names
  double step = 0.0; ///< between the lines of two parameters at a size
  std::vector<std::size_t> shown;
  ChartFrame axes;
};

} // namespace runsieve::app
