#pragma once

#include "app/gate/Gate.h"

#include <runsieve/records/LinePlotTable.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::app {

/// A gate on the columns and the time grid of one scan.
struct ResolvedGate
{
  std::size_t column = 0;         ///< of the output in the record
  std::string output;             ///< its full name
  std::vector<std::size_t> times; ///< positions within a run, ascending, never empty
  double low = 0.0;               ///< both ends belong to the range
  double high = 0.0;
  double timeFirst = 0.0; ///< grid time of times.front()
  double timeLast = 0.0;  ///< grid time of times.back()
  std::string note;       ///< what was snapped to the grid, "time 10.03 -> 10"; empty if nothing was

  /// The gate as it is applied: "Molecule: A @ 10 in 2..5".
  [[nodiscard]] std::string text() const;
};

/// The column of an output given by its full name, or by its bare name if that is unique. \throw GateError
/// for an unknown or ambiguous one, naming those there are
[[nodiscard]] std::size_t outputColumn(std::string const& name, LinePlotTable const& scan);

/// Finds the gate's column and grid times. A single time, and a span without a grid time inside, move to the
/// nearest grid time (of two equally near ones the earlier); a span takes all grid times inside it. \throw
/// GateError for an unknown or ambiguous output, naming those there are, and for a reversed range or span.
[[nodiscard]] ResolvedGate resolveGate(Gate const& gate, LinePlotTable const& scan);

} // namespace runsieve::app
