#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// Adds the parameters of a table with a row per run, or a column per run, to a scan. Rows are joined with
/// runs by a key, never by their order; keys that are numbers are compared as such. A file of lines "NAME
/// VALUE" can take the place of the table if there is a single run.
///
/// \param found whether the file was found by its name, which is told; such a file is passed over if it
/// has no key and no row for each run
/// \throw ScanError without a key, for a key that stands twice, for a value that contradicts one of the scan
void joinParameterTable(ScanFile& target, std::string const& file, ReadOptions const& options, bool found);

/// Adds columns of a table to a scan as parameters. What the scan has already must be the same.
/// \param rowOfRun one per run; nothing for a run that the table does not know
/// \param columns those to be added \param source for messages \throw ScanError
void joinColumns(ScanFile& target, CellTable const& table,
                 std::vector<std::optional<std::size_t>> const& rowOfRun,
                 std::vector<std::size_t> const& columns, std::string const& source);

} // namespace runsieve
