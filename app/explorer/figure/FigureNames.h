#pragma once

#include "app/explorer/charts/Theme.h"

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace runsieve::app {

/// Names of things in a plot. Each stands on a pale ground, so that it can be read over runs, and where no
/// other one stands if there is such a place.
class FigureNames
{
public:
  /// \param theme must outlive this object
  FigureNames(QRectF const& plot, Theme const& theme) : plot(plot), theme(theme) {}

  /// \param left where it begins, as far as the plot reaches \param tops of its places, the best one first;
  /// those outside the plot don't count
  void paint(QPainter& painter, QString const& text, QColor const& color, double left,
             std::vector<double> const& tops);

private:
  [[nodiscard]] QRectF placeFor(QSizeF const& size, double left, std::vector<double> const& tops) const;

  QRectF plot;
  Theme const& theme;
  std::vector<QRectF> taken;
};

} // namespace runsieve::app
