#include "app/explorer/charts/PlotNames.h"

#include "app/explorer/charts/StackedPlaces.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

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

QRectF PlotNames::paint(QPainter& painter, QString const& text, QColor const& color, double left,
                        std::vector<double> const& tops)
{
  constexpr double opacity = 0.7; // of the ground
  if (text.isEmpty()) return {};
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
  return place;
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

void PlotNames::paintColumn(QPainter& painter, std::vector<EndName> names)
{
  const QFontMetricsF metrics(theme.font);
  const double height = metrics.height();
  const auto room = static_cast<std::size_t>(std::max(1.0, plot.height() / height));
  if (names.size() > room) names.resize(room);
  std::stable_sort(names.begin(), names.end(),
                   [](EndName const& a, EndName const& b) { return a.end.y() < b.end.y(); });
  std::vector<double> wanted;
  for (EndName const& name : names) wanted.push_back(name.end.y() - height);
  const std::vector<double> tops = stackedPlaces(wanted, height, plot.top(), plot.bottom());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EndName const& name = names[i];
    const double left = name.end.x() - metrics.horizontalAdvance(name.text) - theme.gap;
    const QRectF place = paint(painter, name.text, name.color, left, {tops[i]});
    constexpr double near = 1.25; // heights from its middle
    if (std::fabs(place.center().y() - name.end.y()) < near * height) continue;
    painter.setPen(QPen(name.color, theme.line));
    painter.drawLine(QPointF(place.right(), place.center().y()), name.end);
  }
}

void PlotNames::paintAtEnds(QPainter& painter, std::vector<EndName> names)
{
  constexpr double widest = 0.3; // of the plot
  const QFontMetricsF metrics(theme.font);
  double width = 0.0;
  for (EndName& name : names) {
    name.text = elided(name.text, theme.font, widest * plot.width());
    width = std::max(width, metrics.horizontalAdvance(name.text) + theme.gap);
  }
  // Lines that end side by side share a column.
  while (!names.empty()) {
    const auto last = std::max_element(
        names.begin(), names.end(), [](EndName const& a, EndName const& b) { return a.end.x() < b.end.x(); });
    const double from = last->end.x() - width;
    const auto rest = std::stable_partition(names.begin(), names.end(),
                                            [&](EndName const& name) { return name.end.x() > from; });
    paintColumn(painter, {names.begin(), rest});
    names.erase(names.begin(), rest);
  }
}

void PlotNames::paintLackOfZero(QPainter& painter)
{
  paint(painter, QString::fromUtf8("values \u2264 0 are not drawn"), theme.faint, plot.left(),
        {plot.bottom() - QFontMetricsF(theme.font).height() - theme.gap});
}

} // namespace runsieve::app
