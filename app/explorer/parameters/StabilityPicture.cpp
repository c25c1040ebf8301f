#include "app/explorer/parameters/StabilityPicture.h"

#include "app/cli/StabilityReport.h"
#include "app/explorer/parameters/Settling.h"

#include <runsieve/core/text/ShownText.h>

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double mostOfWidth = 0.28; ///< for names
constexpr double beyondSizes = 0.13; ///< of the axis, at each end
constexpr char floorName[] = "noise floor";

QString countsOf(ComparisonAtSize const& size)
{
  return QString("%1 + %2").arg(size.passing).arg(size.others);
}

/// From nothing to a little above all that is shown.
AxisMap distances(std::vector<ComparisonAtSize> const& sizes, std::vector<std::size_t> const& shown)
{
  double most = 0.0;
  for (ComparisonAtSize const& size : sizes) {
    if (std::isfinite(size.noiseFloor)) most = std::max(most, size.noiseFloor);
    for (std::size_t const parameter : shown)
      if (std::isfinite(size.parameters[parameter].high))
        most = std::max(most, size.parameters[parameter].high);
  }
  constexpr double room = 1.06;
  return {0.0, most > 0.0 ? std::min(1.0, room * most) : 1.0};
}

/// \param length of the axis
ChartAxis sharesOf(std::vector<ComparisonAtSize> const& sizes, double length, QFontMetricsF const& metrics)
{
  ChartAxis axis{AxisMap(sizes.front().share, sizes.back().share, true).widened(beyondSizes), {}};
  double start =
      std::numeric_limits<double>::infinity(); // all runs come first: of the parts those that have room
  for (auto size = sizes.rbegin(); size != sizes.rend(); ++size) {
    QString text = shareOfRuns(size->share);
    const double middle = axis.map.place(size->share) * length;
    const double half = 0.5 * metrics.horizontalAdvance(text);
    if (middle + half + metrics.averageCharWidth() > start)
      text.clear();
    else
      start = middle - half;
    axis.texts.insert(axis.texts.begin(), {size->share, text});
  }
  return axis;
}

} // namespace

StabilityPicture::StabilityPicture(Comparison const& ofComparison, ComparisonStability const& ofStability,
                                   QRectF const& whole, Theme const& ofTheme)
    : comparison(ofComparison), stability(ofStability), area(whole), theme(ofTheme),
      line(QFontMetricsF(theme.font).height()), names(0.0)
{
  if (stability.sizes.empty()) return;
  const QFontMetricsF metrics(theme.font);
  names = metrics.horizontalAdvance(floorName);
  for (std::size_t i = 0; i < std::min(mostCurves, comparison.parameters.size()); ++i) {
    if (std::isnan(comparison.parameters[i].d)) continue;
    shown.push_back(i);
    names = std::max(names, metrics.horizontalAdvance(nameOf(i)));
  }
  names = std::min(names, mostOfWidth * area.width());
  const double below = 2.0 * line + theme.gap; // counts and title
  const double beside = names + 1.2 * line + theme.gap;
  const QRectF outer = area.adjusted(0.0, 0.0, -beside, -below);
  const ChartAxis up{distances(stability.sizes, shown), "|d|"};
  auto const frameFor = [&](double length) {
    return ChartFrame(outer, sharesOf(stability.sizes, length, metrics), up, theme);
  };
  axes = frameFor(frameFor(outer.width()).plot().width()); // which has the same plot
  double room = 2.0 * axes.plot().width() * beyondSizes / (1.0 + 2.0 * beyondSizes);
  for (std::size_t i = 1; i < stability.sizes.size(); ++i)
    room = std::min(room, axes.xAt(stability.sizes[i].share) - axes.xAt(stability.sizes[i - 1].share));
  step = std::min(0.45 * line, 0.8 * room / static_cast<double>(std::max<std::size_t>(1, shown.size())));
}

DistanceAtSize const& StabilityPicture::distance(Point const& point) const
{
  return stability.sizes[point.size].parameters[point.parameter];
}

QString StabilityPicture::nameOf(std::size_t parameter) const
{
  ParameterComparison const& compared = comparison.parameters[parameter];
  return QString::fromStdString(printable(compared.name) + (compared.significant ? "" : " (n.s.)"));
}

QColor StabilityPicture::colorOf(std::size_t parameter) const
{
  return comparison.parameters[parameter].significant ? theme.sets[parameter % theme.sets.size()]
                                                      : theme.faint;
}

QPointF StabilityPicture::placeOf(Point const& point) const
{
  const auto place = std::find(shown.begin(), shown.end(), point.parameter) - shown.begin();
  const double fromMiddle = static_cast<double>(place) - 0.5 * static_cast<double>(shown.size() - 1);
  return axes.at(stability.sizes[point.size].share, distance(point).median) + QPointF(fromMiddle * step, 0.0);
}

std::optional<StabilityPicture::Point> StabilityPicture::pointAt(QPointF const& place, double reach) const
{
  std::optional<Point> nearest;
  for (std::size_t size = 0; size < stability.sizes.size(); ++size)
    for (std::size_t const parameter : shown) {
      const QPointF away = placeOf({parameter, size}) - place;
      const double distance = std::hypot(away.x(), away.y());
      if (!(distance < reach)) continue;
      reach = distance;
      nearest = {parameter, size};
    }
  return nearest;
}

void StabilityPicture::paint(QPainter& painter) const
{
  if (stability.sizes.empty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(theme.font);
  paintFloor(painter);
  paintGrid(painter);
  for (std::size_t i = shown.size(); i-- > 0;) paintLine(painter, shown[i]); // the first one on top
  axes.paint(painter, theme);
  paintSizes(painter);
  paintLabels(painter);
  painter.restore();
}

void StabilityPicture::paintFloor(QPainter& painter) const
{
  QPolygonF floor; // level beyond the first and the last size
  std::vector<ComparisonAtSize> const& sizes = stability.sizes;
  for (ComparisonAtSize const& size : sizes) {
    if (std::isnan(size.noiseFloor)) return;
    floor << axes.at(size.share, std::min(size.noiseFloor, axes.vertical().high()));
  }
  const QRectF plot = axes.plot();
  floor.prepend(QPointF(plot.left(), floor.front().y()));
  floor.append(QPointF(plot.right(), floor.back().y()));
  QColor pale = theme.faint;
  pale.setAlphaF(0.16);
  painter.setPen(Qt::NoPen);
  painter.setBrush(pale);
  painter.drawPolygon(QPolygonF(floor) << plot.bottomRight() << plot.bottomLeft());
  painter.setPen(QPen(theme.faint, theme.line, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(floor);
}

void StabilityPicture::paintGrid(QPainter& painter) const
{
  QColor pale = theme.faint;
  pale.setAlphaF(0.3);
  painter.setPen(QPen(pale, theme.line));
  for (Tick const& tick : axes.verticalTicks()) {
    if (tick.label.isEmpty() || tick.value == 0.0) continue;
    const double y = axes.yAt(tick.value);
    painter.drawLine(QPointF(axes.plot().left(), y), QPointF(axes.plot().right(), y));
  }
}

void StabilityPicture::paintLine(QPainter& painter, std::size_t parameter) const
{
  const QColor color = colorOf(parameter);
  const bool isMain = comparison.parameters[parameter].significant;
  painter.setPen(QPen(color, isMain ? theme.curve : theme.line, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  QPolygonF medians;
  for (std::size_t size = 0; size < stability.sizes.size(); ++size) {
    const Point point{parameter, size};
    const QPointF at = placeOf(point);
    if (!std::isfinite(at.y())) continue;
    medians << at;
    DistanceAtSize const& d = distance(point);
    if (d.high > d.low) painter.drawLine(QPointF(at.x(), axes.yAt(d.low)), QPointF(at.x(), axes.yAt(d.high)));
  }
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(medians);
  const double radius = 0.19 * line;
  for (std::size_t size = 0; size < stability.sizes.size(); ++size) {
    const QPointF at = placeOf({parameter, size});
    if (!std::isfinite(at.y())) continue;
    painter.setBrush(stability.sizes[size].isBeyond(parameter) ? color : theme.paper);
    painter.drawEllipse(at, radius, radius);
  }
}

/// Whether the numbers of runs have room beside each other.
bool StabilityPicture::hasCounts() const
{
  const QFontMetricsF metrics(theme.font);
  double end = area.left();
  for (ComparisonAtSize const& size : stability.sizes) {
    const double half = 0.5 * metrics.horizontalAdvance(countsOf(size));
    const double middle = axes.xAt(size.share);
    if (middle - half < end) return false;
    end = middle + half + metrics.averageCharWidth();
  }
  return true;
}

void StabilityPicture::paintSizes(QPainter& painter) const
{
  const QFontMetricsF metrics(theme.font);
  auto const centred = [&](double middle, double top, QString const& text) {
    const QString fitting = elided(text, theme.font, area.width());
    const double half = 0.5 * metrics.horizontalAdvance(fitting);
    const double left =
        std::clamp(middle - half, area.left(), std::max(area.left(), area.right() - 2.0 * half));
    painter.drawText(QPointF(left, top + metrics.ascent()), fitting);
  };
  painter.setPen(theme.ink);
  const bool counts = hasCounts();
  const double top = area.bottom() - 2.0 * line;
  if (counts)
    for (ComparisonAtSize const& size : stability.sizes) centred(axes.xAt(size.share), top, countsOf(size));
  centred(axes.plot().center().x(), counts ? top + line : top,
          counts ? "share of the runs, passing + others" : "share of the runs");
}

std::vector<StabilityPicture::Label> StabilityPicture::labels() const
{
  std::vector<Label> labels;
  const QRectF plot = axes.plot();
  const double apart = 1.05 * line;
  const auto most = static_cast<std::size_t>(std::max(1.0, plot.height() / apart + 1.0));
  const std::size_t last = stability.sizes.size() - 1;
  const double floor = stability.sizes[last].noiseFloor;
  if (!std::isnan(floor)) {
    const double y = axes.yAt(std::min(floor, axes.vertical().high()));
    labels.push_back({floorName, theme.faint, QPointF(plot.right(), y), y});
  }
  for (std::size_t const parameter : shown) {
    const QPointF end = placeOf({parameter, last});
    if (labels.size() == most || !std::isfinite(end.y())) continue;
    labels.push_back({nameOf(parameter), colorOf(parameter), end, end.y()});
  }
  std::stable_sort(labels.begin(), labels.end(), [](Label const& a, Label const& b) { return a.y > b.y; });
  double limit = plot.bottom();
  for (Label& label : labels) {
    label.y = std::min(label.y, limit);
    limit = label.y - apart;
  }
  limit = plot.top();
  for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
    label->y = std::max(label->y, limit);
    limit = label->y + apart;
  }
  return labels;
}

void StabilityPicture::paintLabels(QPainter& painter) const
{
  const QFontMetricsF metrics(theme.font);
  const double right = axes.plot().right();
  const double to = area.right() - names - theme.gap;
  painter.setBrush(Qt::NoBrush);
  for (Label const& label : labels()) {
    painter.setPen(QPen(label.color, 0.7 * theme.line));
    painter.drawPolyline(QPolygonF(
        {label.from + QPointF(0.25 * line, 0.0), QPointF(right, label.from.y()), QPointF(to, label.y)}));
    painter.setPen(label.color == theme.faint ? theme.faint : theme.ink);
    painter.drawText(QPointF(to + theme.gap, label.y + 0.5 * (metrics.ascent() - metrics.descent())),
                     elided(label.text, theme.font, names));
  }
}

} // namespace runsieve::app
