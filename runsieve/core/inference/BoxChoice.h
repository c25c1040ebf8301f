#pragma once

#include <runsieve/core/inference/BoxPath.h>

#include <cstddef>
#include <optional>

namespace runsieve {

/// Which box of a path is meant, and what is done with it then.
struct BoxRule
{
  /// Least coverage, in [0, 1]. If nothing, the box is that of the largest harmonic mean of coverage and
  /// density, the knee of their trade-off.
  std::optional<double> leastCoverage;
  bool paste = true; ///< whether it is pasted() then
  /// If given, only significantLimits() up to this quasi-p-value stay in the end.
  std::optional<double> largestQuasiP;
};

/// The step of a path that is chosen: of the boxes that reach a coverage that of highest density, or by
/// default that of the largest harmonic mean of coverage and density, 2 c d / (c + d) (van Rijsbergen,
/// Information Retrieval, 1979). Of equal ones the largest box. The first step if no run passes.
/// \throw std::invalid_argument if the coverage is not in 0 to 1, or if the path has no steps
[[nodiscard]] std::size_t chosenStep(BoxPath const& path, std::optional<double> leastCoverage = {});

/// The box of a path that a rule says. \return nothing if asked to stop
/// \throw std::invalid_argument as chosenStep() and pasted()
[[nodiscard]] std::optional<Box> chosenBox(BoxTable const& table, BoxSample const& sample,
                                           BoxPath const& path, PeelOptions const& options,
                                           BoxRule const& rule, StopAsked const& stopAsked = {});

} // namespace runsieve
