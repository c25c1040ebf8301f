#pragma once

#include "app/gate/ResolvedGate.h"
#include "app/store/StoredPlot.h"

#include <streambuf>
#include <string>
#include <vector>

namespace runsieve::app {

/// A scan, or a stored plot, from a file with its gates, as the commands without a window use it.
struct SievedScan
{
  StoredPlot stored;
  boost::shared_ptr<LinePlotTable> scan; ///< that of the stored plot
  std::vector<ResolvedGate> gates;

  /// \throw ScanError, GateError
  SievedScan(std::string const& file, ReadOptions const& read, std::vector<std::string> const& gateTexts);

  /// Whether there is something to sieve by: gates, or the selection of a stored plot.
  [[nodiscard]] bool sieves() const { return !gates.empty() || !stored.selectedRows.empty(); }

  /// Shows the scan in a plot whose item is in a scene and selects the rows of the gates, just as drags
  /// would; without gates those of the stored plot. Returns how many runs pass.
  std::size_t applyTo(PlotContainer& plot, ViewOptions const& options) const;

  /// What was snapped to the time grid, a line per gate concerned.
  [[nodiscard]] std::vector<std::string> notes() const;
};

/// While it lives, what the library prints to standard output is dropped: a command's own output must stay
/// readable for programs.
class QuietLibrary
{
public:
  QuietLibrary();
  ~QuietLibrary();
  QuietLibrary(QuietLibrary const&) = delete;
  QuietLibrary& operator=(QuietLibrary const&) = delete;

private:
  std::streambuf* former;
};

} // namespace runsieve::app
