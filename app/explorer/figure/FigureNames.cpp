#include "app/explorer/figure/FigureNames.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace runsieve::app {

QRectF FigureNames::placeFor(QSizeF const& size, double left, std::vector<double> const& tops) const
{
  const double least = plot.left() + theme.gap;
  const double x = std::clamp(left, least, std::max(least, plot.right() - size.width() - theme.gap));
  QRectF first;
  for (double const top : tops) {
    const QRectF place(QPointF(x, top), size);
    if (place.top() < plot.top() || place.bottom() > plot.bottom()) continue;
    if (first.isNull()) first = place;
    if (std::none_of(taken.begin(), taken.end(),
                     [&](QRectF const& other) { return other.intersects(place); }))
      return place;
  }
  return first.isNull() ? QRectF(QPointF(x, plot.top()), size) : first;
}

void FigureNames::paint(QPainter& painter, QString const& text, QColor const& color, double left,
                        std::vector<double> const& tops)
{
  constexpr double opacity = 0.7; // of the ground
  if (text.isEmpty()) return;
  const QFontMetricsF metrics(theme.font);
  const QRectF place = placeFor({metrics.horizontalAdvance(text), metrics.height()}, left, tops);
  taken.push_back(place);
  QColor ground = theme.paper;
  ground.setAlphaF(opacity);
  const double beyond = 0.5 * theme.gap;
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRect(place.adjusted(-beyond, 0.0, beyond, 0.0).intersected(plot));
  painter.setPen(color);
  painter.drawText(QPointF(place.left(), place.top() + metrics.ascent()), text);
}

} // namespace runsieve::app
