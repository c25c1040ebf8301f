#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/figure/FigureLayers.h"

#include <QFontMetricsF>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

class QPainter;

namespace runsieve::app {

/// What the colours of a figure mean: an entry for each group of runs, in as many lines as it takes, and what
/// bands or shades tell.
class FigureLegend
{
public:
  /// Layers, options and theme must outlive this object. \param more what else is to be said \param width of
  /// the lines
  FigureLegend(std::vector<FigureLayer> const& layers, FigureOptions const& options, QStringList const& more,
               Theme const& theme, double width);

  [[nodiscard]] double height() const;
  void paint(QPainter& painter, QPointF const& corner) const;

private:
  [[nodiscard]] double swatch() const { return 1.6 * metrics.height(); }
  [[nodiscard]] double lineHeight() const { return 1.2 * metrics.height(); }

  std::vector<FigureLayer> const& layers;
  Theme const& theme;
  QFontMetricsF metrics;
  double width;
  std::vector<QString> texts;  ///< one per layer
  std::vector<QPointF> places; ///< likewise, from the corner
  std::vector<QString> notes;  ///< what bands or shades mean, and more
  std::vector<QPointF> notePlaces;
  double last = 0.0; ///< top of the last line, from the corner
};

} // namespace runsieve::app
