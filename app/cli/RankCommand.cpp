#include "app/cli/Commands.h"

#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"
#include "app/cli/StabilityReport.h"
#include "app/desk/Desk.h"

#include <runsieve/core/text/ShownText.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <optional>
#include <stdexcept>

namespace runsieve::app {

namespace {

/// What a rank command found out.
struct Ranking
{
  GatedScan const& gated;
  Comparison compared;
  std::optional<ComparisonStability> stability;
  std::size_t notComplete = 0; ///< runs that are not compared
};

void printTable(Ranking const& ranking)
{
  Comparison const& compared = ranking.compared;
  printGates(std::cout, ranking.gated);
  std::cout << passingText(ranking.gated) << '\n';
  printNotCompared(std::cout, ranking.notComplete);
  std::cout << '\n';
  printRankTable(std::cout, compared.parameters, compared.method.adjustment,
                 ranking.stability ? &ranking.stability->parameters : nullptr);
  std::cout << '\n';
  printMethod(std::cout, compared.method, compared.family, compared.permutations, compared.noiseFloor,
              compared.isSettled);
  if (ranking.stability) printStabilityMethod(std::cout, *ranking.stability);
  printWarnings(std::cout, compared.warnings);
  if (!ranking.stability) return;
  std::cout << '\n';
  printEnoughRuns(std::cout, compared, *ranking.stability);
}

void printJson(Ranking const& ranking)
{
  GatedScan const& gated = ranking.gated;
  Comparison const& compared = ranking.compared;
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = ranking.notComplete;
  report["gates"] = gatesAsJson(gated);
  report["method"] = methodJson(compared.method, compared.family, compared.permutations, compared.noiseFloor,
                                compared.isSettled);
  report["stability"] = ranking.stability ? stabilityJson(*ranking.stability) : nlohmann::ordered_json();
  report["parameters"] = nlohmann::json::array();
  for (std::size_t i = 0; i < compared.parameters.size(); ++i)
    report["parameters"].push_back(
        comparisonJson(compared.parameters[i], compared.method.adjustment,
                       ranking.stability ? &ranking.stability->parameters[i] : nullptr));
  report["left_out"] = leftOutJson(compared.leftOut);
  report["warnings"] = warningsJson(compared.warnings);
  report["enough_runs"] =
      ranking.stability ? enoughRunsJson(compared, *ranking.stability) : nlohmann::ordered_json();
  std::cout << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

/// The verdict has no place among the rows.
void printCsv(Ranking const& ranking)
{
  printRankCsv(std::cout, ranking.compared, ranking.stability ? &*ranking.stability : nullptr);
  if (ranking.stability)
    std::cerr << "runsieve: enough runs? " << printable(ranking.stability->verdictText) << '\n';
}

void print(Ranking const& ranking, std::string const& format)
{
  if (format != "table") printNotes(ranking.gated);
  if (format == "json")
    printJson(ranking);
  else if (format == "csv")
    printCsv(ranking);
  else
    printTable(ranking);
}

void checkFiles(RankArguments const& arguments)
{
  checkPaintedName("rank", arguments.stabilityPicture);
  checkOutputs("rank", arguments, {arguments.stabilityPicture});
}

} // namespace

int runRank(RankArguments const& arguments)
{
  checkFiles(arguments);
  GatedScan const gated = openGated(arguments);
  RunsToCompare const runs = runsToCompare(gated, "rank", arguments.file);
  Ranking ranking{gated, compareParameters(gated.scan(), runs.passing, runs.eligible, gated.method),
                  std::nullopt, runs.notComplete()};
  if (ranking.compared.leftOut.size() == gated.scan().parameters.size())
    failWithoutParameters(arguments.file, runs.eligible, "there is nothing to rank");
  for (ComparisonWarning const& warning : gateWarnings(gated)) ranking.compared.warnings.push_back(warning);
  if (arguments.stability) {
    StabilityMethod method;
    method.top = arguments.top;
    method.seed = gated.method.seed;
    ranking.stability =
        stabilityOfComparison(gated.scan(), runs.passing, runs.eligible, ranking.compared, method);
  }
  saveSieve(gated, arguments);
  print(ranking, arguments.format);
  if (!arguments.stabilityPicture.empty())
    desk().drawStability(arguments, ranking.compared, *ranking.stability);
  return 0;
}

} // namespace runsieve::app
