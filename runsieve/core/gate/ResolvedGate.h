#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// What the samples of a run are taken from.
enum class GateTarget : std::uint8_t
{
  Output,
  Parameter,
  Run ///< its status or its key
};

/// A gate on the columns and the time grid of one scan.
struct RUNSIEVE_CORE_EXPORT ResolvedGate
{
  Gate gate;                              ///< as it is applied: the full name, times of the grid
  GateTarget target = GateTarget::Output; ///< what column counts
  std::size_t column = 0;                 ///< position of the output or the parameter
  std::size_t first = 0;                  ///< grid positions of the span, both included; only if hasTimes()
  std::size_t last = 0;
  double firstShare = 0.0;    ///< of Crosses: where the line begins between first and the next time, 0 to 1
  double lastShare = 1.0;     ///< of Crosses: where it ends between the time before last and last, 0 to 1
  GateRange range;            ///< as compared; that of a time is wider by the rounding of computed times
  std::vector<double> wanted; ///< of Is: values of the parameter as the scan keeps them, ascending
  std::vector<std::size_t> runs; ///< of Runs: their positions
  std::string note;              ///< what was moved to the grid, "time 10.03 -> 10"; empty if nothing was

  /// Whether it is a condition at some times.
  [[nodiscard]] bool hasTimes() const
  {
    return target == GateTarget::Output && gate.kind != GateKind::Cluster;
  }

  /// The gate as it is applied: "Molecule: A @ 10 in 2..5".
  [[nodiscard]] std::string text() const;
};

/// Finds the gate's column, grid times, values and runs.
///
/// Names: a gate with a span, and of a kind that looks at samples, means an output. Without a span, `in`
/// means an output or a parameter; \throw GateError if both have the name. "Parameter: k1" always means a
/// parameter.
///
/// Times must lie within those of the scan. A single time, and a span without a grid time inside, move to the
/// nearest grid time (of two equally near ones the earlier); a span takes all grid times inside it. The line
/// of Crosses needs no samples at its ends, so its span does not move. Times are equal to those of the grid
/// if they differ by 1e-9 of its mean step: typed decimals meet times that were computed.
///
/// \throw GateError for a name, text or key that the scan does not have, naming those there are; for times
/// outside of the scan; and for reversed or missing numbers
[[nodiscard]] RUNSIEVE_CORE_EXPORT ResolvedGate resolveGate(Gate const& gate, Scan const& scan);

} // namespace runsieve
