#include <runsieve/core/coverage/LineEnvelope.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

/// Edges that are written at a time, also beyond the end of a segment: the next one overwrites them.
constexpr int block = 4;

/// Steeper, in pixels: a segment is as good as vertical.
constexpr float narrowest = 1e-3F;

/// The smallest whole number that is not below; std::ceil is a call without SSE 4.1.
int ceiling(float value)
{
  const int whole = static_cast<int>(value);
  return whole + (static_cast<float>(whole) < value);
}

/// An end steeper than that is cut off across the line, a flatter one between two columns.
constexpr float steepEnd = 1;

/// The width of a segment, in pixels: a narrower one stands in a column as a bar, a wider one leans.
constexpr float uprightEnd = 0.5F;

/// The height of a jump, in pixels: a lower one does not differ from a slope.
constexpr float lowestJump = 2;

float larger(float a, float b)
{
  return a > b ? a : b;
}

float smaller(float a, float b)
{
  return a < b ? a : b;
}

/// Of sums of pixels and half widths.
constexpr float rounding = 0.01F;

/// A straight part of one side of the outline.
struct Stretch
{
  int start; ///< edges
  int end;
  float x; ///< a point of it
  float y;
  float slope;
  float joint; ///< y of the line at its start
};

/// Writes one side of the outline up to the end of a stretch. All edges below `filled` have been written.
/// Edges that no segment reaches get the y of the joint: they are within its disc.
template <class Outer> void follow(float* side, int& filled, Stretch const& part, Outer outer)
{
  for (; filled < part.start; ++filled) side[filled] = part.joint;
  int k = part.start;
  float distance = static_cast<float>(k) - part.x;
  for (const int known = std::min(part.end, filled); k < known; ++k, distance += 1)
    side[k] = outer(side[k], part.y + part.slope * distance);
  for (; k < part.end; k += block, distance += static_cast<float>(block))
    for (int i = 0; i < block; ++i) side[k + i] = part.y + part.slope * (distance + static_cast<float>(i));
  filled = std::max(filled, part.end);
}

} // namespace

LineEnvelope::LineEnvelope(int columns, float halfWidth)
    : columns(columns), halfWidth(halfWidth), top(static_cast<std::size_t>(columns) + 1 + block),
      bottom(static_cast<std::size_t>(columns) + 1 + block)
{}

LineEnvelope::Columns LineEnvelope::trace(float const* x, float const* y, std::size_t count)
{
  // A segment without length would give the end no direction.
  for (; count > 2 && x[0] == x[1] && y[0] == y[1]; --count) ++x, ++y;
  while (count > 2 && x[count - 1] == x[count - 2] && y[count - 1] == y[count - 2]) --count;
  const std::size_t segments = count - 1;
  steps.clear();
  if (x[0] - halfWidth >= static_cast<float>(columns) || x[segments] + halfWidth <= 0) return {0, 0};
  measureSegments(x, y, segments);
  const Columns whole = coveredColumns(x, segments);
  const Columns covered{std::max(whole.first, 0), std::min(whole.last, columns)};
  if (covered.first >= covered.last) return {0, 0};
  if (whole.last - whole.first == 1) {
    traceColumn(y, count, whole.first);
    return whole;
  }

  traceSegments(x, y, segments, covered);
  traceJoins(x, y, segments, covered);
  findJumps(x, y, segments, covered);
  traceEnd(x[0], y[0], 0, covered);
  traceEnd(x[segments], y[segments], segments - 1, covered);
  // An edge before an upright end: as behind it.
  const auto copy = [&](int to, int from) {
    top[static_cast<std::size_t>(to)] = top[static_cast<std::size_t>(from)];
    bottom[static_cast<std::size_t>(to)] = bottom[static_cast<std::size_t>(from)];
  };
  const bool startsUpright = std::abs(slope[0]) > steepEnd && x[1] - x[0] < uprightEnd;
  const bool endsUpright =
      std::abs(slope[segments - 1]) > steepEnd && x[segments] - x[segments - 1] < uprightEnd;
  if (startsUpright && covered.first == whole.first &&
      static_cast<float>(whole.first) < x[0] - std::abs(shift[0]) + rounding)
    copy(whole.first, whole.first + 1);
  if (endsUpright && covered.last == whole.last &&
      static_cast<float>(whole.last) > x[segments] + std::abs(shift[segments - 1]) - rounding)
    copy(whole.last, whole.last - 1);
  return covered;
}

void LineEnvelope::measureSegments(float const* x, float const* y, std::size_t segments)
{
  if (slope.size() < segments) {
    for (auto* values : {&slope, &rise, &shift}) values->resize(segments);
    for (auto* edges : {&above.start, &above.end, &below.start, &below.end}) edges->resize(segments);
  }
  float* const m = slope.data();
  float* const up = rise.data();
  float* const left = shift.data();
  const float r = halfWidth;
  for (std::size_t i = 0; i < segments; ++i) {
    m[i] = (y[i + 1] - y[i]) / larger(x[i + 1] - x[i], narrowest);
    const float length = std::sqrt(1 + m[i] * m[i]);
    up[i] = r * length;
    left[i] = r * m[i] / length;
  }
  int* const startAbove = above.start.data();
  int* const endAbove = above.end.data();
  int* const startBelow = below.start.data();
  int* const endBelow = below.end.data();
  for (std::size_t i = 0; i < segments; ++i) {
    startAbove[i] = ceiling(x[i] - left[i]);
    endAbove[i] = ceiling(x[i + 1] - left[i]);
    startBelow[i] = ceiling(x[i] + left[i]);
    endBelow[i] = ceiling(x[i + 1] + left[i]);
  }
}

/// The columns from end to end; those beside an end, which a wide line fills in part, only if it is upright.
LineEnvelope::Columns LineEnvelope::coveredColumns(float const* x, std::size_t segments) const
{
  const auto beside = [&](std::size_t segment) {
    return x[segment + 1] - x[segment] < uprightEnd ? std::abs(shift[segment]) : 0;
  };
  return {ceiling(x[0] - beside(0) - 0.5F), ceiling(x[segments] + beside(segments - 1) - 0.5F)};
}

/// A line that covers one column only: a box.
void LineEnvelope::traceColumn(float const* y, std::size_t count, int column)
{
  // The half height of a flat end, and of a join.
  const auto reach = [&](std::size_t i) {
    if (i == 0) return halfWidth * halfWidth / rise[0];
    return i == count - 1 ? halfWidth * halfWidth / rise[count - 2] : halfWidth;
  };
  float low = y[0];
  float high = y[0];
  for (std::size_t i = 0; i < count; ++i) {
    low = smaller(low, y[i] - reach(i));
    high = larger(high, y[i] + reach(i));
  }
  const auto k = static_cast<std::size_t>(column);
  top[k] = top[k + 1] = high;
  bottom[k] = bottom[k + 1] = low;
}

void LineEnvelope::traceSegments(float const* x, float const* y, std::size_t segments, Columns covered)
{
  const int first = covered.first;
  const int behind = covered.last + 1; // of the edges
  if (std::abs(slope[0]) <= steepEnd) above.start[0] = below.start[0] = first;
  if (std::abs(slope[segments - 1]) <= steepEnd) above.end[segments - 1] = below.end[segments - 1] = behind;
  int filledAbove = first;
  int filledBelow = first;
  const auto edge = [&](int k) { return std::clamp(k, first, behind); };
  for (std::size_t i = 0; i < segments; ++i) {
    follow(top.data(), filledAbove,
           {edge(above.start[i]), edge(above.end[i]), x[i], y[i] + rise[i], slope[i], y[i]},
           [](float a, float b) { return larger(a, b); });
    follow(bottom.data(), filledBelow,
           {edge(below.start[i]), edge(below.end[i]), x[i], y[i] - rise[i], slope[i], y[i]},
           [](float a, float b) { return smaller(a, b); });
  }
  for (; filledAbove < behind; ++filledAbove) top[static_cast<std::size_t>(filledAbove)] = y[segments];
  for (; filledBelow < behind; ++filledBelow) bottom[static_cast<std::size_t>(filledBelow)] = y[segments];
}

/// The discs at the joints. Where both segments are longer than the half width, a disc shows only in the
/// wedge between them, and most wedges are too narrow to hold an edge.
void LineEnvelope::traceJoins(float const* x, float const* y, std::size_t segments, Columns covered)
{
  const float r = halfWidth;
  for (std::size_t i = 1; i < segments; ++i) {
    const bool shows = above.end[i - 1] < above.start[i] || below.end[i - 1] < below.start[i] ||
                       x[i] - x[i - 1] < r || x[i + 1] - x[i] < r;
    if (!shows) continue;
    const int end = std::min(ceiling(x[i] + r), covered.last + 1);
    for (int k = std::max(ceiling(x[i] - r), covered.first); k < end; ++k) {
      const float distance = static_cast<float>(k) - x[i];
      const float reach = std::sqrt(larger(r * r - distance * distance, 0));
      float& high = top[static_cast<std::size_t>(k)];
      float& low = bottom[static_cast<std::size_t>(k)];
      high = larger(high, y[i] + reach);
      low = smaller(low, y[i] - reach);
    }
  }
}

/// Segments that reach no edge, but far up or down.
void LineEnvelope::findJumps(float const* x, float const* y, std::size_t segments, Columns covered)
{
  const auto add = [&](int edge, bool isAbove, float from, float to) {
    const int column = edge - 1; // that whose right edge is the next
    if (column < covered.first || column >= covered.last) return;
    const auto left = static_cast<float>(column);
    steps.push_back({column, isAbove, from - left, to - left});
  };
  for (std::size_t i = 0; i < segments; ++i) {
    if (std::abs(y[i + 1] - y[i]) < lowestJump) continue;
    if (above.start[i] == above.end[i]) add(above.start[i], true, x[i] - shift[i], x[i + 1] - shift[i]);
    if (below.start[i] == below.end[i]) add(below.start[i], false, x[i] + shift[i], x[i + 1] + shift[i]);
  }
}

/// The straight cut across a steep end.
void LineEnvelope::traceEnd(float x, float y, std::size_t segment, Columns covered)
{
  if (std::abs(slope[segment]) <= steepEnd) return;
  const float reach = std::abs(shift[segment]);
  const int end = std::min(ceiling(x + reach), covered.last + 1);
  for (int k = std::max(ceiling(x - reach), covered.first); k < end; ++k) {
    const float cut = y - (static_cast<float>(k) - x) / slope[segment];
    float& high = top[static_cast<std::size_t>(k)];
    float& low = bottom[static_cast<std::size_t>(k)];
    high = larger(high, cut);
    low = smaller(low, cut);
  }
}

} // namespace runsieve
