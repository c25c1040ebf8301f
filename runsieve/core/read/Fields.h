#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// How the fields of a line are divided and written.
struct FieldFormat
{
  char delimiter = ','; ///< ' ': any run of blanks and tabs
  char decimal = '.';
};

/// Divides a line into fields, which stay as they are written, quotes included. Delimiters within double
/// quotes divide nothing. \param most fields behind it are not looked for
[[nodiscard]] std::vector<std::string_view> splitFields(std::string_view line, char delimiter,
                                                        std::size_t most = std::size_t(-1));

/// How many fields splitFields() would find.
[[nodiscard]] std::size_t countFields(std::string_view line, char delimiter);

/// The text of a field: without blanks around it and without its double quotes; doubled quotes are one.
[[nodiscard]] std::string fieldText(std::string_view field);

/// A field as a number; blanks, a sign, double quotes around it, and the NaN and infinities that old C
/// libraries print ("1.#INF", "-1.#IND") are accepted. Nothing for any other text.
[[nodiscard]] std::optional<double> fieldNumber(std::string_view field, char decimal);

/// Whether a field means "no value" everywhere: empty, NA, N/A, None, null, in any case.
[[nodiscard]] bool isUsualMissing(std::string_view text);

/// The numbers among texts that mean "no value": -999 for "-999". NaN is none, as it means that anyway. A
/// point is a decimal sign whatever the file has: options are written the same way for all files.
[[nodiscard]] std::vector<double> missingNumbers(std::vector<std::string> const& missing, char decimal);

/// Text of a file in UTF-8: what is no UTF-8 is taken as Latin-1. \param converted set if it was
[[nodiscard]] std::string toUtf8(std::string_view text, bool& converted);

} // namespace runsieve
