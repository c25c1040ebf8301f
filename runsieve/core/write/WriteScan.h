#pragma once

#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <iosfwd>
#include <string>

namespace runsieve {

/// Writes a scan as comma-separated text with Runsieve's own column names, each number in the fewest digits
/// that read back to the same value; reading it again gives the same scan, but for longer names (label) and
/// the units of outputs and parameters: a line of them would keep other programs from reading numbers. Values
/// that a run lacks are "nan"; a column "status" stands behind the others if some run has failed and its
/// values don't show it.
///
/// The file appears under its name only when it is complete: a save that fails or is interrupted leaves a
/// former file as it was. A path that is no regular file (a pipe, /dev/stdout) is written to directly.
/// \param runs null: all runs
/// \throw ScanError if the file cannot be made or the disk is full, or if a name or a text has a line end, or
/// a run has no name
RUNSIEVE_CORE_EXPORT void writeScan(Scan const& scan, std::string const& path, RunSet const* runs = nullptr);
/// The same to a stream. \throw ScanError likewise, and if the stream fails
RUNSIEVE_CORE_EXPORT void writeScan(Scan const& scan, std::ostream& stream, RunSet const* runs = nullptr);

/// The scan of some of the runs, with copies of their values; times and names stay.
[[nodiscard]] RUNSIEVE_CORE_EXPORT Scan subsetOf(Scan const& scan, RunSet const& runs);

} // namespace runsieve
