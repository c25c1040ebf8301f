#include <runsieve/core/kernels/RunIntersection.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

namespace runsieve {

namespace {

/// The first row from `from` on whose flag is not that of `from`, or the end.
long long endOfEqual(unsigned char const* flags, long long from, long long end)
{
  void const* found =
      std::memchr(flags + from, flags[from] == 0 ? 1 : 0, static_cast<std::size_t>(end - from));
  return found ? static_cast<unsigned char const*>(found) - flags : end;
}

} // namespace

RunIntersection::RunIntersection(unsigned char const* selected_, double const* times_, long long rows_,
                                 long long stride_, RunGrid const& grid_)
    : selected(selected_), times(times_), rows(rows_), stride(std::max(stride_, 1LL)), grid(grid_)
{
  timesHit.assign(static_cast<std::size_t>((rows + stride - 1) / stride), 0);
  std::vector<double> const& first = grid.times();
  gridAscends = std::adjacent_find(first.begin(), first.end(), std::not_fn(std::less<>())) == first.end();
  if (gridAscends) countOnGrid();
  for (long long run = 0; run * stride < rows; ++run)
    if (!gridAscends || !grid.holds(run)) countOffGrid(run);
}

long long RunIntersection::rowsOf(long long run) const
{
  return std::min(stride, rows - run * stride);
}

/// Each row of a grid that ascends is a time of its own, so flags are only added up.
void RunIntersection::countOnGrid()
{
  std::vector<unsigned char> anySelected(grid.times().size(), 0);
  unsigned char* const any = anySelected.data();
  for (long long run = 0; run * stride < rows; ++run) {
    if (!grid.holds(run)) continue;
    unsigned char const* const flags = selected + run * stride;
    const long long count = rowsOf(run);
    int hit = 0;
    for (long long t = 0; t < count; ++t) {
      hit += flags[t];
      any[t] |= flags[t];
    }
    timesHit[static_cast<std::size_t>(run)] = hit;
  }
  for (std::size_t t = 0; t < anySelected.size(); ++t)
    if (anySelected[t] != 0) slotFor(grid.times()[t]);
}

void RunIntersection::countOffGrid(long long run)
{
  const long long first = run * stride;
  for (long long row = first; row < first + rowsOf(run); ++row) {
    if (!selected[row] || std::isnan(times[row])) continue;
    auto& last = lastRunInSlot[static_cast<std::size_t>(slotFor(times[row]))];
    if (last == run) continue;
    last = run;
    ++timesHit[static_cast<std::size_t>(run)];
  }
}

int RunIntersection::slotFor(double time)
{
  auto [entry, isNew] = timeSlots.try_emplace(time, demanded);
  if (isNew) {
    ++demanded;
    lastRunInSlot.push_back(-1);
  }
  return entry->second;
}

bool RunIntersection::isDemanded(double time) const
{
  return timeSlots.count(time) > 0;
}

/// A grid time can be demanded through a run off the grid, or twice in the grid: all of them are looked up.
std::vector<RowSpan> RunIntersection::demandedOnGrid() const
{
  RowSpans found;
  for (std::size_t t = 0; t < grid.times().size(); ++t)
    if (isDemanded(grid.times()[t])) found.append(static_cast<long long>(t));
  return found.spans();
}

/// Rows at demanded times.
void RunIntersection::splitOnGrid(Split& split, RowSpan span, bool keep) const
{
  const long long end = span.first + span.count;
  if (!keep) split.others.append(span);
  for (long long row = span.first; row < end;) {
    const long long next = endOfEqual(selected, row, end);
    const RowSpan equal = {row, next - row};
    if (!selected[row]) {
      split.complement.append(equal);
      if (keep) split.others.append(equal);
    } else {
      (keep ? split.remainder : split.reduced).append(equal);
    }
    row = next;
  }
}

RunIntersection::Split RunIntersection::split() const
{
  Split split;
  const std::vector<RowSpan> onGrid = demandedOnGrid();
  for (long long run = 0; run * stride < rows; ++run) {
    const long long first = run * stride;
    const bool keep = timesHit[static_cast<std::size_t>(run)] == demanded;
    if (grid.holds(run)) {
      for (RowSpan span : onGrid) {
        const long long count = std::min(span.count, rowsOf(run) - span.first);
        if (count > 0) splitOnGrid(split, {first + span.first, count}, keep);
      }
      continue;
    }
    for (long long row = first; row < first + rowsOf(run); ++row) {
      const bool timeless = std::isnan(times[row]);
      if (!selected[row] && (timeless || !isDemanded(times[row]))) continue;
      if (selected[row] && keep && !timeless) {
        split.remainder.append(row);
        continue;
      }
      (selected[row] ? split.reduced : split.complement).append(row);
      split.others.append(row);
    }
  }
  return split;
}

} // namespace runsieve
