#pragma once

#include "app/cli/GatedScan.h"

#include <nlohmann/json.hpp>

#include <iosfwd>
#include <string>

namespace runsieve::app {

/// A line per gate, with the runs that are left after it, and notes on how sieve file and data differ.
void printGates(std::ostream& out, GatedScan const& gated);

/// Gates with what was snapped, and the runs that are left after each.
[[nodiscard]] nlohmann::ordered_json gatesAsJson(GatedScan const& gated);

/// Says that no run passes, and after which gate none was left. \throw std::runtime_error always
[[noreturn]] void failWithoutRuns(GatedScan const& gated, std::string const& file);

} // namespace runsieve::app
