#include "app/explorer/parameters/BoxPathPicture.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double ofDiamond = 0.6; ///< half its width, in letters
constexpr double ofRing = 0.78;   ///< radius, in letters

bool isFinite(QPointF const& at)
{
  return std::isfinite(at.x()) && std::isfinite(at.y());
}

double letterOf(Theme const& theme)
{
  return QFontMetricsF(theme.font).ascent();
}

QRectF around(QPointF const& at, double radius)
{
  return {at.x() - radius, at.y() - radius, 2.0 * radius, 2.0 * radius};
}

} // namespace

BoxPathPicture::BoxPathPicture(BoxOfRuns const& ofBox, QRectF const& area, Theme const& ofTheme)
    : box(ofBox), theme(ofTheme), letter(letterOf(ofTheme)),
      axes(area, {AxisMap(0.0, 1.0).widened(0.03), "coverage: share of the passing runs inside"},
           {AxisMap(0.0, 1.0).widened(0.03), "density: share that passes"}, theme)
{}

void BoxPathPicture::paintDiamond(QPainter& painter, QPointF const& at, Theme const& theme)
{
  const double r = ofDiamond * letterOf(theme);
  painter.setPen(QPen(theme.paper, 1.5 * theme.line));
  painter.setBrush(theme.passing);
  painter.drawPolygon(
      QPolygonF({at + QPointF(-r, 0.0), at + QPointF(0.0, -r), at + QPointF(r, 0.0), at + QPointF(0.0, r)}));
}

void BoxPathPicture::paintStep(QPainter& painter, QPointF const& at, Theme const& theme, double radius)
{
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme.all);
  painter.drawEllipse(at, radius, radius);
}

void BoxPathPicture::paintCross(QPainter& painter, QPointF const& at, QRectF const& spread,
                                Theme const& theme)
{
  painter.setPen(QPen(theme.gate, theme.curve));
  painter.drawLine(QPointF(spread.left(), at.y()), QPointF(spread.right(), at.y()));
  painter.drawLine(QPointF(at.x(), spread.top()), QPointF(at.x(), spread.bottom()));
}

void BoxPathPicture::paintBase(QPainter& painter, QLineF const& line, Theme const& theme)
{
  painter.setPen(QPen(theme.faint, theme.line, Qt::DashLine));
  painter.drawLine(line);
}

QPointF BoxPathPicture::placeOf(BoxQuality const& quality) const
{
  return axes.at(quality.coverage, quality.density);
}

double BoxPathPicture::radiusOf(std::size_t restricted) const
{
  const std::size_t most = std::max<std::size_t>(1, box.path.back().restricted);
  return letter * (0.15 + 0.17 * static_cast<double>(restricted) / static_cast<double>(most));
}

bool BoxPathPicture::isChange(std::size_t step) const
{
  return step == 0 || box.path[step].restricted != box.path[step - 1].restricted;
}

QRectF BoxPathPicture::spreadOfHalves() const
{
  return QRectF(axes.at(box.coverage.low, box.density.high), axes.at(box.coverage.high, box.density.low));
}

void BoxPathPicture::paint(QPainter& painter) const
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  const double base = axes.yAt(box.all.density);
  if (std::isfinite(base)) paintBase(painter, {axes.plot().left(), base, axes.plot().right(), base}, theme);
  paintPath(painter);
  if (hasHalves())
    paintCross(painter, axes.at(box.coverage.median, box.density.median), spreadOfHalves(), theme);
  paintChosen(painter);
  paintNumbers(painter);
  axes.paint(painter, theme);
  painter.restore();
}

/// Points that would cover the one before them are left out.
void BoxPathPicture::paintPath(QPainter& painter) const
{
  QPolygonF line;
  for (BoxPathStep const& step : box.path)
    if (const QPointF at = placeOf(step.quality); isFinite(at)) line << at;
  painter.setPen(QPen(theme.all, theme.line));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(line);
  QPointF last(-1e9, -1e9);
  for (std::size_t step = 0; step < box.path.size(); ++step) {
    const QPointF at = placeOf(box.path[step].quality);
    const double radius = radiusOf(box.path[step].restricted);
    const double away = std::hypot(at.x() - last.x(), at.y() - last.y());
    const bool isMain = isChange(step) || step + 1 == box.path.size() || step == box.chosen;
    if (!isFinite(at) || (away < 2.4 * radius && !isMain)) continue;
    paintStep(painter, at, theme, radius);
    last = at;
  }
}

void BoxPathPicture::paintChosen(QPainter& painter) const
{
  const QPointF chosen =
      box.chosen < box.path.size() ? placeOf(box.path[box.chosen].quality) : QPointF(std::nan(""), 0.0);
  if (isFinite(chosen)) {
    painter.setPen(QPen(theme.passing, theme.curve));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(chosen, ofRing * letter, ofRing * letter);
  }
  if (const QPointF at = placeOf(box.quality); isFinite(at)) paintDiamond(painter, at, theme);
}

/// Where no number has room.
std::vector<QRectF> BoxPathPicture::taken() const
{
  std::vector<QRectF> places;
  const double half = 0.5 * theme.line;
  const double base = axes.yAt(box.all.density);
  places.emplace_back(axes.plot().left(), base - half, axes.plot().width(), 2.0 * half);
  if (hasHalves()) {
    const QRectF spread = spreadOfHalves();
    const QPointF middle = axes.at(box.coverage.median, box.density.median);
    places.emplace_back(spread.left(), middle.y() - half, spread.width(), 2.0 * half);
    places.emplace_back(middle.x() - half, spread.top(), 2.0 * half, spread.height());
  }
  if (box.chosen < box.path.size())
    places.push_back(around(placeOf(box.path[box.chosen].quality), ofRing * letter));
  places.push_back(around(placeOf(box.quality), ofDiamond * letter));
  return places;
}

/// The number of restricted parameters where it changes, as long as there is room. The path climbs to the
/// left, so that above it to the right and below it to the left is.
void BoxPathPicture::paintNumbers(QPainter& painter) const
{
  const QFontMetricsF metrics(theme.font);
  std::vector<QRectF> places = taken();
  painter.setPen(theme.ink);
  for (std::size_t step = 0; step < box.path.size(); ++step) {
    const QPointF at = placeOf(box.path[step].quality);
    if (!isChange(step) || !isFinite(at)) continue;
    const QString number = QString::number(box.path[step].restricted);
    const QSizeF size(metrics.horizontalAdvance(number), letter);
    const double radius = step == box.chosen ? ofRing * letter : radiusOf(box.path[step].restricted);
    const double away = radius + 0.15 * letter;
    const QRectF above(at + QPointF(away, -away - size.height()), size);
    const QRectF below(at + QPointF(-away - size.width(), away), size);
    for (QRectF const& place : {above, below}) {
      auto const meets = [&](QRectF const& other) { return place.intersects(other); };
      if (!axes.plot().contains(place) || std::any_of(places.begin(), places.end(), meets)) continue;
      painter.drawText(place.bottomLeft(), number);
      places.push_back(place);
      break;
    }
  }
}

} // namespace runsieve::app
