#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

namespace runsieve {

// Tables that are not laid out with a row per run and time. Each of these functions gives a table back as it
// is unless it has the layout; else it turns it into a table with a row per run and time, and says so.

/// A row per run, time and output: id, time, variable, value.
[[nodiscard]] CellTable unmelted(CellTable table, ReadOptions const& options, ReadReport& report);

/// A row per run, and a column per time: "S@0", "S@10", "S_t10", or times as names of columns.
[[nodiscard]] CellTable unrolledTimes(CellTable table, ReadOptions const& options, ReadReport& report);

/// A column per run beside one of time: "run 1", "run 2", "A run 1", or numbers as names of columns.
[[nodiscard]] CellTable unrolledRuns(CellTable table, ReadOptions const& options, ReadReport& report);

/// A row per run, without any time: the ends of simulations. The first column is a parameter, the others are
/// outputs, unless options name these. \param certain whether the table is known to be of that kind; if it is
/// not, the outputs must be named
[[nodiscard]] CellTable withoutTime(CellTable table, ReadOptions const& options, bool certain,
                                    ReadReport& report);

} // namespace runsieve
