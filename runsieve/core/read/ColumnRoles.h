#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/scan/Scan.h>

#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// What a column of a scan file is.
enum class Role
{
  Free, ///< an output or a parameter: the values will tell
  Time,
  Run,
  Output,
  Parameter,
  Status, ///< whether the run went well
  Ignored
};

struct ColumnRole
{
  Role role = Role::Free;
  ColumnLabel label; ///< name in the scan
  std::string why;
};

/// What names and options tell of the columns of a table, one each; the rest stays Free.
///
/// There is at most one Time and one Run. Columns named like a run, but only likely, stay Free.
/// \throw ScanError if a column that an option names is missing, or several could be the time or the run
[[nodiscard]] std::vector<ColumnRole> rolesByName(CellTable const& table, ReadOptions const& options);

/// The column of a role; nothing if there is none.
[[nodiscard]] std::optional<std::size_t> columnOf(std::vector<ColumnRole> const& roles, Role role);

/// "time", "run", "output", ... as the report of a reader names them.
[[nodiscard]] std::string roleName(Role role);

} // namespace runsieve
