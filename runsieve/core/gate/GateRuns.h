#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace runsieve {

/// What gates need beside the scan.
struct GateContext
{
  /// Groups the runs of an output by their shape and returns the cluster of each run. Without it gates on
  /// clusters throw GateError.
  std::function<std::vector<int>(Scan const& scan, std::size_t output, ClusterMode mode, int clusters)>
      clusters;
};

/// How several gates are joined.
enum class GateJoin : std::uint8_t
{
  All, ///< a run must pass all of them
  Any  ///< a run must pass one of them
};

/// A gate on a scan and what it leaves.
struct AppliedGate
{
  ResolvedGate gate;     ///< with the note of what was moved
  std::size_t alone = 0; ///< runs that pass this gate
  std::size_t left = 0;  ///< runs that pass this gate and those before it, joined
};

/// What gates leave of a scan.
struct GateResult
{
  RunSet runs; ///< that pass
  std::vector<AppliedGate> gates;

  /// The gates as rowsToSelect() takes them.
  [[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<ResolvedGate> resolved() const;
};

/// The runs that pass a gate that was resolved on this scan.
///
/// Missing samples (NaN): a run with one in the span does not pass `in`. `ever` leaves them out. `never`
/// passes a run of which no sample that is there lies in the range, also one without any sample. max, min,
/// mean, last and the times of extremes are those of the samples that are there; a run without any sample in
/// the span passes none of them. A missing value of a parameter lies in no range and is no text. Infinite
/// samples are samples; a mean that is not a number passes no range. A line for `crosses` stands between two
/// finite samples; beside others the samples count alone.
///
/// `not` gives exactly the other runs, whatever is missing.
///
/// Linear in the samples of the span. \throw GateError for a gate on clusters if the context has none or they
/// don't fit the scan
[[nodiscard]] RUNSIEVE_CORE_EXPORT RunSet runsThrough(ResolvedGate const& gate, Scan const& scan,
                                                      GateContext const& context = {});

/// Resolves and applies gates one after the other. Without gates all runs pass. \throw GateError
[[nodiscard]] RUNSIEVE_CORE_EXPORT GateResult applyGates(std::vector<Gate> const& gates, Scan const& scan,
                                                         GateJoin join = GateJoin::All,
                                                         GateContext const& context = {});

} // namespace runsieve
