#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <vector>

namespace runsieve {

/// Reads a scan from a file, whatever its name: its content tells what it is. Options of a file
/// "NAME.import.json" beside it (ImportFile.h) fill in what `options` leaves open.
///
/// A folder with a text file per run, or a tree of such folders, is one scan: its runs are named by what
/// differs between the paths of the files. Parameters of the runs may stand in a table in the folder or
/// beside the file
/// ("parameters.csv"), which is joined by the keys of the runs, or in a list in the folder of each run
/// ("parameters.txt" with lines NAME VALUE).
///
/// What the reader had to guess, dropped, put in order or computed stands in the report. The file must not
/// change meanwhile. Reads of different files may run in several threads. \throw ScanError naming file, line
/// and column, with advice, for what cannot be read; nothing is then kept. \throw ReadCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ScanFile readScan(std::string const& path,
                                                     ReadOptions const& options = {});

/// The files from which readScan() reads a scan: the file or folder itself, those in the folder, the file of
/// options beside it, and tables of its parameters. Nobody who works with the scan should write over one.
/// What cannot be looked up, such as a folder that is gone, is left out.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::string> filesOfScan(std::string const& path,
                                                                        ReadOptions const& options = {});

} // namespace runsieve
