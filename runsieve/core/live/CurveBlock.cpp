#include <runsieve/core/live/CurveBlock.h>

#include <algorithm>
#include <cstring>

namespace runsieve {

namespace {

constexpr std::size_t GROUP = 8; ///< times

/// From one time to the next in a group. A line of cache more than the runs: at distances of powers of two
/// all times would share the same few places of the cache.
constexpr std::size_t STRIDE = CurveBlock::mostRuns + 8;

constexpr std::size_t LOWEST = GROUP * STRIDE;
constexpr std::size_t HIGHEST = LOWEST + STRIDE;

void lower(double* lowest, double const* values, std::size_t runs)
{
  for (std::size_t run = 0; run < runs; ++run)
    lowest[run] = values[run] < lowest[run] ? values[run] : lowest[run];
}

/// Takes NaN over and keeps it: a run with a missing value is then below no limit.
void raise(double* highest, double const* values, std::size_t runs)
{
  for (std::size_t run = 0; run < runs; ++run) {
    double const value = values[run];
    highest[run] = (value > highest[run]) | (value != value) ? value : highest[run];
  }
}

/// Marks the runs of which both values lie in the range, and leaves the others.
void mark(double const* lowest, double const* highest, ValueRange range, std::size_t runs,
          std::uint8_t* __restrict__ marks)
{
  // A choice, not a sum of conditions: compilers then compare several runs at once.
  for (std::size_t run = 0; run < runs; ++run)
    marks[run] = (lowest[run] >= range.low) & (highest[run] <= range.high) ? 1 : marks[run];
}

} // namespace

CurveBlock::CurveBlock(double const* values, std::size_t runs, std::size_t times)
    : curves(values), runs(runs), times(times), groups((times + GROUP - 1) / GROUP)
{}

std::size_t CurveBlock::timesOf(std::size_t group) const
{
  return std::min(GROUP, times - group * GROUP);
}

double const* CurveBlock::columnOf(std::size_t time) const
{
  return groups[time / GROUP].get() + time % GROUP * STRIDE;
}

double const* CurveBlock::lowestOf(std::size_t group) const
{
  return groups[group].get() + LOWEST;
}

double const* CurveBlock::highestOf(std::size_t group) const
{
  return groups[group].get() + HIGHEST;
}

void CurveBlock::layOut(std::size_t group)
{
  std::size_t const count = timesOf(group);
  double const* const from = curves + group * GROUP;
  std::unique_ptr<double[]> values(new double[HIGHEST + STRIDE]);
  constexpr std::size_t together = 8; // runs, whose values of a time fill a line of cache
  for (std::size_t first = 0; first < runs; first += together) {
    std::size_t const end = std::min(first + together, runs);
    for (std::size_t t = 0; t < count; ++t)
      for (std::size_t run = first; run < end; ++run) values[t * STRIDE + run] = from[run * times + t];
  }
  std::copy_n(values.get(), runs, values.get() + LOWEST);
  std::copy_n(values.get(), runs, values.get() + HIGHEST);
  for (std::size_t t = 1; t < count; ++t) {
    lower(values.get() + LOWEST, values.get() + t * STRIDE, runs);
    raise(values.get() + HIGHEST, values.get() + t * STRIDE, runs);
  }
  groups[group] = std::move(values);
}

void CurveBlock::prepare(GridSpan span)
{
  for (std::size_t group = span.first / GROUP; group <= span.last / GROUP; ++group)
    if (!groups[group]) layOut(group);
}

void CurveBlock::takeExtremes(double const* low, double const* high)
{
  if (lowest.empty()) {
    lowest.assign(low, low + runs);
    highest.assign(high, high + runs);
    return;
  }
  lower(lowest.data(), low, runs);
  raise(highest.data(), high, runs);
}

void CurveBlock::takeTimes(std::size_t first, std::size_t end)
{
  while (first < end) {
    std::size_t const group = first / GROUP;
    std::size_t const next = group * GROUP + timesOf(group);
    if (first % GROUP == 0 && next <= end) {
      takeExtremes(lowestOf(group), highestOf(group));
      first = next;
    } else {
      takeExtremes(columnOf(first), columnOf(first));
      ++first;
    }
  }
}

void CurveBlock::findExtremes(GridSpan span)
{
  prepare(span);
  bool const widens = !lowest.empty() && span.first <= known.first && span.last >= known.last;
  if (widens) {
    takeTimes(span.first, known.first);
    takeTimes(known.last + 1, span.last + 1);
  } else {
    lowest.clear();
    highest.clear();
    takeTimes(span.first, span.last + 1);
  }
  known = span;
}

void CurveBlock::inside(GridSpan span, ValueRange range, std::uint8_t* marks)
{
  findExtremes(span);
  std::memset(marks, 0, runs);
  mark(lowest.data(), highest.data(), range, runs, marks);
}

void CurveBlock::ever(GridSpan span, ValueRange range, std::uint8_t* marks)
{
  prepare(span);
  std::memset(marks, 0, runs);
  for (std::size_t time = span.first; time <= span.last; ++time) {
    double const* const values = columnOf(time);
    mark(values, values, range, runs, marks);
  }
}

} // namespace runsieve
