#include "app/explorer/charts/RunLabels.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace runsieve::app {

void RunLabels::paint(QPainter& painter, QString const& name, QPointF const& end, QColor const& color)
{
  constexpr double widest = 0.3; // of the plot
  const QFontMetricsF metrics(theme.font);
  const QString text = elided(name, theme.font, widest * plot.width());
  const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
  QRectF place(QPointF(end.x() - size.width() - theme.gap, end.y() - theme.gap - metrics.ascent()), size);
  auto const isTaken = [&](QRectF const& other) { return other.intersects(place); };
  while (std::any_of(taken.begin(), taken.end(), isTaken) && place.top() > plot.top())
    place.translate(0.0, -0.9 * size.height());
  place.moveTop(std::max(place.top(), plot.top()));
  taken.push_back(place);
  QColor ground = theme.paper;
  ground.setAlphaF(0.75);
  painter.setFont(theme.font);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRect(place.intersected(plot));
  painter.setPen(color);
  painter.drawText(QPointF(place.left(), place.top() + metrics.ascent()), text);
}

} // namespace runsieve::app
