#pragma once

#include <runsieve/core/read/Hdf5File.h>
#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// Reads data sets that are tables: rows x columns of numbers, with an attribute of texts that names the
/// columns, one of them the time. Several of equal columns are a run each, or more if a column tells the runs
/// apart; their attributes of single numbers are parameters.
/// \param dataSets that may be such tables \return nothing if none is, or if a single one is one run only,
/// which other rules cover \throw ScanError
[[nodiscard]] std::optional<ScanFile> scanOfTables(std::string const& file, Hdf5File const& hdf5,
                                                   std::vector<NamedArray> const& dataSets,
                                                   ReadOptions const& options);

} // namespace runsieve
