#include "app/cli/Commands.h"

#include "app/cli/ComparedSets.h"
#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <stdexcept>

namespace runsieve::app {

namespace {

void printTable(GatedScan const& gated, ComparedSets const& sets, Comparison const& ranked)
{
  printSets(std::cout, gated, sets);
  printRankTable(std::cout, ranked.parameters, ranked.method.adjustment);
  std::cout << '\n';
  printMethod(std::cout, ranked.method, ranked.family, ranked.permutations, ranked.noiseFloor,
              ranked.isSettled);
  printWarnings(std::cout, ranked.warnings);
}

void printJson(GatedScan const& gated, ComparedSets const& sets, Comparison const& ranked)
{
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = sets.notComplete();
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
  ComparedSets const sets = comparedSets(gated, "rank", arguments.file);
  Comparison const ranked = compareParameters(gated.scan(), sets.passing, sets.eligible, gated.method);
  if (ranked.leftOut.size() == gated.scan().parameters.size())
    throw std::runtime_error(
        arguments.file +
        (sets.eligible.count() < 2 ? ": fewer than two runs are complete" : ": no parameter varies") +
        ", so there is nothing to rank");

  if (arguments.format != "table") printNotes(gated);
  if (arguments.format == "json")
    printJson(gated, sets, ranked);
  else if (arguments.format == "csv")
    printRankCsv(std::cout, ranked);
  else
    printTable(gated, sets, ranked);
  return 0;
}

} // namespace runsieve::app
