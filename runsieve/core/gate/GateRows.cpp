#include <runsieve/core/gate/GateRows.h>

#include <algorithm>
#include <cstddef>

namespace runsieve {

namespace {

/// Grid positions at which any of the gates is a condition, ascending.
std::vector<std::size_t> timesOf(std::vector<ResolvedGate> const& gates, std::size_t gridSize)
{
  std::vector<bool> marks(gridSize, false);
  for (ResolvedGate const& gate : gates)
    for (std::size_t t = gate.first; gate.hasTimes() && t <= gate.last; ++t) marks[t] = true;
  std::vector<std::size_t> times;
  for (std::size_t t = 0; t < gridSize; ++t)
    if (marks[t]) times.push_back(t);
  if (times.empty()) times.push_back(0);
  return times;
}

} // namespace

std::vector<long long> rowsToSelect(RunSet const& runs, std::vector<ResolvedGate> const& gates,
                                    Scan const& scan)
{
  std::vector<std::size_t> const times = timesOf(gates, scan.times.size());
  std::vector<long long> rows;
  rows.reserve(runs.count() * times.size());
  for (std::size_t run : runs.members())
    for (std::size_t t : times) rows.push_back(static_cast<long long>(run * scan.times.size() + t));
  return rows;
}

} // namespace runsieve
