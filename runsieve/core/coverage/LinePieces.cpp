#include <runsieve/core/coverage/LinePieces.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

/// Mapped values beyond are taken for infinite: differences of two must not overflow.
constexpr double largest = 1e300;

/// What has to be known of the mapped points of a line to use them as they are.
struct Course
{
  int rises = 0; ///< steps in x
  int falls = 0;
  int far = 0; ///< coordinates beyond LinePieces::farthest, or not finite
};

Course courseOf(float const* x, float const* y, std::size_t count)
{
  Course course;
  const auto n = static_cast<int>(count);
  for (int i = 0; i + 1 < n; ++i) {
    course.rises += x[i + 1] > x[i];
    course.falls += x[i + 1] < x[i];
  }
  for (int i = 0; i < n; ++i) {
    course.far += !(std::abs(x[i]) <= LinePieces::farthest);
    course.far += !(std::abs(y[i]) <= LinePieces::farthest);
  }
  return course;
}

} // namespace

std::vector<LinePieces::Piece> const& LinePieces::cut(float const* points, std::size_t count)
{
  pieces.clear();
  if (count >= 2 && !cutPlainLine(points, count)) cutAnyLine(points, count);
  return pieces;
}

bool LinePieces::cutPlainLine(float const* points, std::size_t count)
{
  if (x.size() < count) {
    x.resize(count);
    y.resize(count);
  }
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = static_cast<float>(points[2 * i] * map.xScale + map.xOffset);
    y[i] = static_cast<float>(points[2 * i + 1] * map.yScale + map.yOffset);
  }
  const Course course = courseOf(x.data(), y.data(), count);
  if (course.far > 0 || (course.rises > 0 && course.falls > 0)) return false;
  if (course.falls > 0) {
    const auto end = static_cast<std::ptrdiff_t>(count);
    std::reverse(x.begin(), x.begin() + end);
    std::reverse(y.begin(), y.begin() + end);
  }
  pieces.push_back({x.data(), y.data(), count});
  return true;
}

void LinePieces::cutAnyLine(float const* points, std::size_t count)
{
  x.clear();
  y.clear();
  ends.clear();
  int direction = 0; // of x in the current piece: -1, 1, or 0 while it only goes up or down
  Point last{};
  bool hasLast = false;
  for (std::size_t i = 0; i < count; ++i) {
    const Point point{points[2 * i] * map.xScale + map.xOffset, points[2 * i + 1] * map.yScale + map.yOffset};
    const bool isFinite = std::abs(point.x) <= largest && std::abs(point.y) <= largest;
    if (!isFinite || !hasLast) {
      endPiece();
      direction = 0;
    } else {
      const int step = (point.x > last.x) - (point.x < last.x);
      if (step * direction < 0) endPiece();
      if (step != 0) direction = step;
      descends = direction < 0;
      appendSegment(last, point);
    }
    last = point;
    hasLast = isFinite;
  }
  endPiece();

  std::size_t start = 0;
  for (const std::size_t end : ends) {
    pieces.push_back({x.data() + start, y.data() + start, end - start});
    start = end;
  }
}

/// Appends the part of a segment within the farthest columns. Rows beyond the farthest are drawn along it,
/// with points where the segment passes it, so that what is seen keeps its place.
void LinePieces::appendSegment(Point from, Point to)
{
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  // What a segment passes first, and last. At such a limit the coordinate is not computed: far points have
  // few digits left for it.
  const double firstX = dx < 0 ? farthest : -farthest;
  const double firstY = dy < 0 ? farthest : -farthest;
  if (dx == 0 && std::abs(from.x) > farthest) return endPiece();
  const double enters = dx == 0 ? 0 : (firstX - from.x) / dx;
  const double leaves = dx == 0 ? 1 : (-firstX - from.x) / dx;
  if (enters > 1 || leaves < 0) return endPiece();

  if (enters > 0) endPiece();
  const std::size_t open = ends.empty() ? 0 : ends.back();
  if (enters > 0)
    appendPoint({firstX, from.y + enters * dy});
  else if (x.size() == open)
    appendPoint(from);
  if (dy != 0)
    for (const double limit : {firstY, -firstY}) {
      const double passes = (limit - from.y) / dy;
      if (passes > std::max(enters, 0.0) && passes < std::min(leaves, 1.0))
        appendPoint({from.x + passes * dx, limit});
    }
  if (leaves < 1) {
    appendPoint({-firstX, from.y + leaves * dy});
    endPiece();
  } else {
    appendPoint(to);
  }
}

void LinePieces::appendPoint(Point point)
{
  const double limit = farthest;
  x.push_back(static_cast<float>(std::clamp(point.x, -limit, limit)));
  y.push_back(static_cast<float>(std::clamp(point.y, -limit, limit)));
}

void LinePieces::endPiece()
{
  const std::size_t start = ends.empty() ? 0 : ends.back();
  if (x.size() == start) return;
  if (descends) {
    const auto first = static_cast<std::ptrdiff_t>(start);
    std::reverse(x.begin() + first, x.end());
    std::reverse(y.begin() + first, y.end());
  }
  ends.push_back(x.size());
}

} // namespace runsieve
