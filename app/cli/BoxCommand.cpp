#include "app/cli/Commands.h"

#include "app/cli/BoxReport.h"
#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"
#include "app/desk/Desk.h"

#include <runsieve/core/gate/BoxGates.h>
#include <runsieve/core/text/ShownText.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <stdexcept>

namespace runsieve::app {

namespace {

/// A box with its gates on all runs, those that took no part too.
struct GatedBox
{
  BoxOfRuns box;
  std::vector<Gate> gates;
  GateResult through;
  std::size_t notComplete = 0; ///< runs that took no part

  [[nodiscard]] std::size_t notCompleteInside() const { return through.runs.count() - box.runs.count(); }
};

BoxMethod methodOf(BoxArguments const& arguments, GatedScan const& gated)
{
  BoxMethod method = arguments.box;
  if (arguments.knee) method.leastCoverage.reset();
  method.seed = gated.method.seed;
  return method;
}

GatedBox boxOf(BoxArguments const& arguments, GatedScan const& gated)
{
  RunsToCompare const runs = runsToCompare(gated, "box", arguments.file);
  GatedBox found;
  found.box = findBox(gated.scan(), runs.passing, runs.eligible, methodOf(arguments, gated));
  if (found.box.parameters.empty())
    failWithoutParameters(arguments.file, runs.eligible, "there is no box to look for");
  found.gates = gatesOf(found.box, gated.scan());
  found.through = applyGates(found.gates, gated.scan());
  found.notComplete = runs.notComplete();
  for (ComparisonWarning const& warning : gateWarnings(gated)) found.box.warnings.push_back(warning);
  return found;
}

void printTable(GatedScan const& gated, GatedBox const& found)
{
  printGates(std::cout, gated);
  std::cout << passingText(gated) << '\n';
  printNotCompared(std::cout, found.notComplete);
  for (LeftOutParameter const& left : found.box.leftOut)
    if (gated.scan().parameters[left.parameter].isText())
      std::cout << printable(left.name) << " is left out: it " << left.reason << '\n';
  std::cout << '\n';
  printBox(std::cout, gated.scan(), found.box, found.gates);
  if (found.notCompleteInside() > 0)
    std::cout << "note   the gates let " << found.notCompleteInside()
              << (found.notCompleteInside() == 1 ? " more run" : " more runs")
              << " through that did not take part\n";
  printWarnings(std::cout, found.box.warnings);
}

void printJson(GatedScan const& gated, GatedBox const& found)
{
  nlohmann::ordered_json report;
  report["version"] = RUNSIEVE_VERSION;
  report["runs"] = gated.scan().runs.size();
  report["passing"] = gated.passed.runs.count();
  report["not_complete"] = found.notComplete;
  report["not_complete_inside"] = found.notCompleteInside();
  report["gates"] = gatesAsJson(gated);
  report.update(boxJson(found.box, found.gates));
  report["warnings"] = warningsJson(found.box.warnings);
  std::cout << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void checkFiles(BoxArguments const& arguments)
{
  checkPaintedName("box", arguments.picture);
  checkOutputs("box", arguments, {arguments.boxSieve, arguments.picture});
}

} // namespace

int runBox(BoxArguments const& arguments)
{
  checkFiles(arguments);
  GatedScan const gated = openGated(arguments);
  GatedBox const found = boxOf(arguments, gated);
  if (!arguments.boxSieve.empty() && !found.gates.empty())
    saveSieve(gated, found.gates, GateJoin::All, found.through, arguments.boxSieve);
  if (arguments.format != "table") printNotes(gated);
  if (arguments.format == "json")
    printJson(gated, found);
  else if (arguments.format == "csv")
    printBoxCsv(std::cout, found.box);
  else
    printTable(gated, found);
  if (!arguments.picture.empty()) desk().drawBox(arguments, found.box, pictureTitle(gated));
  if (!arguments.boxSieve.empty() && found.gates.empty())
    throw std::runtime_error(arguments.file + ": the box is all runs, so there are no gates to save");
  return 0;
}

} // namespace runsieve::app
