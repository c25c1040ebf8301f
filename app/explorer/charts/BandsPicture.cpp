#include "app/explorer/charts/BandsPicture.h"

#include "app/explorer/charts/ClippedLine.h"
#include "app/explorer/charts/DrawnTimes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

/// A place in pixels that painters can hold; what is not on a logarithmic axis lies below it.
QPointF pointOf(ChartFrame const& frame, double time, double value)
{
  constexpr double farthest = 1e5;
  QPointF point = frame.at(time, value);
  if (std::isnan(point.y())) point.setY(frame.plot().bottom() + frame.plot().height());
  point.setY(std::clamp(point.y(), -farthest, farthest));
  return point;
}

void paintArea(QPainter& painter, std::vector<double> const& low, std::vector<double> const& high,
               std::vector<double> const& times, ChartFrame const& frame, QColor const& color)
{
  auto const at = [&](std::vector<double> const& row, std::size_t i) {
    return row[drawnValue(i, row.size())];
  };
  // Times at which no run has a value part the area.
  for (std::size_t first = 0; first < times.size(); ++first) {
    if (std::isnan(at(low, first))) continue;
    std::size_t end = first;
    QPolygonF area;
    for (; end < times.size() && !std::isnan(at(low, end)); ++end)
      area << pointOf(frame, times[end], at(high, end));
    for (std::size_t i = end; i-- > first;) area << pointOf(frame, times[i], at(low, i));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(area.intersected(QPolygonF(frame.plot())));
    first = end;
  }
}

bool sameGroups(std::vector<BandsPicture::Group> const& a, std::vector<BandsPicture::Group> const& b)
{
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto const& x, auto const& y) {
    return x.color == y.color && x.opacity == y.opacity && x.mask == y.mask;
  });
}

} // namespace

void paintBands(QPainter& painter, RunBands const& bands, std::vector<double> const& ofScan,
                ChartFrame const& frame, QColor const& color, BandsLook const& look)
{
  const std::vector<double> times = drawnTimes(ofScan, frame.horizontal());
  constexpr double wide = 0.16;
  constexpr double narrow = 0.26;
  auto const pale = [&](double opacity) {
    QColor area = color;
    area.setAlphaF(opacity * look.opacity);
    return area;
  };
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  auto const& q = bands.lines;
  paintArea(painter, q[0], q[4], times, frame, pale(wide));
  paintArea(painter, q[1], q[3], times, frame, pale(narrow));
  painter.setBrush(Qt::NoBrush);
  auto const paintRow = [&](std::vector<double> const& values, QPen const& pen) {
    QPolygonF line;
    for (std::size_t i = 0; i < times.size(); ++i) {
      const double value = values[drawnValue(i, values.size())];
      line << (std::isfinite(value) ? pointOf(frame, times[i], value) : QPointF(times[i], std::nan("")));
    }
    painter.setPen(pen);
    for (QPolygonF const& part : clippedLine(line, frame.plot(), look.finest)) painter.drawPolyline(part);
  };
  constexpr double thin = 0.5;
  constexpr double pallor = 0.5;
  for (std::vector<double> const& values : bands.outlyingValues)
    paintRow(values, QPen(pale(pallor), thin * look.middle, Qt::DashLine, Qt::FlatCap, Qt::RoundJoin));
  paintRow(q[2], QPen(pale(1.0), look.middle, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.restore();
}

BandsPicture::BandsPicture(QObject* parent) : QObject(parent)
{
  connect(&work, &Background::busyChanged, this, &BandsPicture::changed);
}

void BandsPicture::request(std::shared_ptr<Scan const> const& scan, std::size_t output, BandsKind kind,
                           std::vector<Group> groups)
{
  if (wanted.scan == scan && wanted.output == output && wanted.kind == kind &&
      sameGroups(wanted.groups, groups))
    return;
  if (shown.scan != scan || shown.output != output || shown.kind != kind) shown = {};
  wanted = {scan, output, kind, std::move(groups), {}};
  if (!scan || output >= scan->outputs.size()) return;
  work.start(
      [this, result = wanted](Background::Cancelled const& cancelled) mutable -> std::function<void()> {
        for (Group const& group : result.groups) {
          std::optional<RunBands> bands =
              bandsOf(*result.scan, result.output, group.mask, result.kind, cancelled);
          if (!bands) return {};
          result.bands.push_back(std::move(*bands));
        }
        return [this, result = std::move(result)] {
          if (result.scan == wanted.scan && result.output == wanted.output && result.kind == wanted.kind)
            shown = result;
          Q_EMIT changed();
        };
      });
}

void BandsPicture::paint(QPainter& painter, ChartFrame const& frame, Theme const& theme) const
{
  for (std::size_t i = 0; i < shown.bands.size(); ++i)
    paintBands(painter, shown.bands[i], shown.scan->times, frame, shown.groups[i].color,
               {1.2 * theme.curve, shown.groups[i].opacity});
}

std::size_t BandsPicture::outlyingOf(std::size_t group) const
{
  return group < shown.bands.size() ? shown.bands[group].outlying.size() : 0;
}

} // namespace runsieve::app
