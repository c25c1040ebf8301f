#pragma once

#include <runsieve/core/compare/Comparison.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// A number for people. \param missing stands for NaN: there may be no other runs to compare with
[[nodiscard]] std::string formatted(double value, char const* format, char const* missing);

/// The parameters as a table of aligned columns; significant ones have a star.
void printRankTable(std::ostream& out, std::vector<ParameterComparison> const& ranked);

} // namespace runsieve::app
