#include "app/cli/Commands.h"

#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <stdexcept>

namespace runsieve::app {

namespace {

void printTable(GatedScan const& gated, Comparison const& ranked, std::size_t notComplete)
{
  printGates(std::cout, gated);
  std::cout << passingText(gated) << '\n';
  if (notComplete > 0)
    std::cout << notComplete << (notComplete == 1 ? " run is" : " runs are")
              << " not complete and not compared (a gate on the status compares them too)\n";
  std::cout << '\n';
  printRankTable(std::cout, ranked.parameters, ranked.method.adjustment);
  std::cout << '\n';
  printMethod(std::cout, ranked.method, ranked.family, ranked.permutations, ranked.noiseFloor,
              ranked.isSettled);
  printWarnings(std::cout, ranked.warnings);
}

void printJson(GatedScan const& gated, Comparison const& ranked, std::size_t notComplete)
{
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = notComplete;
  report["gates"] = gatesAsJson(gated);
  report["method"] =
      methodJson(ranked.method, ranked.family, ranked.permutations, ranked.noiseFloor, ranked.isSettled);
  report["parameters"] = nlohmann::json::array();
  for (ParameterComparison const& r : ranked.parameters)
    report["parameters"].push_back(comparisonJson(r, ranked.method.adjustment));
  report["left_out"] = nlohmann::json::array();
  for (LeftOutParameter const& left : ranked.leftOut)
    report["left_out"].push_back({{"name", left.name}, {"reason", left.reason}});
  report["warnings"] = warningsJson(ranked.warnings);
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
  Comparison const ranked = compareParameters(gated.scan(), compared, eligible, gated.method);
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
    printRankCsv(std::cout, ranked);
  else
    printTable(gated, ranked, leftOut);
  return 0;
}

} // namespace runsieve::app
