#pragma once

#include "app/scan/OpenScan.h"
#include "app/store/ScanNotes.h"
#include "app/view/ScanPlot.h"

#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/records/CoordinateWindow.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// A scan as it was looked at: what is on show, which rows are selected, where the user has zoomed to.
struct StoredPlot
{
  boost::shared_ptr<LinePlotTable> scan;
  ViewOptions view;
  std::vector<long long> selectedRows; ///< ascending
  CoordinateWindow window;             ///< of the runs' chart, if valid
  std::vector<Gate> gates;             ///< that selected the rows; none if they were marked with the mouse
  GateJoin join = GateJoin::All;
  ScanNotes notes; ///< what the scan has besides
};

/// Writes a line of JSON with the settings, then the library's binary dump of the scan with the selection as
/// its last column. The file appears under its name only when it is complete. \throw ScanError if it cannot
/// be written, or the dump would exceed 2 GiB
void writePlot(StoredPlot const& plot, std::string const& path);

/// \throw ScanError for any file that is not a complete plot
[[nodiscard]] StoredPlot readPlot(std::string const& path);

/// Shows a plot as it was left, in a container whose item is in a scene.
void showPlot(PlotContainer& plot, StoredPlot const& stored);

/// The state of a container that shows a scan by showScan().
[[nodiscard]] StoredPlot storedPlot(PlotContainer const& plot, boost::shared_ptr<LinePlotTable> scan);

} // namespace runsieve::app
