#pragma once

#include "app/cli/GatedScan.h"

#include <runsieve/core/scan/RunSet.h>

#include <cstddef>
#include <iosfwd>
#include <string>

namespace runsieve::app {

/// What a command compares: the runs that pass with the other ones that take part.
struct ComparedSets
{
  RunSet passing; ///< and take part
  RunSet eligible;

  [[nodiscard]] std::size_t notComplete() const { return eligible.complement().count(); }
};

/// \throw UsageError if there is nothing to sieve by \throw std::runtime_error if no run passes that takes
/// part
[[nodiscard]] ComparedSets comparedSets(GatedScan const& gated, char const* command, std::string const& file);

/// Gates, and how many runs pass and are not compared, above a table.
void printSets(std::ostream& out, GatedScan const& gated, ComparedSets const& sets);

} // namespace runsieve::app
