#pragma once

#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace runsieve {

/// What a gate writes before the name of a parameter that an output has as well.
inline constexpr std::string_view parameterPrefix = "Parameter: ";

/// The name by which a gate finds a parameter again beside all outputs.
[[nodiscard]] std::string nameOfParameter(Scan const& scan, std::size_t parameter);

} // namespace runsieve
