#include <runsieve/core/kernels/RunIntersection.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace runsieve {

RunIntersection::RunIntersection(unsigned char const* selected_, double const* times_, long long rows_,
                                 long long stride_)
    : selected(selected_), times(times_), rows(rows_), stride(std::max(stride_, 1LL))
{
  const long long runs = (rows + stride - 1) / stride;
  timesHit.assign(static_cast<std::size_t>(runs), 0);
  runOnGrid.assign(static_cast<std::size_t>(runs), 0);
  readGrid();
  for (long long run = 0; run < runs; ++run) {
    const long long first = run * stride;
    const long long count = std::min(stride, rows - first);
    runOnGrid[static_cast<std::size_t>(run)] = onGrid(first, count);
    if (std::memchr(selected + first, 1, static_cast<std::size_t>(count))) countRun(run, first, count);
  }
}

void RunIntersection::readGrid()
{
  const long long length = std::min(stride, rows);
  gridSlot.assign(static_cast<std::size_t>(length), -1);
  gridUsable = std::none_of(times, times + length, [](double t) { return std::isnan(t); });
}

bool RunIntersection::onGrid(long long firstRow, long long count) const
{
  return gridUsable &&
         std::memcmp(times + firstRow, times, static_cast<std::size_t>(count) * sizeof(double)) == 0;
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

int RunIntersection::knownSlot(double time) const
{
  auto entry = timeSlots.find(time);
  return entry == timeSlots.end() ? -1 : entry->second;
}

void RunIntersection::countRun(long long run, long long firstRow, long long count)
{
  const bool grid = runOnGrid[static_cast<std::size_t>(run)];
  for (long long t = 0; t < count; ++t) {
    if (!selected[firstRow + t]) continue;
    const double time = times[firstRow + t];
    if (std::isnan(time)) continue;
    int slot = grid ? gridSlot[static_cast<std::size_t>(t)] : -1;
    if (slot < 0) {
      slot = slotFor(time);
      if (grid) gridSlot[static_cast<std::size_t>(t)] = slot;
    }
    auto& last = lastRunInSlot[static_cast<std::size_t>(slot)];
    if (last == run) continue;
    last = run;
    ++timesHit[static_cast<std::size_t>(run)];
  }
}

RunIntersection::Split RunIntersection::split() const
{
  Split split;
  auto place = [&](long long row, bool keep) {
    if (selected[row] && keep) {
      split.remainder.append(row);
      return;
    }
    (selected[row] ? split.reduced : split.complement).append(row);
    split.others.append(row);
  };

  // A grid time can be demanded through a run off the grid, or twice in the grid: look all of them up once.
  std::vector<long long> demandedGridRows;
  if (gridUsable)
    for (std::size_t t = 0; t < gridSlot.size(); ++t)
      if (knownSlot(times[t]) >= 0) demandedGridRows.push_back(static_cast<long long>(t));

  for (long long first = 0, run = 0; first < rows; first += stride, ++run) {
    const long long count = std::min(stride, rows - first);
    const bool keep = survives(run);
    if (runOnGrid[static_cast<std::size_t>(run)]) {
      for (long long t : demandedGridRows) {
        if (t >= count) break;
        place(first + t, keep);
      }
      continue;
    }
    for (long long row = first; row < first + count; ++row) {
      const bool timeless = std::isnan(times[row]);
      if (selected[row] || (!timeless && knownSlot(times[row]) >= 0)) place(row, keep && !timeless);
    }
  }
  return split;
}

} // namespace runsieve
