#pragma once

#include "app/explorer/charts/Theme.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <utility>
#include <vector>

class QPainter;

namespace runsieve::app {

/// A name for the end of a line.
struct EndName
{
  QString text;
  QColor color;
  QPointF end;
};

/// Names of things in a plot. Each stands on a pale ground, so that it can be read over runs, and where no
/// other one stands if there is such a place.
class PlotNames
{
public:
  /// \param theme must outlive this object
  PlotNames(QRectF const& plot, Theme const& theme) : plot(plot), theme(theme) {}

  /// In the font of the theme, which the painter has. \param left where it begins, as far as the plot reaches
  /// \param tops of its places, the best one first; those outside the plot don't count
  /// \return where it stands
  QRectF paint(QPainter& painter, QString const& text, QColor const& color, double left,
               std::vector<double> const& tops);
  /// Rectangles whose names are to be painted: a name stands in that of another one only if it must.
  void expect(std::vector<QRectF> ofAll) { shapes = std::move(ofAll); }
  /// At a rectangle, clear of its sides: above it, within a high one, below it, at the ends of the plot. Long
  /// names are cut. \param clear room between the upper side and a name above it
  void paintAtShape(QPainter& painter, QString const& name, QColor const& color, QRectF const& shape,
                    double clear);
  /// Left above the ends of lines, in the order of the ends from top to bottom and as near to them as all
  /// have a place; a thin line leads from a name that had to go away to its end. Long names are cut; where
  /// the plot is too low for all the last ones are left out.
  void paintAtEnds(QPainter& painter, std::vector<EndName> names);

  /// That values from 0 down, which a logarithmic axis does not have, are not drawn: at the lower left.
  void paintLackOfZero(QPainter& painter);

private:
  void paintColumn(QPainter& painter, std::vector<EndName> names);
  [[nodiscard]] QRectF placeFor(QSizeF const& size, double left, std::vector<double> const& tops) const;

  QRectF plot;
  Theme const& theme;
  std::vector<QRectF> shapes;
  std::vector<QRectF> taken;
};

} // namespace runsieve::app
