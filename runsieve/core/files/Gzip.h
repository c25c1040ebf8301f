#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// Whether bytes begin as a gzip file does (RFC 1952).
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isGzip(std::string_view bytes);

/// The content of a gzip file, all its members one after the other. Zero bytes behind the last one, with
/// which some programs fill blocks, are no fault. \param file its name, for messages \throw ScanError if the
/// bytes are damaged or end too early, or their content is too large for the memory or
///        for 16 GiB
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string inflated(std::string const& file, std::string_view bytes);

} // namespace runsieve
