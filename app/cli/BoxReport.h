#pragma once

#include <runsieve/core/compare/BoxOfRuns.h>
#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/scan/Scan.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// Steps of a path to show, ascending: all if they are few, else the first, the chosen and the last one,
/// those before one more parameter is restricted, and others, spread over coverage and density.
/// \param most at least 3
[[nodiscard]] std::vector<std::size_t> shownSteps(BoxOfRuns const& box, std::size_t most);

/// Gates as words of a command in a shell: `--gate "k1 in 0.3..0.8" --gate "strain is WT"`.
[[nodiscard]] std::string gateWords(std::vector<Gate> const& gates);

/// The limits of a box, how good it is, and the path on which it was found; at most 100 columns wide, a list
/// of gates aside. Six digits are shown of limits: gates have all.
void printBox(std::ostream& out, Scan const& scan, BoxOfRuns const& box, std::vector<Gate> const& gates);

/// The path as CSV, a row for each step, with the method in each row.
void printBoxCsv(std::ostream& out, BoxOfRuns const& box);

/// The box with all its numbers, for JSON: members "method" to "left_out".
[[nodiscard]] nlohmann::ordered_json boxJson(BoxOfRuns const& box, std::vector<Gate> const& gates);

} // namespace runsieve::app
