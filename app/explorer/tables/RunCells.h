#pragma once

#include "app/explorer/document/State.h"
#include "app/explorer/tables/RunFeature.h"

#include <runsieve/core/scan/Scan.h>

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace runsieve::app {

/// A column of the table of runs.
struct RunColumn
{
  enum class Kind
  {
    Key,
    Status,
    Passes,
    Cluster, ///< of the sets that are clusters
    Sets,
    Parameter,
    Feature
  };

  Kind kind;
  std::size_t position = 0; ///< of the parameter or the output
  RunFeature feature = RunFeature::Last;
  std::string name; ///< in a file: "run", "k1", "max(A)"
  QString title;    ///< for people
  QString hint;
  bool isNumber = false;

  friend bool operator==(RunColumn const& a, RunColumn const& b)
  {
    return a.kind == b.kind && a.position == b.position && a.feature == b.feature;
  }
};

/// What the cells of the table of runs say, computed when asked for. A copy is cheap beside the scan and may
/// go to another thread.
struct RunCells
{
  std::shared_ptr<Scan const> scan;
  RunSet passing;
  std::vector<NamedSet> sets;
  std::vector<RunColumn> columns;

  /// Asked now and then; true gives up.
  using Cancelled = std::function<bool()>;

  /// \param exact all digits, or as many as people read
  [[nodiscard]] std::string text(std::size_t run, std::size_t column, bool exact) const;
  /// Of a column of numbers; NaN if there is none.
  [[nodiscard]] double number(std::size_t run, std::size_t column) const;

  /// All runs in the order of a column, for equal cells in that of the scan. Runs without a value are last in
  /// both orders. Keys and texts are ordered as people number things: run_2 before run_10. Unfinished if
  /// cancelled.
  [[nodiscard]] std::vector<std::size_t> sorted(std::size_t column, bool rising,
                                                Cancelled const& cancelled = {}) const;
  /// Lines of comma-separated text, the first one of names; numbers with all digits, as the select command
  /// writes them. Unfinished if cancelled.
  [[nodiscard]] std::string csv(std::vector<std::size_t> const& runs,
                                std::vector<std::size_t> const& ofColumns,
                                Cancelled const& cancelled = {}) const;
  /// The same for people, with tabs between columns.
  [[nodiscard]] std::string tabbed(std::vector<std::size_t> const& runs,
                                   std::vector<std::size_t> const& ofColumns,
                                   Cancelled const& cancelled = {}) const;

private:
  [[nodiscard]] std::vector<double> ranks(std::size_t column) const;
};

/// The columns for a scan: those of its parameters, and features of some outputs.
[[nodiscard]] std::vector<RunColumn> runColumns(Scan const& scan, std::vector<std::size_t> const& outputs,
                                                bool withClusters);

} // namespace runsieve::app
