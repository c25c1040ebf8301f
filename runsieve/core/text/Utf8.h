#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace runsieve {

/// Appends a character by its Unicode number; U+FFFD for a number that is none.
RUNSIEVE_CORE_EXPORT void appendUtf8(std::string& text, std::uint32_t character);

/// The text if it is UTF-8; otherwise each of its bytes is taken for a character of Latin-1.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string asUtf8(std::string_view bytes);

} // namespace runsieve
