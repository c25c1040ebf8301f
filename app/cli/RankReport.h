#pragma once

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/compare/StabilityOfComparison.h>

#include <nlohmann/json.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// A number for people. \param missing stands for NaN: there may be no other runs to compare with
[[nodiscard]] std::string formatted(double value, char const* format, char const* missing);

/// "5 %", "0.25 %": up to three digits.
[[nodiscard]] std::string percentText(double share);

/// A p-value for people, of two digits: "0.031", "2.9e-25", "< 1e-300". \param isBelow whether it is a bound
[[nodiscard]] std::string pText(double p, bool isBelow = false);

/// The fewest digits that read back to the same number; nothing for NaN.
[[nodiscard]] std::string exact(double value);
/// Null for NaN; "inf" and "-inf", as JSON has no infinite numbers.
[[nodiscard]] nlohmann::ordered_json numberJson(double value);

/// The parameters as a table of aligned columns, at most 100 wide for names of at most 45; significant ones
/// have a star. \param stability of these parameters, or null: then its columns are left out
void printRankTable(std::ostream& out, std::vector<ParameterComparison> const& ranked, Adjustment adjustment,
                    std::vector<SureDistance> const* stability = nullptr);

/// Text in a field of a table; longer ones stand out of it.
void printField(std::ostream& out, std::string const& text, std::size_t width, bool left = false);

/// That runs took no part in a comparison; nothing for none.
void printNotCompared(std::ostream& out, std::size_t notComplete);

/// How the p-values of a table were found and what its noise floor is.
void printMethod(std::ostream& out, ComparisonMethod const& method, std::size_t tests,
                 std::size_t permutations, double noiseFloor, bool isSettled);

/// A line per warning, with what to do about it.
void printWarnings(std::ostream& out, std::vector<ComparisonWarning> const& warnings);
[[nodiscard]] nlohmann::ordered_json warningsJson(std::vector<ComparisonWarning> const& warnings);

[[nodiscard]] nlohmann::ordered_json leftOutJson(std::vector<LeftOutParameter> const& leftOut);

/// The method with what came of it, for JSON.
[[nodiscard]] nlohmann::ordered_json methodJson(ComparisonMethod const& method, std::size_t family,
                                                std::size_t permutations, double noiseFloor, bool isSettled);

/// All columns of a comparison with all digits. \param sure null: null in those columns
[[nodiscard]] nlohmann::ordered_json comparisonJson(ParameterComparison const& comparison,
                                                    Adjustment adjustment, SureDistance const* sure);

/// The header and the rows of a comparison as CSV, with the method in each row. \param stability null: its
/// columns, the last ones, are left out
void printRankCsv(std::ostream& out, Comparison const& comparison,
                  ComparisonStability const* stability = nullptr);

} // namespace runsieve::app
