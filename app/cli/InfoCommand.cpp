#include "app/cli/Commands.h"

#include "app/scan/OpenScan.h"
#include "app/scan/ReadingText.h"

#include <runsieve/core/text/ShownText.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <sstream>

namespace runsieve::app {

namespace {

/// The finite values of a column.
struct Range
{
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  std::size_t notFinite = 0;
  std::size_t count = 0;
};

Range rangeOf(double const* values, std::size_t count)
{
  Range range;
  range.count = count;
  for (std::size_t i = 0; i < count; ++i) {
    if (!std::isfinite(values[i])) {
      ++range.notFinite;
      continue;
    }
    range.low = std::min(range.low, values[i]);
    range.high = std::max(range.high, values[i]);
  }
  return range;
}

// As a person wants it: six digits.
std::string rounded(double value)
{
  std::ostringstream text;
  text << value;
  return text.str();
}

std::string textOf(Range const& range)
{
  std::string line = "no finite value";
  if (range.notFinite < range.count) line = rounded(range.low) + ".." + rounded(range.high);
  if (range.notFinite > 0)
    line += " (" + std::to_string(range.notFinite) + (range.notFinite == 1 ? " value" : " values") +
            " not finite)";
  return line;
}

std::string textsOf(ScanParameter const& parameter)
{
  constexpr std::size_t most = 5;
  std::string line;
  for (std::size_t i = 0; i < std::min(parameter.texts.size(), most); ++i)
    line += (i > 0 ? ", " : "") + parameter.texts[i];
  if (parameter.texts.size() > most)
    line += " and " + std::to_string(parameter.texts.size() - most) + " more";
  return line;
}

std::string describe(ScanParameter const& parameter)
{
  if (parameter.isText()) return textsOf(parameter);
  Range const range = rangeOf(parameter.values.data(), parameter.values.size());
  bool const constant = range.low == range.high && range.notFinite == 0;
  return constant ? rounded(range.low) + " (constant, not plotted)" : textOf(range);
}

using Lines = std::vector<std::pair<std::string, std::string>>;

void print(char const* title, Lines const& lines)
{
  std::cout << title << ' ' << lines.size() << '\n';
  std::size_t width = 0;
  for (auto const& line : lines) width = std::max(width, shownWidth(printable(line.first)));
  for (auto const& [name, text] : lines)
    std::cout << "  " << printable(name) << std::string(width - shownWidth(printable(name)), ' ') << "  "
              << printable(text) << '\n';
}

std::string named(ColumnLabel const& label, std::string const& name)
{
  return label.unit.empty() ? name : name + " [" + label.unit + ']';
}

void printText(OpenedScan const& opened)
{
  Scan const& scan = opened.scan;
  std::cout << "runs       " << scan.runs.size() << '\n'
            << "times      " << scan.times.size() << ", " << named(scan.time, scan.time.name) << ' '
            << rounded(scan.times.front()) << ".." << rounded(scan.times.back()) << '\n';
  Lines outputs;
  for (ScanOutput const& output : scan.outputs)
    outputs.emplace_back(named(output.label, output.label.fullName()),
                         textOf(rangeOf(output.values.get(), scan.rows())));
  print("outputs   ", outputs);
  Lines parameters;
  for (ScanParameter const& parameter : scan.parameters)
    parameters.emplace_back(named(parameter.label, parameter.label.name), describe(parameter));
  print("parameters", parameters);
  for (std::string const& line : readingLines(scan, opened.report)) std::cout << printable(line) << '\n';
}

nlohmann::ordered_json columnJson(ColumnLabel const& label, std::string const& name)
{
  nlohmann::ordered_json column = {{"name", name}};
  if (!label.unit.empty()) column["unit"] = label.unit;
  if (!label.label.empty()) column["label"] = label.label;
  return column;
}

void addRange(nlohmann::ordered_json& column, Range const& range)
{
  if (range.notFinite < range.count) column["range"] = {range.low, range.high};
  column["not_finite"] = range.notFinite;
}

void printJson(OpenedScan const& opened)
{
  Scan const& scan = opened.scan;
  nlohmann::ordered_json document;
  document["runs"] = scan.runs.size();
  document["failed"] = keysOf(scan, RunStatus::Failed);
  document["short"] = keysOf(scan, RunStatus::Short);
  document["times"] = scan.times.size();
  document["time"] = columnJson(scan.time, scan.time.name);
  document["time"]["range"] = {scan.times.front(), scan.times.back()};
  document["outputs"] = nlohmann::json::array();
  for (ScanOutput const& output : scan.outputs) {
    document["outputs"].push_back(columnJson(output.label, output.label.fullName()));
    addRange(document["outputs"].back(), rangeOf(output.values.get(), scan.rows()));
  }
  document["parameters"] = nlohmann::json::array();
  for (ScanParameter const& parameter : scan.parameters) {
    document["parameters"].push_back(columnJson(parameter.label, parameter.label.name));
    if (parameter.isText())
      document["parameters"].back()["texts"] = parameter.texts;
    else
      addRange(document["parameters"].back(), rangeOf(parameter.values.data(), parameter.values.size()));
  }
  document["read"]["format"] = opened.report.format;
  document["read"]["columns"] = nlohmann::json::array();
  for (ColumnFinding const& column : opened.report.columns)
    document["read"]["columns"].push_back(
        {{"header", column.header}, {"role", column.role}, {"why", column.why}});
  document["read"]["findings"] = nlohmann::json::array();
  for (Finding const& finding : opened.report.findings)
    document["read"]["findings"].push_back(
        {{"what", finding.what}, {"why", finding.why}, {"guess", finding.guess}});
  std::cout << document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

} // namespace

int runInfo(InfoArguments const& arguments)
{
  OpenedScan const opened = openScan(arguments.file, arguments.read);
  if (arguments.format == "json")
    printJson(opened);
  else
    printText(opened);
  return 0;
}

} // namespace runsieve::app
