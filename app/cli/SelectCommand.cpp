#include "app/cli/Commands.h"

#include "app/cli/AlignedTable.h"
#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"

#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/write/RowWriter.h>
#include <runsieve/core/write/WriteScan.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace runsieve::app {

namespace {

std::string valueText(ScanParameter const& parameter, std::size_t run, bool allDigits)
{
  double const value = parameter.values[run];
  if (std::isnan(value)) return {};
  if (parameter.isText()) return parameter.texts[static_cast<std::size_t>(value)];
  return allDigits ? decimal(value) : formatted(value, "%.6g", "");
}

/// The cells of a list of runs: key, status, parameters. \param allDigits or six, as people want them
std::vector<std::vector<std::string>> cellsOf(Scan const& scan, std::vector<std::size_t> const& runs,
                                              bool allDigits)
{
  std::vector<std::vector<std::string>> rows = {{"run", "status"}};
  for (ScanParameter const& parameter : scan.parameters) rows.front().push_back(parameter.label.name);
  for (std::size_t const run : runs) {
    rows.push_back({scan.runs[run].key, statusName(scan.runs[run].status)});
    for (ScanParameter const& parameter : scan.parameters)
      rows.back().push_back(valueText(parameter, run, allDigits));
  }
  return rows;
}

bool isNumberColumn(Scan const& scan, std::size_t column)
{
  return column >= 2 && !scan.parameters[column - 2].isText();
}

void printCsv(std::ostream& out, Scan const& scan, std::vector<std::vector<std::string>> const& rows)
{
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t c = 0; c < rows[i].size(); ++c)
      out << (c > 0 ? "," : "") << (i > 0 && isNumberColumn(scan, c) ? rows[i][c] : quotedField(rows[i][c]))
          << (c + 1 == rows[i].size() ? "\n" : "");
}

void printJson(std::ostream& out, GatedScan const& gated, std::vector<std::size_t> const& runs)
{
  Scan const& scan = gated.scan();
  nlohmann::ordered_json report;
  report["runs"] = scan.runs.size();
  report["passing"] = gated.passed.runs.count();
  report["gates"] = gatesAsJson(gated);
  report["selected"] = nlohmann::json::array();
  for (std::size_t const run : runs) {
    nlohmann::ordered_json entry = {{"run", scan.runs[run].key},
                                    {"status", statusName(scan.runs[run].status)}};
    for (ScanParameter const& parameter : scan.parameters) {
      double const value = parameter.values[run];
      if (parameter.isText() && !std::isnan(value))
        entry["parameters"][parameter.label.name] = valueText(parameter, run, true);
      else
        entry["parameters"][parameter.label.name] = numberJson(value);
    }
    report["selected"].push_back(std::move(entry));
  }
  out << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

std::string listOf(SelectArguments const& arguments, GatedScan const& gated, RunSet const& selected)
{
  std::ostringstream out;
  std::vector<std::size_t> const runs = selected.members();
  if (arguments.format == "json")
    printJson(out, gated, runs);
  else if (arguments.format == "csv")
    printCsv(out, gated.scan(), cellsOf(gated.scan(), runs, true));
  else
    printAligned(out, cellsOf(gated.scan(), runs, false));
  return out.str();
}

} // namespace

int runSelect(SelectArguments const& arguments)
{
  checkOutputs("select", arguments, {arguments.output});
  GatedScan const gated = openGated(arguments);
  if (!gated.sieves()) failWithoutGates("select");
  RunSet const selected = arguments.others ? gated.passed.runs.complement() : gated.passed.runs;
  bool const toOutput = isStandardOutput(arguments.output);
  if (arguments.format == "scan" && selected.count() == 0)
    throw std::runtime_error(arguments.file + ": no run is selected, and a scan has one run at least");
  if (arguments.format == "scan" && toOutput) {
    writeScan(gated.scan(), std::cout, &selected);
  } else if (arguments.format == "scan") {
    writeScan(gated.scan(), arguments.output, &selected);
  } else {
    writeText(arguments.output, listOf(arguments, gated, selected));
  }
  saveSieve(gated, arguments);
  std::ostream& report = toOutput ? std::cerr : std::cout;
  printGates(report, gated);
  report << passingText(gated) << '\n';
  return 0;
}

} // namespace runsieve::app
