#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace runsieve {

/// Text of others for a terminal: control characters, which could move the cursor or change colours, as
/// "\x1b".
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string printable(std::string_view text);

/// Columns that UTF-8 text takes on a terminal: one per character (wide ones of East Asia take two, and count
/// as one here).
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::size_t shownWidth(std::string_view text);

/// UTF-8 text of at most so many characters: a longer one without its middle, for which "…" stands, since
/// long names differ at their ends. \param most at least 1
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string shortened(std::string const& text, std::size_t most);

} // namespace runsieve
