#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// A scan from a file of any kind.
struct OpenedScan
{
  Scan scan;
  ReadReport report;
  std::optional<RunSet>
      selected; ///< of a stored plot: the runs that its selection lets through, if it has one
  std::optional<Thresholds> thresholds; ///< of a stored plot
  std::vector<Gate> gates;              ///< of a stored plot: those that selected the runs, if gates did
  GateJoin join = GateJoin::All;        ///< of these gates
  std::size_t output = 0;               ///< of a stored plot the one on show, else the first
};

/// How every stored plot begins.
inline constexpr char storedPlotMagic[] = "{\"format\":\"runsieve plot\"";

/// Whether a file begins as a stored plot does. False for a file that cannot be read.
[[nodiscard]] bool isStoredPlot(std::string const& path);

/// Reads a scan, or the scan of a stored plot. On a terminal the progress of a long reading is shown. \throw
/// ScanError
[[nodiscard]] OpenedScan openScan(std::string const& path, ReadOptions const& options = {});

} // namespace runsieve::app
