#pragma once

#include <runsieve/core/read/CellTable.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// Which rows of a table belong to which run, in the order of time. Of consecutive rows of a run with equal
/// times the last counts: simulators write the state before an event and the one after it.
struct RunRows
{
  std::vector<std::string> keys;   ///< one per run
  std::vector<std::size_t> starts; ///< first position of each run, and the number of positions at the end
  std::vector<std::size_t> order;  ///< row of each position; empty: rows stand in their places already
  bool sortedRuns = false;         ///< whether runs were put in the order of their numbers
  bool joinedRuns = false;         ///< whether rows of a run stood apart
  bool sortedTimes = false;        ///< whether rows of a run were put in the order of time
  std::size_t repeatedRows = 0;    ///< rows that do not count since the next one has their time

  [[nodiscard]] std::size_t runs() const { return keys.size(); }
  [[nodiscard]] std::size_t rows() const { return starts.back(); }
  [[nodiscard]] std::size_t row(std::size_t position) const
  {
    return order.empty() ? position : order[position];
  }
};

/// Groups rows by the cells of a column. \throw ScanError for a run that has a time again later, or half of
/// whose rows repeat the time before
[[nodiscard]] RunRows runsByColumn(CellTable const& table, std::size_t run, std::size_t time);

/// Whether so many consecutive rows have equal times that they are rows of several runs.
[[nodiscard]] bool repeatsTimes(CellTable const& table, std::size_t time);

/// Runs of a table in the order of time, each time with one row of every run: the rows of a run are known by
/// what they have in some columns. \param keys taken from these \return nothing if the table is none such
[[nodiscard]] std::optional<RunRows> runsByPosition(CellTable const& table, std::size_t time,
                                                    std::vector<std::size_t> const& keys);

/// Runs as they begin at blank lines or where time restarts, numbered from 0. An equal time is a restart only
/// where times are repeated everywhere.
[[nodiscard]] RunRows runsByRestart(CellTable const& table, std::size_t time);

/// Whether runsByColumn() would find runs without a fault.
[[nodiscard]] bool tellsRunsApart(CellTable const& table, std::size_t run, std::size_t time);

/// Among some columns that keep their cell within each run the first that counts the runs: from 0 or 1, or by
/// texts that are all different.
[[nodiscard]] std::optional<std::size_t> findRunCounter(CellTable const& table, RunRows const& runs,
                                                        std::vector<std::size_t> const& columns);

/// How the cells of a column differ from the first of their run.
struct ColumnChanges
{
  std::size_t runs = 0;        ///< with a cell that differs
  std::size_t first = 0;       ///< position of the first such cell; without any the number of positions
  bool rounding = false;       ///< whether cells differ that count as equal: by a relative 1e-9 or less
  bool inFirstRowOnly = false; ///< whether only the first rows of runs have a value, which counts for all
};
[[nodiscard]] ColumnChanges changesWithinRuns(CellTable const& table, RunRows const& runs,
                                              std::size_t column);

} // namespace runsieve
