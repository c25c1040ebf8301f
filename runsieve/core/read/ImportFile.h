#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>

namespace runsieve {

/// The file beside a scan that says how to read it: "scan.csv.import.json", or "scan.import.json". Empty if
/// there is none.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string importFileOf(std::string const& scan);

/// Fills in what is not set yet from a file of options; what is set stays. \throw ScanError for a file that
/// is no JSON object, or has a member that is unknown or of a wrong type
[[nodiscard]] RUNSIEVE_CORE_EXPORT ReadOptions withImportFile(std::string const& importFile,
                                                              ReadOptions options);

} // namespace runsieve
