#include "app/gate/GateRows.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace runsieve::app {

namespace {

/// One condition on the value of one column.
struct Condition
{
  double const* column;
  double low;
  double high;

  bool holds(std::size_t row) const { return column[row] >= low && column[row] <= high; }
};

/// What must hold at one position within a run.
struct Place
{
  std::size_t time = 0;
  std::vector<Condition> conditions;
  bool reached = false; ///< whether any run fulfils the conditions

  bool holds(std::size_t row) const
  {
    return std::all_of(conditions.begin(), conditions.end(),
                       [&](Condition const& c) { return c.holds(row); });
  }
};

std::vector<Place> placesOf(std::vector<ResolvedGate> const& gates, LinePlotTable const& scan)
{
  std::map<std::size_t, std::vector<Condition>> byTime;
  for (auto const& gate : gates)
    for (std::size_t time : gate.times)
      byTime[time].push_back({scan.columnData[gate.column], gate.low, gate.high});
  std::vector<Place> places;
  places.reserve(byTime.size());
  for (auto& [time, conditions] : byTime) places.push_back({time, std::move(conditions), false});
  return places;
}

} // namespace

std::vector<long long> rowsOfGate(ResolvedGate const& gate, LinePlotTable const& scan)
{
  Condition const condition{scan.columnData[gate.column], gate.low, gate.high};
  std::vector<long long> rows;
  for (std::size_t start = 0; start < scan.rows(); start += scan.trajectoryLength)
    for (std::size_t time : gate.times)
      if (condition.holds(start + time)) rows.push_back(static_cast<long long>(start + time));
  return rows;
}

std::vector<long long> runsThroughGates(std::vector<ResolvedGate> const& gates, LinePlotTable const& scan)
{
  std::vector<Place> const places = placesOf(gates, scan);
  std::vector<long long> runs;
  for (std::size_t run = 0; run < scan.trajectoryCount; ++run)
    if (std::all_of(places.begin(), places.end(), [&](Place const& place) {
          return place.holds(run * scan.trajectoryLength + place.time);
        }))
      runs.push_back(static_cast<long long>(run));
  return runs;
}

std::vector<long long> rowsOfGates(std::vector<ResolvedGate> const& gates, LinePlotTable const& scan)
{
  std::vector<Place> places = placesOf(gates, scan);
  std::vector<long long> rows;
  for (std::size_t start = 0; start < scan.rows(); start += scan.trajectoryLength) {
    for (Place& place : places) {
      if (!place.holds(start + place.time)) continue;
      place.reached = true;
      rows.push_back(static_cast<long long>(start + place.time));
    }
  }
  // A place that no run reaches would not count as a condition; then no run may survive.
  if (!std::all_of(places.begin(), places.end(), [](Place const& place) { return place.reached; }))
    rows.clear();
  return rows;
}

} // namespace runsieve::app
