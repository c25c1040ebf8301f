#pragma once

#include "app/cli/GatedScan.h"

#include <nlohmann/json.hpp>

#include <cstddef>
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

/// The runs that a command compares.
struct RunsToCompare
{
  RunSet passing; ///< all of them eligible
  RunSet eligible;

  [[nodiscard]] std::size_t notComplete() const { return eligible.runs() - eligible.count(); }
};

/// \throw UsageError without anything to sieve by, std::runtime_error if no run passes, or none that is
/// eligible
[[nodiscard]] RunsToCompare runsToCompare(GatedScan const& gated, std::string const& command,
                                          std::string const& file);

/// Says that there is no parameter to compare the eligible runs by. \param therefore "there is nothing to
/// rank" \throw std::runtime_error always
[[noreturn]] void failWithoutParameters(std::string const& file, RunSet const& eligible,
                                        std::string const& therefore);

/// Gates and number of passing runs, as the title of a picture.
[[nodiscard]] std::string pictureTitle(GatedScan const& gated);

} // namespace runsieve::app
