#pragma once

#include <runsieve/core/compare/Pairs.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <iosfwd>
#include <string>

namespace runsieve::app {

/// The first pairs as a table of aligned columns, at most 100 wide; significant ones have a star.
void printPairTable(std::ostream& out, PairComparisons const& comparison, std::size_t top);

/// What the columns mean, how p was found, what the noise floor is, and what the test cannot find.
void printPairMethod(std::ostream& out, PairComparisons const& comparison);

/// The method with what came of it.
[[nodiscard]] nlohmann::ordered_json pairMethodJson(PairComparisons const& comparison);

/// All columns of a pair with all digits.
[[nodiscard]] nlohmann::ordered_json pairJson(ParameterPair const& pair);

/// All pairs as CSV, with the method in each row.
void printPairCsv(std::ostream& out, PairComparisons const& comparison);

/// "r = +0.43 (others -0.02), p = 0.002 *".
[[nodiscard]] std::string pairTitle(ParameterPair const& pair);

} // namespace runsieve::app
