#include <runsieve/items/ThinnedPolyline.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace runsieve {

namespace {

/// The points of one column, by their numbers.
struct ColumnSpan
{
  std::size_t first;
  std::size_t lowest;
  std::size_t highest;
  std::size_t last;
};

/// The first point behind those that share the column of a point, and what stays of them.
std::size_t gatherColumn(float const* points, std::size_t begin, std::size_t count, ColumnScale columns,
                         ColumnSpan& span)
{
  span = {begin, begin, begin, begin};
  auto const columnOf = [&](std::size_t i) {
    return std::isfinite(points[2 * i + 1]) ? std::floor(columns.scale * points[2 * i] + columns.offset)
                                            : std::nan("");
  };
  double const column = columnOf(begin);
  std::size_t i = begin + 1;
  for (; i < count && columnOf(i) == column; ++i) { // false for what isn't a number
    if (points[2 * i + 1] < points[2 * span.lowest + 1]) span.lowest = i;
    if (points[2 * i + 1] > points[2 * span.highest + 1]) span.highest = i;
    span.last = i;
  }
  return i;
}

} // namespace

void thinToColumns(float const* points, std::size_t count, ColumnScale columns, std::vector<float>& out)
{
  out.clear();
  ColumnSpan span{};
  for (std::size_t begin = 0; begin < count;) {
    begin = gatherColumn(points, begin, count, columns, span);
    std::array<std::size_t, 4> stay = {span.first, std::min(span.lowest, span.highest),
                                       std::max(span.lowest, span.highest), span.last};
    auto const end = std::unique(stay.begin(), stay.end());
    for (auto i = stay.begin(); i != end; ++i) out.insert(out.end(), {points[2 * *i], points[2 * *i + 1]});
  }
}

} // namespace runsieve
