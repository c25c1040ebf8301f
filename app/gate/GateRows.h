#pragma once

#include "app/gate/ResolvedGate.h"

#include <vector>

namespace runsieve::app {

/// The rows at the gate's times whose value lies in its range, ascending: what a rectangle dragged in the
/// chart of that output selects. NaN lies in no range.
[[nodiscard]] std::vector<long long> rowsOfGate(ResolvedGate const& gate, LinePlotTable const& scan);

/// The runs that pass all gates, ascending, counted from 0 by their position. A run passes a gate if its
/// value lies in the range at every one of the gate's times.
[[nodiscard]] std::vector<long long> runsThroughGates(std::vector<ResolvedGate> const& gates,
                                                      LinePlotTable const& scan);

/// One row selection, ascending, that lets exactly runsThroughGates() survive the library's selection.
///
/// The library keeps a run if, at every time at which any row is selected, a row of that run is selected. It
/// sees rows, not outputs: two gates on different outputs at one time, selected one after the other, would be
/// joined by "or". So here a row is selected if it satisfies all gates that hold its time. A run that passes
/// at some times only shows as "reduced" in the plots, as after dragging. One gate gives rowsOfGate().
///
/// A time of a gate at which no row is selected would be no condition for the library at all. The gates then
/// let no run through, and the result is empty; so it is without gates.
[[nodiscard]] std::vector<long long> rowsOfGates(std::vector<ResolvedGate> const& gates,
                                                 LinePlotTable const& scan);

} // namespace runsieve::app
