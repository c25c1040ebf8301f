#include "app/cli/ComparedSets.h"

#include "app/cli/GateReport.h"

#include <ostream>
#include <stdexcept>

namespace runsieve::app {

ComparedSets comparedSets(GatedScan const& gated, char const* command, std::string const& file)
{
  if (!gated.sieves())
    throw UsageError(std::string(command) +
                     ": there is nothing to sieve by: neither gates nor the selection of a stored plot; "
                     "--gate is required");
  if (gated.passed.runs.count() == 0) failWithoutRuns(gated, file);
  ComparedSets sets{gated.passed.runs, gated.eligible()};
  sets.passing &= sets.eligible;
  if (sets.passing.count() == 0)
    throw std::runtime_error(file + ": no run that passes is complete; a gate \"status complete, short, "
                                    "failed\" compares all");
  return sets;
}

void printSets(std::ostream& out, GatedScan const& gated, ComparedSets const& sets)
{
  printGates(out, gated);
  out << passingText(gated) << '\n';
  if (std::size_t const left = sets.notComplete(); left > 0)
    out << left << (left == 1 ? " run is" : " runs are")
        << " not complete and not compared (a gate on the status compares them too)\n";
  out << '\n';
}

} // namespace runsieve::app
