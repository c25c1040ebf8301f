#pragma once

#include "app/explorer/charts/Theme.h"

#include <QRectF>
#include <QString>

#include <utility>
#include <vector>

class QPainter;

namespace runsieve::app {

/// Names of things in a plot. Each stands on a pale ground, so that it can be read over runs, and where no
/// other one stands if there is such a place.
class PlotNames
{
public:
  /// \param theme must outlive this object
  PlotNames(QRectF const& plot, Theme const& theme) : plot(plot), theme(theme) {}

  /// In the font of the theme, which the painter has. \param left where it begins, as far as the plot reaches
  /// \param tops of its places, the best one first; those outside the plot don't count
  void paint(QPainter& painter, QString const& text, QColor const& color, double left,
             std::vector<double> const& tops);
  /// Rectangles whose names are to be painted: a name stands in that of another one only if it must.
  void expect(std::vector<QRectF> ofAll) { shapes = std::move(ofAll); }
  /// At a rectangle, clear of its sides: above it, within a high one, below it, at the ends of the plot. Long
  /// names are cut. \param clear room between the upper side and a name above it
  void paintAtShape(QPainter& painter, QString const& name, QColor const& color, QRectF const& shape,
                    double clear);
  /// Left above the end of a line, as near to it as there is a place; else at the top. Long names are cut.
  void paintAtEnd(QPainter& painter, QString const& name, QColor const& color, QPointF const& end);

private:
  [[nodiscard]] QRectF placeFor(QSizeF const& size, double left, std::vector<double> const& tops) const;

  QRectF plot;
  Theme const& theme;
  std::vector<QRectF> shapes;
  std::vector<QRectF> taken;
};

} // namespace runsieve::app
