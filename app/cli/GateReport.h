#pragma once

#include "app/cli/GatedScan.h"

#include <nlohmann/json.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace runsieve::app {

/// A line per gate, with the runs that are left after it, and notes on how sieve file and data differ.
void printGates(std::ostream& out, GatedScan const& gated);

/// Gates that sieve nothing: those that every run passes, or none.
[[nodiscard]] std::vector<ComparisonWarning> gateWarnings(GatedScan const& gated);

/// Gates with what was snapped, and the runs that are left after each.
[[nodiscard]] nlohmann::ordered_json gatesAsJson(GatedScan const& gated);

/// Says that no run passes, and after which gate none was left. \throw std::runtime_error always
[[noreturn]] void failWithoutRuns(GatedScan const& gated, std::string const& file);

/// Says that there is nothing to sieve by. \throw UsageError always
[[noreturn]] void failWithoutGates(std::string const& command);

/// Says that all runs that pass are left out of the comparison. \throw std::runtime_error always
[[noreturn]] void failWithoutCompleteRuns(std::string const& file);

/// Gates and number of passing runs, as the title of a picture.
[[nodiscard]] std::string pictureTitle(GatedScan const& gated);

} // namespace runsieve::app
