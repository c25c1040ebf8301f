#include "app/gate/ResolvedGate.h"

#include "app/scan/ColumnName.h"
#include "app/scan/ScanLayout.h"
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// The time points that all runs share.
struct TimeGrid
{
  double const* times;
  std::size_t size;

  // Typed decimals meet grid times that were computed: 0.3 and 0.30000000000000004 are the same time.
  double tolerance() const
  {
    return size > 1 ? 1e-9 * (times[size - 1] - times[0]) / static_cast<double>(size) : 0.0;
  }

  std::size_t nearest(double time) const
  {
    std::size_t best = 0;
    for (std::size_t i = 1; i < size; ++i)
      if (std::abs(times[i] - time) < std::abs(times[best] - time)) best = i;
    return best;
  }

  std::vector<std::size_t> inside(double first, double last) const
  {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < size; ++i)
      if (times[i] >= first - tolerance() && times[i] <= last + tolerance()) found.push_back(i);
    return found;
  }
};

// The names for a message; a wide scan shows the first ones.
std::string listed(std::vector<std::string> const& names)
{
  constexpr std::size_t most = 20;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
    text += (i > 0 ? ", " : "") + quoted(names[i]);
  if (names.size() > most) text += " and " + std::to_string(names.size() - most) + " more";
  return text;
}

void checkRanges(Gate const& gate)
{
  if (!(gate.low <= gate.high))
    throw GateError("gate " + quoted(formatGate(gate)) + ": the value range is empty, since " +
                    decimal(gate.low) + " lies above " + decimal(gate.high));
  if (!(gate.timeFirst <= gate.timeLast))
    throw GateError("gate " + quoted(formatGate(gate)) + ": the time span is empty, since " +
                    decimal(gate.timeFirst) + " lies behind " + decimal(gate.timeLast));
}

std::string span(double first, double last)
{
  return first == last ? decimal(first) : decimal(first) + ".." + decimal(last);
}

} // namespace

std::size_t outputColumn(std::string const& wanted, LinePlotTable const& scan)
{
  std::vector<std::size_t> bare;
  std::vector<std::string> all;
  for (std::size_t column : scanLayout(scan).outputs) {
    std::string const name = columnName(scan.columnNames[column]);
    if (name == wanted) return column;
    if (scan.columnNames[column].second == wanted) bare.push_back(column);
    all.push_back(name);
  }
  if (bare.size() == 1) return bare.front();
  if (bare.empty())
    throw GateError("the scan has no output " + quoted(wanted) + "; there are " + listed(all));
  std::vector<std::string> candidates;
  candidates.reserve(bare.size());
  for (std::size_t column : bare) candidates.push_back(columnName(scan.columnNames[column]));
  throw GateError("the output " + quoted(wanted) + " could be " + listed(candidates) +
                  "; give the full name");
}

std::string ResolvedGate::text() const
{
  return output + " @ " + span(timeFirst, timeLast) + " in " + decimal(low) + ".." + decimal(high);
}

ResolvedGate resolveGate(Gate const& gate, LinePlotTable const& scan)
{
  checkRanges(gate);
  ResolvedGate resolved;
  resolved.column = outputColumn(gate.output, scan);
  resolved.output = columnName(scan.columnNames[resolved.column]);
  resolved.low = gate.low;
  resolved.high = gate.high;

  TimeGrid const grid{scan.columnData[scanLayout(scan).time],
                      static_cast<std::size_t>(scan.trajectoryLength)};
  if (grid.size == 0) throw GateError("the scan has no times");
  resolved.times = grid.inside(gate.timeFirst, gate.timeLast);
  if (resolved.times.empty())
    resolved.times.push_back(grid.nearest(gate.timeFirst + 0.5 * (gate.timeLast - gate.timeFirst)));
  resolved.timeFirst = grid.times[resolved.times.front()];
  resolved.timeLast = grid.times[resolved.times.back()];
  bool const moved = std::abs(resolved.timeFirst - gate.timeFirst) > grid.tolerance() ||
                     std::abs(resolved.timeLast - gate.timeLast) > grid.tolerance();
  if (moved)
    resolved.note =
        "time " + span(gate.timeFirst, gate.timeLast) + " -> " + span(resolved.timeFirst, resolved.timeLast);
  return resolved;
}

} // namespace runsieve::app
