#include "app/cli/Commands.h"

#include "app/cli/RankReport.h"
#include "app/view/SievedScan.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

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

/// A field of comma-separated text.
std::string quoted(std::string const& text)
{
  std::string field = "\"";
  for (char c : text) field += c == '"' ? std::string("\"\"") : std::string(1, c);
  return field + '"';
}

void printTable(SievedScan const& sieved, std::size_t passing, std::vector<RankedParameter> const& ranked)
{
  for (ResolvedGate const& gate : sieved.gates) {
    std::cout << "gate   " << gate.text();
    if (!gate.note.empty()) std::cout << "   (" << gate.note << ")";
    std::cout << '\n';
  }
  std::cout << passing << " of " << sieved.scan->trajectoryCount << " runs pass\n\n";
  printRankTable(std::cout, ranked);
}

void printCsv(std::vector<RankedParameter> const& ranked)
{
  std::cout << "parameter,p,d,median_passing,median_others,significant\n";
  for (RankedParameter const& r : ranked)
    std::cout << quoted(r.name) << ',' << exact(r.p) << ',' << exact(r.d) << ',' << exact(r.medianPassing)
              << ',' << exact(r.medianOthers) << ',' << (r.significant ? "true" : "false") << '\n';
}

void printJson(SievedScan const& sieved, std::size_t passing, std::vector<RankedParameter> const& ranked)
{
  nlohmann::ordered_json report;
  report["runs"] = sieved.scan->trajectoryCount;
  report["passing"] = passing;
  report["gates"] = nlohmann::json::array();
  for (ResolvedGate const& gate : sieved.gates)
    report["gates"].push_back({{"output", gate.output},
                               {"time", {gate.timeFirst, gate.timeLast}},
                               {"range", {gate.low, gate.high}},
                               {"note", gate.note}});
  report["parameters"] = nlohmann::json::array();
  for (RankedParameter const& r : ranked)
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
  const SievedScan sieved(arguments.file, arguments.read, arguments.gates);
  vtkNew<vtkContextScene> scene;
  PlotContainer plot(nullptr);
  scene->AddItem(plot.getItem());
  if (!sieved.sieves()) throw UsageError("rank: the stored plot has no selection; --gate is required");
  ViewOptions options = sieved.stored.view;
  options.pThreshold = arguments.pThreshold.value_or(options.pThreshold);
  options.ksThreshold = arguments.ksThreshold.value_or(options.ksThreshold);
  const std::size_t passing = sieved.applyTo(plot, options);
  const std::vector<RankedParameter> ranked = rankedParameters(plot);
  if (plot.metaData->parameterColumns.empty())
    throw std::runtime_error(arguments.file + ": no parameter varies, so there is nothing to rank");
  if (passing == 0) throw std::runtime_error(arguments.file + ": no run passes through all gates");

  if (arguments.format != "table")
    for (std::string const& note : sieved.notes()) std::cerr << "runsieve: " << note << '\n';
  if (arguments.format == "json")
    printJson(sieved, passing, ranked);
  else if (arguments.format == "csv")
    printCsv(ranked);
  else
    printTable(sieved, passing, ranked);
  return 0;
}

} // namespace runsieve::app
