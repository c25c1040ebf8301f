#include "app/view/LiveView.h"

#include "app/view/ScanPlot.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace runsieve::app {

namespace {

constexpr auto patience = std::chrono::milliseconds(8); ///< of one call, so that a hover doesn't stutter

/// The grid times inside a rectangle; nothing if there are none.
std::optional<ResolvedGate> gateOf(DragRectangle const& rectangle, std::size_t output, Scan const& scan)
{
  auto const first = std::lower_bound(scan.times.begin(), scan.times.end(), rectangle.left);
  auto const end = std::upper_bound(scan.times.begin(), scan.times.end(), rectangle.right);
  if (first >= end) return std::nullopt;
  ResolvedGate gate;
  gate.gate.kind = GateKind::Inside;
  gate.gate.column = scan.outputs[output].label.name;
  gate.gate.range = {rectangle.bottom, rectangle.top};
  gate.range = gate.gate.range;
  gate.column = output;
  gate.first = static_cast<std::size_t>(first - scan.times.begin());
  gate.last = static_cast<std::size_t>(end - scan.times.begin()) - 1;
  gate.gate.span = GateSpan{scan.times[gate.first], scan.times[gate.last]};
  return gate;
}

} // namespace

bool LiveView::prepare(std::size_t output)
{
  auto const start = std::chrono::steady_clock::now();
  LiveWork work;
  work.interrupted = [start] { return std::chrono::steady_clock::now() - start > patience; };
  return sieve.prepare(output, work);
}

void LiveView::begin(PlotContainer const& plot)
{
  selected = hasSelection(plot) ? selectedRows(plot) : std::vector<long long>();
  timesInUse.assign(runs.times.size(), 0);
  for (long long const row : selected) timesInUse[static_cast<std::size_t>(row) % runs.times.size()] = 1;
}

bool LiveView::isNewPlace(ResolvedGate const& gate) const
{
  auto const begin = timesInUse.begin();
  return std::none_of(begin + static_cast<std::ptrdiff_t>(gate.first),
                      begin + static_cast<std::ptrdiff_t>(gate.last) + 1,
                      [](unsigned char used) { return used != 0; });
}

std::vector<long long> LiveView::rowsIn(ResolvedGate const& gate) const
{
  std::vector<long long> rows;
  auto const times = runs.times.size();
  ScanOutput const& output = runs.outputs[gate.column];
  for (std::size_t run = 0; run < runs.runs.size(); ++run)
    for (std::size_t time = gate.first; time <= gate.last; ++time) {
      double const value = output.values[run * times + time];
      if (value >= gate.range.low && value <= gate.range.high)
        rows.push_back(static_cast<long long>(run * times + time));
    }
  return rows;
}

std::size_t LiveView::show(RunSet const& set)
{
  std::size_t const count = sieve.setFixed(set);
  passing = sieve.mask();
  return count;
}

std::vector<long long> LiveView::joined(std::vector<long long> const& rows,
                                        Qt::KeyboardModifiers modifiers) const
{
  std::vector<long long> result;
  auto const join = [&](auto const& algorithm) {
    algorithm(selected.begin(), selected.end(), rows.begin(), rows.end(), std::back_inserter(result));
    return result;
  };
  bool const adds = modifiers.testFlag(Qt::ControlModifier);
  bool const takes = modifiers.testFlag(Qt::ShiftModifier);
  if (adds && takes) return join([](auto... range) { std::set_symmetric_difference(range...); });
  if (adds) return join([](auto... range) { std::set_union(range...); });
  if (takes) return join([](auto... range) { std::set_difference(range...); });
  return rows;
}

std::optional<std::size_t> LiveView::moveFast(ResolvedGate const& gate, Qt::KeyboardModifiers modifiers)
{
  bool const joins = modifiers.testFlag(Qt::ControlModifier) && !selected.empty();
  if (modifiers.testFlag(Qt::ShiftModifier) || (joins && !isNewPlace(gate))) return std::nullopt;
  sieve.setFixed(joins ? runsThrough(selected, runs.runs.size(), runs.times.size())
                       : RunSet(runs.runs.size()).complement());
  std::size_t const left = *sieve.update(gate);
  if (left == 0) return std::nullopt;
  passing = sieve.mask();
  return left;
}

std::size_t LiveView::move(DragRectangle const& rectangle, std::size_t output)
{
  std::optional<ResolvedGate> const gate = gateOf(rectangle, output, runs);
  if (gate)
    if (auto const left = moveFast(*gate, rectangle.modifiers)) return *left;
  // A time at which no run lies in the rectangle asks for nothing, and rows of one time are alternatives.
  std::vector<long long> const rows = gate ? rowsIn(*gate) : std::vector<long long>();
  return show(runsThrough(joined(rows, rectangle.modifiers), runs.runs.size(), runs.times.size()));
}

std::vector<LiveDistance> LiveView::distances()
{
  return *sieve.distances();
}

} // namespace runsieve::app
