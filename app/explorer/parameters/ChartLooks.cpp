#include "app/explorer/parameters/ChartLooks.h"

#include "app/explorer/charts/CurveBand.h"
#include "app/explorer/parameters/CountDensity.h"
#include "app/explorer/parameters/ThinnedLine.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace runsieve::app::ChartLooks {

namespace {

constexpr std::size_t densityPoints = 161; ///< finer than a bandwidth
constexpr double finest = 0.1;             ///< pixels that nobody sees

QPen curvePen(QColor const& color, double width)
{
  return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin};
}

void paintBand(QPainter& painter, ChartFrame const& frame, QPolygonF const& others, double noiseFloor,
               Theme const& theme)
{
  QColor ground = theme.all;
  ground.setAlphaF(theme.dark ? 0.26 : 0.17);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawPolygon(bandAround(others, frame.plot(), noiseFloor * frame.plot().height()));
}

/// Where a line stands there.
double heightAt(QPolygonF const& line, double x)
{
  auto const isBefore = [](QPointF const& point, double place) { return point.x() < place; };
  auto const next = std::lower_bound(line.begin(), line.end(), x, isBefore);
  if (next == line.begin()) return line.first().y();
  if (next == line.end()) return line.last().y();
  const QPointF before = *std::prev(next);
  return before.y() + (next->y() - before.y()) * (x - before.x()) / (next->x() - before.x());
}

/// Each run as a mark at the bottom.
void paintRuns(QPainter& painter, ChartFrame const& frame, AxisMap const& values, ColumnCounts const& counts,
               QColor const& color, double height)
{
  painter.setPen(curvePen(color, 1.2));
  for (std::size_t i = 0; i < RunColumns::columns; ++i) {
    if (counts.at(i) == 0) continue;
    const double x = frame.xAt(values.value((static_cast<double>(i) + 0.5) / RunColumns::columns));
    painter.drawLine(QPointF(x, frame.plot().bottom()),
                     QPointF(x, frame.plot().bottom() - height * frame.plot().height()));
  }
}

void paintDensity(QPainter& painter, ChartFrame const& frame, AxisMap const& values,
                  std::vector<double> const& density, QColor const& color, Theme const& theme, double filled)
{
  if (density.empty()) return;
  const double left = frame.xAt(values.low());
  const double width = frame.xAt(values.high()) - left;
  QPolygonF line;
  for (std::size_t i = 0; i < density.size(); ++i)
    line << QPointF(left + width * static_cast<double>(i) / static_cast<double>(density.size() - 1),
                    frame.yAt(density[i]));
  line = thinned(line, finest);
  QPolygonF area = line;
  area << QPointF(left + width, frame.plot().bottom()) << QPointF(left, frame.plot().bottom());
  QColor inside = color;
  inside.setAlphaF(filled);
  painter.setPen(Qt::NoPen);
  painter.setBrush(inside);
  painter.drawPolygon(area);
  painter.setPen(curvePen(color, theme.curve));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(line);
}

} // namespace

QPolygonF stepLine(ChartFrame const& frame, AxisMap const& values, ColumnCounts const& counts)
{
  const std::vector<double> shares = counts.cumulated();
  const QRectF plot = frame.plot();
  const double left = frame.xAt(values.low());
  const double width = frame.xAt(values.high()) - left;
  // A column in each half of a pixel is as fine as a line shows.
  std::size_t step = 1;
  while (static_cast<double>(RunColumns::columns / step) > 2.0 * std::max(width, 16.0)) step *= 2;
  QPolygonF line;
  line << QPointF(plot.left(), plot.bottom() - shares[0] * plot.height());
  double former = -1.0;
  bool isLeftOut = false;
  for (std::size_t i = 0; i <= RunColumns::columns; i += step) {
    const QPointF point(left + width * static_cast<double>(i) / RunColumns::columns,
                        plot.bottom() - shares[i] * plot.height());
    if (shares[i] == former) {
      isLeftOut = true;
      continue;
    }
    if (isLeftOut)
      line << QPointF(point.x() - width * static_cast<double>(step) / RunColumns::columns, line.last().y());
    isLeftOut = false;
    former = shares[i];
    line << point;
  }
  line << QPointF(plot.right(), plot.bottom() - shares.back() * plot.height());
  return line;
}

void paintCurves(QPainter& painter, ChartFrame const& frame, AxisMap const& values,
                 ParameterGroups const& groups, double noiseFloor, double furthest, Theme const& theme)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(frame.plot().adjusted(0.0, -1.0, 1.0, 1.0), Qt::IntersectClip);
  const bool hasOthers = groups.others.total() > 0;
  const bool hasPassing = groups.passing.total() > 0;
  const QPolygonF others = thinned(stepLine(frame, values, groups.others), finest);
  const QPolygonF passing = thinned(stepLine(frame, values, groups.passing), finest);
  if (hasOthers && hasPassing && noiseFloor > 0.0) paintBand(painter, frame, others, noiseFloor, theme);
  if (hasOthers && hasPassing && std::isfinite(furthest)) {
    const double x = frame.xAt(furthest);
    painter.setPen(QPen(theme.faint, 1.0, Qt::DotLine));
    painter.drawLine(QPointF(x, heightAt(others, x)), QPointF(x, heightAt(passing, x)));
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(curvePen(theme.all, 0.85 * theme.curve));
  if (hasOthers) painter.drawPolyline(others);
  painter.setPen(curvePen(theme.passing, 1.15 * theme.curve));
  if (hasPassing) painter.drawPolyline(passing);
  painter.restore();
}

Densities densitiesOf(ParameterGroups const& groups)
{
  Densities densities;
  for (auto const& [counts, density] :
       {std::pair(&groups.passing, &densities.passing), std::pair(&groups.others, &densities.others)}) {
    if (counts->onAxis() < fewestForDensity) continue;
    *density = densityOf(*counts, densityPoints);
    densities.largest = std::max(densities.largest, *std::max_element(density->begin(), density->end()));
  }
  return densities;
}

void paintDensities(QPainter& painter, ChartFrame const& frame, AxisMap const& values,
                    ParameterGroups const& groups, Densities const& densities, Theme const& theme)
{
  constexpr double markHeight = 0.14;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(frame.plot().adjusted(0.0, -1.0, 1.0, 1.0), Qt::IntersectClip);
  paintDensity(painter, frame, values, densities.others, theme.all, theme, 0.13);
  paintDensity(painter, frame, values, densities.passing, theme.passing, theme, 0.22);
  if (densities.others.empty()) paintRuns(painter, frame, values, groups.others, theme.all, markHeight);
  if (densities.passing.empty())
    paintRuns(painter, frame, values, groups.passing, theme.passing, 1.6 * markHeight);
  painter.restore();
}

} // namespace runsieve::app::ChartLooks
