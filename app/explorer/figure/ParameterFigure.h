#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"
#include "app/explorer/figure/ParameterSamples.h"

#include <QRectF>

#include <cstddef>
#include <vector>

class QPainter;

namespace runsieve::app {

/// The small chart of a parameter in a figure: its values in the passing runs and in the others, with d,
/// adjusted p and a star above.
class ParameterFigure
{
public:
  /// All must outlive this object.
  ParameterFigure(FigureContent const& content, FigureOptions const& options, Theme const& theme,
                  std::size_t parameter);

  /// \param pixelsPerUnit of the image of a scatter
  void paint(QPainter& painter, QRectF const& outer, double pixelsPerUnit) const;

  /// Room that each chart takes at least, so that it can be read and no number is cut.
  [[nodiscard]] static QSizeF leastSize(FigureContent const& content,
                                        std::vector<std::size_t> const& parameters, Theme const& theme);

private:
  [[nodiscard]] double headerHeight() const;
  void paintHeader(QPainter& painter, QRectF const& outer) const;
  void paintCurves(QPainter& painter, QRectF const& place) const;
  void paintDensities(QPainter& painter, QRectF const& place) const;
  void paintScatter(QPainter& painter, QRectF const& place, double pixelsPerUnit) const;
  void paintTexts(QPainter& painter, QRectF const& place) const;
  void paintLine(QPainter& painter, std::vector<QPointF> const& curve, ChartFrame const& frame,
                 QColor const& color) const;
  void paintFloor(QPainter& painter, std::vector<QPointF> const& others, ChartFrame const& frame) const;

  FigureContent const& content;
  FigureOptions const& options;
  Theme const& theme;
  std::size_t parameter;
  ParameterSamples samples; ///< of a parameter of numbers
};

} // namespace runsieve::app
