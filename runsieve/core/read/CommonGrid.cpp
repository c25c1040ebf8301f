#include <runsieve/core/read/CommonGrid.h>

#include <runsieve/core/read/CommonSpan.h>
#include <runsieve/core/read/Rounding.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace runsieve {

namespace {

constexpr std::size_t mostEvenSteps = 10001;

// Zero is a time like any other: what stands for it may be tiny against the steps.
bool sameTime(std::vector<double> const& grid, std::size_t at, double time)
{
  if (equalButForRounding(grid[at], time)) return true;
  double step = std::numeric_limits<double>::infinity();
  if (at > 0) step = grid[at] - grid[at - 1];
  if (at + 1 < grid.size()) step = std::min(step, grid[at + 1] - grid[at]);
  return std::isfinite(step) && std::fabs(grid[at] - time) <= relativeRounding * step;
}

bool sameTimes(RunTimes const& runs, std::size_t a, std::size_t b)
{
  return runs.length(a) == runs.length(b) &&
         std::equal(runs.of(a), runs.of(a) + runs.length(a), runs.of(b), equalButForRounding);
}

} // namespace

CommonGrid::CommonGrid(RunTimes const& runTimes, bool exact) : runs(runTimes)
{
  takeLongest();
  if (allWithin()) return;
  if (exact)
    takeUnion();
  else
    takeCommon();
}

void CommonGrid::takeLongest()
{
  std::size_t longest = 0;
  for (std::size_t run = 1; run < runs.runs(); ++run)
    if (runs.length(run) > runs.length(longest)) longest = run;
  grid.assign(runs.of(longest), runs.of(longest) + runs.length(longest));
}

bool CommonGrid::allWithin()
{
  gridKind = Kind::Same;
  runsWithGaps = 0;
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    if (!isWithin(run)) return false;
    if (runs.length(run) != grid.size()) gridKind = Kind::Gaps;
  }
  return true;
}

// Whether all times of a run are on the grid.
bool CommonGrid::isWithin(std::size_t run)
{
  double const* const times = runs.of(run);
  std::size_t const count = runs.length(run);
  if (count == grid.size() && std::equal(times, times + count, grid.begin())) return true;
  std::size_t at = 0;
  for (std::size_t i = 0; i < count; ++i, ++at) {
    while (at < grid.size() && grid[at] < times[i] && !sameTime(grid, at, times[i])) ++at;
    if (at == grid.size() || !sameTime(grid, at, times[i])) return false;
    hasRounded = hasRounded || grid[at] != times[i];
  }
  if (at > count) ++runsWithGaps;
  return true;
}

void CommonGrid::takeUnion()
{
  std::vector<double> all(runs.times, runs.times + runs.starts.back());
  std::sort(all.begin(), all.end());
  grid.clear();
  for (double const time : all)
    if (grid.empty() || !equalButForRounding(grid.back(), time)) grid.push_back(time);
  gridKind = Kind::Gaps;
}

// Of the runs with equal times the first, if these are half of all runs or more; else the number of runs.
std::size_t CommonGrid::mostShared() const
{
  struct Shared
  {
    std::size_t first;
    std::size_t count;
  };
  std::multimap<std::size_t, Shared> byLength; // few grids are compared: those of one length
  constexpr std::size_t mostGrids = 1000;
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    auto [at, end] = byLength.equal_range(runs.length(run));
    at = std::find_if(at, end, [&](auto const& entry) { return sameTimes(runs, entry.second.first, run); });
    if (at != end)
      ++at->second.count;
    else if (byLength.size() < mostGrids)
      byLength.emplace(runs.length(run), Shared{run, 1});
  }
  auto const best = std::max_element(byLength.begin(), byLength.end(), [](auto const& a, auto const& b) {
    return a.second.count < b.second.count;
  });
  return 2 * best->second.count >= runs.runs() ? best->second.first : runs.runs();
}

void CommonGrid::takeCommon()
{
  gridKind = Kind::Interpolated;
  grid.clear();
  std::size_t const shared = mostShared();
  if (shared < runs.runs())
    takeShared(shared);
  else
    takeEvenSteps();
  countCut();
}

void CommonGrid::takeShared(std::size_t shared)
{
  double const from = commonSpan(runs).from;
  for (std::size_t i = 0; i < runs.length(shared); ++i)
    if (double const time = runs.of(shared)[i]; time >= from || equalButForRounding(time, from))
      grid.push_back(time);
  if (grid.empty()) grid.assign(runs.of(shared), runs.of(shared) + runs.length(shared));
  for (std::size_t run = 0; run < runs.runs(); ++run)
    if (!sameTimes(runs, shared, run)) ++resampled;
}

void CommonGrid::takeEvenSteps()
{
  std::vector<std::size_t> lengths;
  TimeSpan whole = {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    lengths.push_back(runs.length(run));
    whole.from = std::min(whole.from, runs.first(run));
    whole.to = std::max(whole.to, runs.last(run));
  }
  TimeSpan span = commonSpan(runs);
  if (!(span.from < span.to)) span = whole;
  std::nth_element(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2),
                   lengths.end());
  std::size_t const count = std::clamp(lengths[lengths.size() / 2], std::size_t(2), mostEvenSteps);
  for (std::size_t i = 0; i < count; ++i) {
    double const share = static_cast<double>(i) / static_cast<double>(count - 1);
    double const time = i + 1 == count ? span.to : span.from + share * (span.to - span.from);
    if (grid.empty() || time > grid.back()) grid.push_back(time);
  }
  resampled = runs.runs();
}

void CommonGrid::countCut()
{
  before.farthest = grid.front();
  behind.farthest = grid.back();
  for (std::size_t run = 0; run < runs.runs(); ++run) {
    double const* const times = runs.of(run);
    std::size_t const count = runs.length(run);
    std::size_t begin = 0;
    while (begin < count && times[begin] < grid.front() && !equalButForRounding(times[begin], grid.front()))
      ++begin;
    std::size_t end = count;
    while (end > begin && times[end - 1] > grid.back() && !equalButForRounding(times[end - 1], grid.back()))
      --end;
    before.runs += begin > 0 ? 1 : 0;
    before.samples += begin;
    before.farthest = std::min(before.farthest, times[0]);
    behind.runs += end < count ? 1 : 0;
    behind.samples += count - end;
    behind.farthest = std::max(behind.farthest, times[count - 1]);
    runsBeginningLate += times[0] > grid.front() && !equalButForRounding(times[0], grid.front()) ? 1 : 0;
  }
}

void CommonGrid::place(std::size_t run, double const* samples, double* target) const
{
  if (gridKind == Kind::Same)
    std::copy_n(samples, grid.size(), target);
  else if (gridKind == Kind::Gaps)
    placeExactly(run, samples, target);
  else
    interpolate(run, samples, target);
}

void CommonGrid::placeExactly(std::size_t run, double const* samples, double* target) const
{
  std::fill_n(target, grid.size(), std::numeric_limits<double>::quiet_NaN());
  double const* const times = runs.of(run);
  std::size_t at = 0;
  for (std::size_t i = 0; i < runs.length(run); ++i) {
    while (at + 1 < grid.size() && grid[at] < times[i] &&
           (grid[at + 1] <= times[i] || !sameTime(grid, at, times[i])))
      ++at;
    target[at] = samples[i]; // of two times that are one on the grid the last counts
  }
}

void CommonGrid::interpolate(std::size_t run, double const* samples, double* target) const
{
  double const* const times = runs.of(run);
  std::size_t const count = runs.length(run);
  std::size_t right = 0; // first sample at the grid time or behind it
  for (std::size_t i = 0; i < grid.size(); ++i) {
    double const time = grid[i];
    while (right < count && times[right] < time && !equalButForRounding(times[right], time)) ++right;
    if (right < count && equalButForRounding(times[right], time)) {
      target[i] = samples[right];
    } else if (right == 0 || right == count) {
      target[i] = std::numeric_limits<double>::quiet_NaN();
    } else {
      double const share = (time - times[right - 1]) / (times[right] - times[right - 1]);
      target[i] = samples[right - 1] + share * (samples[right] - samples[right - 1]);
    }
  }
}

} // namespace runsieve
