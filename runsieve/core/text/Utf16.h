#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// Whether bytes begin with the byte order mark of UTF-16.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isUtf16(std::string_view bytes);

/// UTF-8 of a text that isUtf16(), without the mark. What is no valid UTF-16 becomes U+FFFD.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string fromUtf16(std::string_view bytes);

} // namespace runsieve
