#include "app/cli/Commands.h"

#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"

#include <runsieve/core/write/RowWriter.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <stdexcept>

namespace runsieve::app {

namespace {

/// All digits; nothing for NaN.
std::string exact(double value)
{
  return formatted(value, "%.17g", "");
}

void printTable(GatedScan const& gated, Comparison const& ranked, std::size_t leftOut)
{
  printGates(std::cout, gated);
  std::cout << passingText(gated) << '\n';
  if (leftOut > 0)
    std::cout << leftOut << (leftOut == 1 ? " run is" : " runs are")
              << " not complete and not compared (a gate on the status compares them too)\n";
  for (LeftOutParameter const& parameter : ranked.leftOut)
    if (parameter.reason == "is text")
      std::cout << "parameter " << parameter.name << " is text and not compared\n";
  std::cout << '\n';
  printRankTable(std::cout, ranked.parameters);
}

void printCsv(std::vector<ParameterComparison> const& ranked)
{
  std::cout << "parameter,p,d,median_passing,median_others,significant\n";
  for (ParameterComparison const& r : ranked)
    std::cout << quotedField(r.name) << ',' << exact(r.p) << ',' << exact(r.d) << ','
              << exact(r.medianPassing) << ',' << exact(r.medianOthers) << ','
              << (r.significant ? "true" : "false") << '\n';
}

void printJson(GatedScan const& gated, Comparison const& ranked, std::size_t leftOut)
{
  nlohmann::ordered_json report;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = leftOut;
  report["gates"] = gatesAsJson(gated);
  report["parameters"] = nlohmann::json::array();
  for (ParameterComparison const& r : ranked.parameters)
    report["parameters"].push_back({{"name", r.name},
                                    {"p", r.p},
                                    {"d", r.d},
                                    {"median_passing", r.medianPassing},
                                    {"median_others", r.medianOthers},
                                    {"significant", r.significant}});
  std::cout << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

} // namespace

int runRank(RankArguments const& arguments)
{
  checkOutputs("rank", arguments, {});
  GatedScan const gated = openGated(arguments);
  if (!gated.sieves())
    throw UsageError("rank: there is nothing to sieve by: neither gates nor the selection of a stored plot; "
                     "--gate is required");
  RunSet const eligible = gated.eligible();
  RunSet compared(gated.passed.runs);
  compared &= eligible;
  Comparison const ranked = compareParameters(gated.scan(), compared, gated.thresholds, eligible);
  if (gated.passed.runs.count() == 0) failWithoutRuns(gated, arguments.file);
  if (compared.count() == 0)
    throw std::runtime_error(arguments.file +
                             ": no run that passes is complete; a gate \"status complete, short, "
                             "failed\" compares all");
  if (ranked.leftOut.size() == gated.scan().parameters.size())
    throw std::runtime_error(
        arguments.file +
        (eligible.count() < 2 ? ": fewer than two runs are complete" : ": no parameter varies") +
        ", so there is nothing to rank");

  std::size_t const leftOut = eligible.complement().count();
  if (arguments.format != "table") printNotes(gated);
  if (arguments.format == "json")
    printJson(gated, ranked, leftOut);
  else if (arguments.format == "csv")
    printCsv(ranked.parameters);
  else
    printTable(gated, ranked, leftOut);
  return 0;
}

} // namespace runsieve::app
