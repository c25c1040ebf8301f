#include "app/explorer/charts/PlotNames.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace runsieve::app {

QRectF PlotNames::placeFor(QSizeF const& size, double left, std::vector<double> const& tops) const
{
  const double least = plot.left() + theme.gap;
  const double most = std::max(least, plot.right() - size.width() - theme.gap);
  std::vector<double> wanted;
  for (double const top : tops)
    if (top >= plot.top() && top + size.height() <= plot.bottom()) wanted.push_back(top);
  if (wanted.empty()) wanted.push_back(plot.top());
  const QRectF best(QPointF(std::clamp(left, least, most), wanted.front()), size);
  // Where all of these are taken any place is better than one over another name: in another line, or behind
  // another name.
  for (double top = plot.top(); top + size.height() <= plot.bottom(); top += size.height())
    wanted.push_back(top);
  std::vector<double> begins = {best.left()};
  for (QRectF const& other : taken)
    if (other.right() + theme.gap <= most) begins.push_back(other.right() + theme.gap);
  for (double const begin : begins)
    for (double const top : wanted) {
      const QRectF place(QPointF(begin, top), size);
      if (std::none_of(taken.begin(), taken.end(),
                       [&](QRectF const& other) { return other.intersects(place); }))
        return place;
    }
  return best;
}

void PlotNames::paint(QPainter& painter, QString const& text, QColor const& color, double left,
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

void PlotNames::paintAtShape(QPainter& painter, QString const& name, QColor const& color, QRectF const& shape,
                             double clear)
{
  constexpr double widest = 0.6; // of the plot
  const double height = QFontMetricsF(theme.font).height();
  constexpr double thin = 0.5; // a line has a place as well
  const QRectF inside = shape.adjusted(-thin, -thin, thin, thin).intersected(plot);
  if (inside.isEmpty()) return;
  std::vector<double> tops = {inside.top() - clear - height};
  if (inside.height() > height + 2.0 * theme.line) tops.push_back(inside.top() + theme.line);
  tops.insert(tops.end(), {inside.bottom() + theme.line, plot.top(), plot.bottom() - height});
  const QString text = elided(name, theme.font, widest * plot.width());
  const QSizeF size(QFontMetricsF(theme.font).horizontalAdvance(text), height);
  const double left = inside.left() + 0.6 * theme.gap;
  std::stable_partition(tops.begin(), tops.end(), [&](double top) {
    const QRectF place(QPointF(left, top), size);
    return std::none_of(shapes.begin(), shapes.end(),
                        [&](QRectF const& other) { return other != shape && other.intersects(place); });
  });
  paint(painter, text, color, left, tops);
}

void PlotNames::paintAtEnd(QPainter& painter, QString const& name, QColor const& color, QPointF const& end)
{
  constexpr double widest = 0.3; // of the plot
  const QFontMetricsF metrics(theme.font);
  const QString text = elided(name, theme.font, widest * plot.width());
  std::vector<double> tops;
  for (double top = end.y() - metrics.height(); top > plot.top(); top -= 0.9 * metrics.height())
    tops.push_back(top);
  tops.push_back(plot.top());
  paint(painter, text, color, end.x() - metrics.horizontalAdvance(text) - theme.gap, tops);
}

} // namespace runsieve::app
