#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <iosfwd>
#include <string>

namespace runsieve::app {

/// Writes a scan as comma-separated text with the library's column names, each number in the fewest digits
/// that read back to the same value. The file appears under its name only when it is complete: a save that
/// fails or is interrupted leaves a former file as it was. A path that is no regular file (a pipe,
/// /dev/stdout) is written to directly. \throw ScanError if the file cannot be made or the disk is full.
void writeScan(LinePlotTable const& scan, std::string const& path);
/// The same to a stream. \throw ScanError if the stream fails.
void writeScan(LinePlotTable const& scan, std::ostream& stream);

} // namespace runsieve::app
