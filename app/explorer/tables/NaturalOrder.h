#pragma once

#include <string_view>

namespace runsieve::app {

/// Whether a text stands before another one if groups of digits in them count as whole numbers: run_2 before
/// run_10. Texts that differ in leading zeros only keep a fixed order.
[[nodiscard]] bool standsBefore(std::string_view a, std::string_view b);

} // namespace runsieve::app
