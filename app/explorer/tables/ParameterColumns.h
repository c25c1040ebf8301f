#pragma once

#include <runsieve/core/compare/Comparison.h>

#include <QString>

#include <vector>

namespace runsieve::app {

/// A column of the table of parameters. docs/statistics.md defines the numbers.
struct ParameterColumn
{
  char const* title;
  char const* hint; ///< what it says, a sentence
  /// As the table of the rank command shows it.
  QString (*text)(ParameterComparison const&, Adjustment);
  /// What it is ordered by; null: by its text.
  double (*number)(ParameterComparison const&, Adjustment);
};

/// All of them: the name first, then d.
[[nodiscard]] std::vector<ParameterColumn> const& parameterColumns();

/// Of the column that follows a gate while it is moved.
inline constexpr int distanceColumn = 1;

} // namespace runsieve::app
