#pragma once

#include "app/cli/GatedScan.h"

#include <nlohmann/json.hpp>

#include <iosfwd>

namespace runsieve::app {

/// A line per gate, with the runs that are left after it, and notes on how sieve file and data differ.
void printGates(std::ostream& out, GatedScan const& gated);

/// Gates with what was snapped, and the runs that are left after each.
[[nodiscard]] nlohmann::ordered_json gatesAsJson(GatedScan const& gated);

} // namespace runsieve::app
