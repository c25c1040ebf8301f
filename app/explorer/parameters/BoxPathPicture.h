#pragma once

#include "app/explorer/charts/ChartFrame.h"

#include <runsieve/core/compare/BoxOfRuns.h>

#include <vector>

namespace runsieve::app {

/// The way from the box of all runs to ever smaller ones: coverage against density of each, the larger the
/// more parameters it restricts, with their number where it changes. The box is a diamond, the step of which
/// it was made has a ring, boxes of halves of the runs are a cross, the density of all runs is dashed.
class BoxPathPicture
{
public:
  /// \param ofBox with a path; lives as long as this does
  BoxPathPicture(BoxOfRuns const& ofBox, QRectF const& area, Theme const& theme);

  void paint(QPainter& painter) const;

  [[nodiscard]] ChartFrame const& frame() const { return axes; }
  [[nodiscard]] bool hasHalves() const { return box.coverage.count > 0 && box.density.count > 0; }

  /// Signs, also for a legend.
  static void paintDiamond(QPainter& painter, QPointF const& at, Theme const& theme);
  static void paintStep(QPainter& painter, QPointF const& at, Theme const& theme, double radius);
  static void paintCross(QPainter& painter, QPointF const& at, QRectF const& spread, Theme const& theme);
  static void paintBase(QPainter& painter, QLineF const& line, Theme const& theme);

private:
  [[nodiscard]] QPointF placeOf(BoxQuality const& quality) const;
  [[nodiscard]] double radiusOf(std::size_t restricted) const;
  [[nodiscard]] bool isChange(std::size_t step) const;
  [[nodiscard]] QRectF spreadOfHalves() const;
  void paintPath(QPainter& painter) const;
  void paintChosen(QPainter& painter) const;
  void paintNumbers(QPainter& painter) const;
  [[nodiscard]] std::vector<QRectF> taken() const;

  BoxOfRuns const& box;
  Theme theme;
  double letter; ///< height of the letters
  ChartFrame axes;
};

} // namespace runsieve::app
