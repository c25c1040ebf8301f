#include "app/explorer/charts/ClippedLine.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <optional>

namespace runsieve::app {

namespace {

bool isFinite(QPointF const& point)
{
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// Cuts a piece by one side (Y.-D. Liang, B. A. Barsky, ACM Transactions on Graphics 3, 1984).
bool cut(double direction, double room, double& begin, double& end)
{
  if (direction == 0.0) return room >= 0.0;
  const double at = room / direction;
  if (direction < 0.0)
    begin = std::max(begin, at);
  else
    end = std::min(end, at);
  return begin <= end;
}

std::optional<QLineF> clipped(QPointF const& from, QPointF const& to, QRectF const& box)
{
  const QPointF way = to - from;
  double begin = 0.0;
  double end = 1.0;
  if (!cut(-way.x(), from.x() - box.left(), begin, end) ||
      !cut(way.x(), box.right() - from.x(), begin, end) || !cut(-way.y(), from.y() - box.top(), begin, end) ||
      !cut(way.y(), box.bottom() - from.y(), begin, end))
    return std::nullopt;
  return QLineF(begin == 0.0 ? from : from + begin * way, end == 1.0 ? to : from + end * way);
}

bool isNear(QPointF const& a, QPointF const& b, double distance)
{
  return std::hypot(a.x() - b.x(), a.y() - b.y()) < distance;
}

} // namespace

std::vector<QPolygonF> clippedLine(QPolygonF const& line, QRectF const& to, double distance)
{
  std::vector<QPolygonF> parts;
  bool continues = false;
  QPointF last;
  bool isDown = false;
  for (int i = 0; i < line.size(); ++i) {
    if (!isFinite(line[i])) {
      isDown = false;
      continues = false;
      continue;
    }
    const bool isEnd = i + 1 == line.size() || !isFinite(line[i + 1]);
    if (isDown && !isEnd && isNear(last, line[i], distance)) continue;
    if (isDown) {
      if (auto const piece = clipped(last, line[i], to)) {
        if (!continues || parts.empty() || parts.back().last() != piece->p1())
          parts.push_back(QPolygonF() << piece->p1());
        parts.back() << piece->p2();
        continues = true;
      } else {
        continues = false;
      }
    }
    last = line[i];
    isDown = true;
  }
  return parts;
}

} // namespace runsieve::app
