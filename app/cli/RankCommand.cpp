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
  printNotCompared(std::cout, notComplete);
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
  report["left_out"] = leftOutJson(ranked.leftOut);
  report["warnings"] = warningsJson(ranked.warnings);
  std::cout << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

} // namespace

int runRank(RankArguments const& arguments)
{
  checkOutputs("rank", arguments, {});
  GatedScan const gated = openGated(arguments);
  if (!gated.sieves()) failWithoutGates("rank");
  RunSet const eligible = gated.eligible();
  RunSet compared(gated.passed.runs);
  compared &= eligible;
  Comparison const ranked = compareParameters(gated.scan(), compared, eligible, gated.method);
  if (gated.passed.runs.count() == 0) failWithoutRuns(gated, arguments.file);
  if (compared.count() == 0) failWithoutCompleteRuns(arguments.file);
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
