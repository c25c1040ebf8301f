#pragma once

#include <runsieve/core/scan/Scan.h>

#include <optional>
#include <string>
#include <string_view>

namespace runsieve {

/// Kinds of columns as Runsieve's own files name them: "Molecule: A", ": Time [s]", "Parameter: k1".
enum class NamedKind
{
  Free,      ///< an untyped name
  Output,    ///< "Molecule: " and the like
  Parameter, ///< "Parameter: "
  Unnamed    ///< ": "; time and run
};

struct NamedColumn
{
  NamedKind kind = NamedKind::Free;
  ColumnLabel label;
};

/// Divides a header into kind, type and name. Brackets are part of a name, never a unit.
[[nodiscard]] NamedColumn describeColumn(std::string const& header);

/// "time (min)", "Time [min]", "t", "time_min": name and unit of a time; nothing for other names.
[[nodiscard]] std::optional<ColumnLabel> timeLabel(std::string_view header);

/// ": clock [h]": name and unit of a time that has a name of its own, as written scans have it; nothing for
/// other headers and ": Run Index".
[[nodiscard]] std::optional<ColumnLabel> ownTimeLabel(std::string_view header);

/// How surely a name is that of the column that tells runs apart.
enum class RunName
{
  No,
  Likely, ///< "sample", "replicate", "id", "iteration": the values must fit
  Surely  ///< "run", "simulation id", "trajectory"
};
[[nodiscard]] RunName runName(std::string_view header);

/// Whether a name is that of a column that tells whether a run went well: "status", "success", "ok".
[[nodiscard]] bool isStatusName(std::string_view header);

/// Whether a column of such a name, with every row's number in it, counts the rows: "index", "X", "Unnamed:
/// 0".
[[nodiscard]] bool isRowNumberName(std::string_view header);

/// Small letters; blanks, '_', '-', '.' and '#' left out.
[[nodiscard]] std::string plainName(std::string_view name);

} // namespace runsieve
