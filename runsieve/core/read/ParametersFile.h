#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>

namespace runsieve {

/// The table of parameters that options name: a path as it is, else beside the scan or in its folder, where
/// a table from the root that is not there any more is looked for by its name. As it is if there is none;
/// empty if options name none.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string givenParametersFile(std::string const& scan,
                                                                   ReadOptions const& options);

/// Options to be kept in a file, which others may read in any folder: their table of parameters is named as
/// seen from the scan if it stands beside it or in its folder, so that it may be moved along, and otherwise
/// from the root.
[[nodiscard]] RUNSIEVE_CORE_EXPORT ReadOptions keptOptions(std::string const& scan, ReadOptions options);

/// Options that were kept: their table by its path from the root, if it is found, and first beside the scan.
[[nodiscard]] RUNSIEVE_CORE_EXPORT ReadOptions foundOptions(std::string const& scan, ReadOptions options);

} // namespace runsieve
