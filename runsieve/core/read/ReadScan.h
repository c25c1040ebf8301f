#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>

namespace runsieve {

/// Reads a scan from a file, whatever its name: its content tells what it is. Options of a file
/// "NAME.import.json" beside it (ImportFile.h) fill in what `options` leaves open.
///
/// What the reader had to guess, dropped, put in order or computed stands in the report. The file must not
/// change meanwhile. Reads of different files may run in several threads. \throw ScanError naming file, line
/// and column, with advice, for what cannot be read; nothing is then kept. \throw ReadCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ScanFile readScan(std::string const& path,
                                                     ReadOptions const& options = {});

} // namespace runsieve
