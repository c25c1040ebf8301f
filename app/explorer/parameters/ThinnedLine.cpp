#include "app/explorer/parameters/ThinnedLine.h"

#include <algorithm>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

/// Slopes of lines from a point that come near enough to all that follow it.
struct Sleeve
{
  double least = -infinite;
  double largest = infinite;

  [[nodiscard]] bool holds(double slope) const { return slope >= least && slope <= largest; }
  void narrow(QPointF const& away, double tolerance)
  {
    least = std::max(least, (away.y() - tolerance) / away.x());
    largest = std::min(largest, (away.y() + tolerance) / away.x());
  }
};

} // namespace

QPolygonF thinned(QPolygonF const& line, double tolerance)
{
  if (line.size() < 3) return line;
  QPolygonF kept;
  kept << line.first();
  Sleeve sleeve;
  for (int i = 1; i < line.size(); ++i) {
    QPointF away = line[i] - kept.last();
    const bool isBeside = away.x() > 0.0;
    if (!isBeside || !sleeve.holds(away.y() / away.x())) {
      if (kept.last() != line[i - 1]) kept << line[i - 1];
      sleeve = {};
      away = line[i] - kept.last();
    }
    if (away.x() > 0.0)
      sleeve.narrow(away, tolerance);
    else
      kept << line[i];
  }
  if (kept.last() != line.last()) kept << line.last();
  return kept;
}

} // namespace runsieve::app
