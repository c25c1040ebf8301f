#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <optional>
#include <string>
#include <string_view>

namespace runsieve {

/// Reads a field as a number: a C decimal, nan or inf in any case, also with blanks around it, a leading '+'
/// or in double quotes. Nothing for any other text and for a number too large for a double; one too small
/// becomes a zero or a denormal number.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::optional<double> parseNumber(std::string_view field);

/// The field for use in a message: quoted, cut to a readable length, control characters as \xNN.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string quoted(std::string_view field);

/// Why a field is not a number, in words: `expected a number, found "abc"`.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string numberFault(std::string_view field);

/// The text without blanks and tabs at both ends.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string_view trimmed(std::string_view text);

} // namespace runsieve
