#include "app/cli/Commands.h"

#include "app/cli/GatedScan.h"
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

/// The runs that are compared, and what came of it.
struct FoundPairs
{
  GatedScan const& gated;
  RunsToCompare runs;
  PairComparisons found;
};

void printTable(FoundPairs const& pairs, std::size_t top)
{
  printGates(std::cout, pairs.gated);
  std::cout << passingText(pairs.gated) << '\n';
  printNotCompared(std::cout, pairs.runs.notComplete());
  std::cout << '\n';
  printPairTable(std::cout, pairs.found, top);
  std::cout << '\n';
  printPairMethod(std::cout, pairs.found);
  printWarnings(std::cout, pairs.found.warnings);
}

void printJson(FoundPairs const& pairs)
{
  GatedScan const& gated = pairs.gated;
  PairComparisons const& found = pairs.found;
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = pairs.runs.notComplete();
  report["gates"] = gatesAsJson(gated);
  report["method"] = pairMethodJson(found);
  report["pairs"] = nlohmann::json::array();
  for (ParameterPair const& pair : found.pairs) report["pairs"].push_back(pairJson(pair));
  report["left_out"] = leftOutJson(found.leftOut);
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
  checkPaintedName("pairs", arguments.picture);
  checkOutputs("pairs", arguments, {arguments.picture});
}

FoundPairs foundPairs(GatedScan const& gated, std::string const& file)
{
  RunsToCompare const runs = runsToCompare(gated, "pairs", file);
  if (gated.method.permutations == 0)
    throw UsageError("pairs: the sieve file asks for no permutations, which the test is made of; "
                     "--permutations makes some");
  FoundPairs pairs{gated, runs, {}};
  try {
    pairs.found = comparePairs(gated.scan(), runs.passing, runs.eligible, gated.method);
  } catch (std::length_error const& error) {
    throw std::runtime_error(file + ": " + error.what() + "; --ignore leaves columns out");
  }
  if (pairs.found.pairs.empty())
    throw std::runtime_error(file + ": " + pairs.found.warnings.front().text + ", and a pair takes two");
  for (ComparisonWarning const& warning : gateWarnings(gated)) pairs.found.warnings.push_back(warning);
  return pairs;
}

} // namespace

int runPairs(PairsArguments const& arguments)
{
  checkFiles(arguments);
  GatedScan const gated = openGated(arguments);
  FoundPairs const pairs = foundPairs(gated, arguments.file);
  if (!arguments.picture.empty())
    desk().drawPairs(arguments, gated.scan(),
                     {picturedPairs(arguments, gated.scan(), pairs.found), pairs.runs.passing,
                      pairs.runs.eligible, pictureTitle(gated)});
  saveSieve(gated, arguments);
  if (arguments.format != "table") printNotes(gated);
  if (arguments.format == "json")
    printJson(pairs);
  else if (arguments.format == "csv")
    printPairCsv(std::cout, pairs.found);
  else
    printTable(pairs, arguments.top);
  return 0;
}

} // namespace runsieve::app
