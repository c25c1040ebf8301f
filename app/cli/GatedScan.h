#pragma once

#include "app/cli/Commands.h"
#include "app/scan/OpenScan.h"

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/gate/GateRuns.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// A scan with the gates of a command.
struct GatedScan
{
  OpenedScan opened;
  std::vector<Gate> gates; ///< of the sieve file, then of the command
  GateJoin join = GateJoin::All;
  GateResult passed;              ///< all runs without gates, or those that a stored plot has selected
  std::string file;               ///< that the scan was read from
  ReadOptions read;               ///< how it was read
  ComparisonMethod method;        ///< of the command, the sieve file, or the defaults
  std::vector<std::string> notes; ///< what was snapped to the time grid, and how data and sieve file differ

  /// Whether there is something to sieve by: gates, or the selection of a stored plot.
  [[nodiscard]] bool sieves() const { return !gates.empty() || opened.selected.has_value(); }
  [[nodiscard]] Scan const& scan() const { return opened.scan; }
  /// The runs that take part in comparisons.
  [[nodiscard]] RunSet eligible() const { return eligibleOf(scan()); }
  /// The same of a scan of a part of the runs.
  [[nodiscard]] RunSet eligibleOf(Scan const& part) const;
};

/// The runs that take part in comparisons of those that pass gates: those that are complete, and all if a
/// gate asks for the status.
[[nodiscard]] RunSet eligibleRuns(Scan const& scan, std::vector<Gate> const& gates);

/// Reads file, sieve and gates of a command and applies them. \throw ScanError, GateError, or UsageError for
/// a method that cannot be followed, or a sieve file to write that would have no gates
[[nodiscard]] GatedScan openGated(SieveArguments const& arguments);

/// The same on a scan that is open already.
[[nodiscard]] GatedScan gated(OpenedScan opened, SieveArguments const& arguments);

/// Writes the sieve file that a command asks for, if it does: to be called when its work is done, so that a
/// command that fails leaves none. \throw ScanError
void saveSieve(GatedScan const& gated, SieveArguments const& arguments);

/// Writes a sieve file of gates on the scan, with the method of the command. \param passed what they leave of
/// it \throw ScanError
void saveSieve(GatedScan const& gated, std::vector<Gate> const& gates, GateJoin join,
               GateResult const& passed, std::string const& path);

/// "38 of 101 runs pass".
[[nodiscard]] std::string passingText(GatedScan const& gated);

/// The notes on standard error, a line each.
void printNotes(GatedScan const& gated);

/// The names of all outputs in quotes, for messages; of many the first.
[[nodiscard]] std::string outputNames(Scan const& scan);

/// What gates on clusters need.
[[nodiscard]] GateContext gateContext();

} // namespace runsieve::app
