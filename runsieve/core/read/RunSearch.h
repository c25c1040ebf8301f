#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ColumnRoles.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/read/RunRows.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve {

/// The time and the runs of a table with a row per run and time.
struct TableRuns
{
  std::vector<ColumnRole>
      roles;            ///< one per column; time and run are found, outputs and parameters may be Free
  std::size_t time = 0; ///< the column of it
  RunRows rows;
  std::optional<std::size_t> namedRun; ///< the column of runs if its name or an option tells it
};

/// Finds the runs by a column that tells them apart, at blank lines, or where time restarts.
/// \throw ScanError without a time column, for times that are no numbers, for a run that has a time twice
[[nodiscard]] TableRuns findRuns(CellTable const& table, ReadOptions const& options,
                                 std::vector<Finding>& findings);

} // namespace runsieve
