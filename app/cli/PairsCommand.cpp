#include "app/cli/Commands.h"

#include "app/cli/ComparedSets.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/PairReport.h"
#include "app/cli/RankReport.h"
#include "app/desk/Desk.h"

#include <runsieve/core/text/FieldText.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace runsieve::app {

namespace {

constexpr std::size_t mostCharts = 6;

void printTable(GatedScan const& gated, ComparedSets const& sets, PairComparisons const& found,
                std::size_t top)
{
  printSets(std::cout, gated, sets);
  printPairTable(std::cout, found, top);
  std::cout << '\n';
  printPairMethod(std::cout, found);
  printWarnings(std::cout, found.warnings);
}

void printJson(GatedScan const& gated, ComparedSets const& sets, PairComparisons const& found)
{
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = sets.notComplete();
  report["gates"] = gatesAsJson(gated);
  report["method"] = pairMethodJson(found);
  report["pairs"] = nlohmann::json::array();
  for (ParameterPair const& pair : found.pairs) report["pairs"].push_back(pairJson(pair));
  report["left_out"] = nlohmann::json::array();
  for (LeftOutParameter const& left : found.leftOut)
    report["left_out"].push_back({{"name", left.name}, {"reason", left.reason}});
  report["warnings"] = warningsJson(found.warnings);
  std::cout << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

/// Two names with a comma between them; names may have commas of their own.
std::pair<std::size_t, std::size_t> parametersNamed(std::string const& names, Scan const& scan)
{
  if (names.find(',') == std::string::npos)
    throw UsageError("pairs: --pair takes two names with a comma between them, found " +
                     runsieve::quoted(names));
  std::string missing;
  for (std::size_t comma = names.find(','); comma != std::string::npos; comma = names.find(',', comma + 1)) {
    std::string const first(trimmed(names.substr(0, comma)));
    std::string const second(trimmed(names.substr(comma + 1)));
    auto const x = scan.findParameter(first);
    auto const y = scan.findParameter(second);
    if (x && y) return {*x, *y};
    if (missing.empty()) missing = x ? second : first;
  }
  throw std::runtime_error("the scan has no parameter " + runsieve::quoted(missing));
}

ParameterPair turned(ParameterPair pair)
{
  std::swap(pair.first, pair.second);
  std::swap(pair.firstParameter, pair.secondParameter);
  return pair;
}

/// The pair that is asked for, with the first name on the horizontal axis.
ParameterPair pairNamed(std::string const& names, Scan const& scan, PairComparisons const& found)
{
  auto const [x, y] = parametersNamed(names, scan);
  for (ParameterPair const& pair : found.pairs) {
    if (pair.firstParameter == x && pair.secondParameter == y) return pair;
    if (pair.firstParameter == y && pair.secondParameter == x) return turned(pair);
  }
  for (LeftOutParameter const& left : found.leftOut)
    if (left.parameter == x || left.parameter == y)
      throw std::runtime_error("parameter " + runsieve::quoted(left.name) + ' ' + left.reason +
                               ", so that it is in no pair");
  throw std::runtime_error("a pair takes two parameters, found one twice: " + runsieve::quoted(names));
}

std::vector<ParameterPair> picturedPairs(PairsArguments const& arguments, Scan const& scan,
                                         PairComparisons const& found)
{
  if (!arguments.pair.empty()) return {pairNamed(arguments.pair, scan, found)};
  std::vector<ParameterPair> strongest(
      found.pairs.begin(),
      found.pairs.begin() + static_cast<std::ptrdiff_t>(std::min(mostCharts, found.pairs.size())));
  return strongest;
}

void checkFiles(PairsArguments const& arguments)
{
  if (!arguments.picture.empty() && !isPictureName(arguments.picture))
    throw UsageError("pairs: the name of the picture must end in .png or .pdf");
  checkOutputs("pairs", arguments, {arguments.picture});
}

PairComparisons compared(GatedScan const& gated, ComparedSets const& sets, std::string const& file)
{
  if (gated.method.permutations == 0)
    throw UsageError("pairs: the sieve file asks for no permutations, which the test is made of; "
                     "--permutations makes some");
  try {
    PairComparisons found = comparePairs(gated.scan(), sets.passing, sets.eligible, gated.method);
    if (found.pairs.empty())
      throw std::runtime_error(file + ": " + found.warnings.front().text + ", and a pair takes two");
    return found;
  } catch (std::length_error const& error) {
    throw std::runtime_error(file + ": " + error.what() + "; --ignore leaves columns out");
  }
}

} // namespace

int runPairs(PairsArguments const& arguments)
{
  checkFiles(arguments);
  GatedScan const gated = openGated(arguments);
  ComparedSets const sets = comparedSets(gated, "pairs", arguments.file);
  PairComparisons const found = compared(gated, sets, arguments.file);
  if (!arguments.picture.empty())
    desk().drawPairs(
        arguments, gated.scan(),
        {picturedPairs(arguments, gated.scan(), found), sets.passing, sets.eligible, titleOf(gated)});
  if (arguments.format != "table") printNotes(gated);
  if (arguments.format == "json")
    printJson(gated, sets, found);
  else if (arguments.format == "csv")
    printPairCsv(std::cout, found);
  else
    printTable(gated, sets, found, arguments.top);
  return 0;
}

} // namespace runsieve::app
