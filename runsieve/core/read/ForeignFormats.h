#pragma once

#include <string>
#include <string_view>

namespace runsieve {

/// What a file is that Runsieve does not read but users have at hand, and how to get a scan out of it: "an
/// Excel workbook; save the sheet as CSV". Empty if its first bytes are not known.
[[nodiscard]] std::string foreignFormat(std::string_view bytes);

} // namespace runsieve
