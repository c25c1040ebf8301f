#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <boost/shared_ptr.hpp>

#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// How to read a scan file. The defaults find everything out by themselves.
struct ReadOptions
{
  /// Header name of the time column. Empty: ": Time [s]" or another time name of the library's form; else a
  /// column named, ignoring case, "time" or "t", with or without a unit: "time [s]", "time (s)", "time_s".
  std::string timeColumn;
  /// Header name of the run column. Empty: ": Run Index", or a column named, ignoring case, blanks, '_' and
  /// '-', "run", "run index", "run id", "run number", "simulation", "simulation id", "sim", "sim id",
  /// "trajectory" or "trajectory id". Without any a new run starts where time does not rise.
  std::string runColumn;
  /// Header names of the parameter columns; other untyped columns are then outputs. Not set: an untyped
  /// column whose value is constant within every run is a parameter, every other one an output.
  std::optional<std::vector<std::string>> parameterColumns;
  /// Threads that parse; 0: as many as the machine has, at most 4.
  unsigned threads = 0;
};

/// Reads a scan: delimited text (comma, semicolon or tab), a header line, then one line per time point, runs
/// stacked one below the other on one common time grid.
///
/// Columns may stand in any order; the record has them as the library wants them: outputs, time, "Run Index",
/// parameters, each kind in the order of the file. Names in the library's form ("Molecule: A", ": Time [s]",
/// "Parameter: k1") say what a column is; columns of free names are told apart by ReadOptions and become type
/// Molecule, Unnamed or Parameter. Without a run column the record gets one that counts runs from 0.
/// parameterBounds are the smallest and largest value of each parameter column, NaN aside, so the library
/// does not plot a parameter that never varies.
///
/// Times rise strictly within a run; run numbers are whole and ascend. Both must be finite, while outputs and
/// parameters may be nan or inf. Numbers are C decimals, rounded correctly; blanks, a leading '+' and quotes
/// around a number are accepted. Not read: the flag columns that a saved plot holds besides the scan, and a
/// first column without a name (row names, as some programs write them). The file must not change meanwhile.
/// \throw ScanError naming file, line and column, for any file that is not such a scan; nothing is then kept.
[[nodiscard]] boost::shared_ptr<LinePlotTable> readScan(std::string const& path,
                                                        ReadOptions const& options = {});

} // namespace runsieve::app
