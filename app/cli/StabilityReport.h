#pragma once

#include <runsieve/core/compare/StabilityOfComparison.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <iosfwd>

namespace runsieve::app {

/// The parameters, the first of a comparison, whose curves over the number of runs are shown.
constexpr std::size_t mostCurves = 8;

/// What the columns of stability in the table of a comparison mean.
void printStabilityMethod(std::ostream& out, ComparisonStability const& stability);

/// Whether there are enough runs: |d| of the first parameters in parts of the runs as a table at most 100
/// wide, and the verdict.
void printEnoughRuns(std::ostream& out, Comparison const& comparison, ComparisonStability const& stability);

[[nodiscard]] nlohmann::ordered_json stabilityJson(ComparisonStability const& stability);
/// All sizes with all parameters.
[[nodiscard]] nlohmann::ordered_json enoughRunsJson(Comparison const& comparison,
                                                    ComparisonStability const& stability);

} // namespace runsieve::app
