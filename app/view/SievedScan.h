#pragma once

#include "app/cli/GatedScan.h"
#include "app/store/StoredPlot.h"

#include <string>

namespace runsieve::app {

/// The scan of a stored plot, and the runs that its selection lets through.
[[nodiscard]] OpenedScan openedOf(StoredPlot const& stored);

/// A scan, or a stored plot, from a file with its gates, as the commands that draw without a window use it.
struct SievedScan
{
  GatedScan gated;
  StoredPlot stored; ///< its scan, with the rows that show the passing runs

  /// \throw ScanError, GateError
  explicit SievedScan(SieveArguments const& arguments);

  /// Shows the scan in a plot whose item is in a scene and selects rows so that the passing runs survive,
  /// just as drags would.
  void applyTo(PlotContainer& plot, ViewOptions const& options) const;
};

} // namespace runsieve::app
