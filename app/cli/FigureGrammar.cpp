#include "app/cli/FigureGrammar.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/FieldText.h>

#include <CLI/CLI.hpp>

#include <cmath>
#include <optional>

namespace runsieve::app {

namespace {

constexpr char figureGroup[] = "What a figure looks like";

// A range of values is written as a gate on a range is.
std::string checkRange(std::string const& text)
{
  try {
    Gate const gate = parseGate(text);
    bool const isPlain = gate.kind == GateKind::Inside && !gate.negated && !gate.span;
    bool const isFinite = std::isfinite(gate.range.low) && std::isfinite(gate.range.high);
    if (isPlain && isFinite && gate.range.low < gate.range.high) return {};
  } catch (GateError const&) {
    // Told as any other text that is no range.
  }
  return "expected a range such as \"cI in 0..5000\", found " + runsieve::quoted(text);
}

// Runs are written as behind "runs" in a gate.
std::string checkRuns(std::string const& text)
{
  try {
    (void)keysOfRuns(text);
    return {};
  } catch (UsageError const& error) {
    return error.what();
  }
}

std::string checkTimes(std::string const& text)
{
  try {
    (void)rangeOfTimes(text);
    return {};
  } catch (UsageError const& error) {
    return error.what();
  }
}

void addFigureSize(CLI::App& command, FigureArguments& figure, CLI::Option* needed)
{
  auto const add = [&](char const* name, auto& value, char const* help, auto low, auto high) {
    return command.add_option(name, value, help)
        ->check(CLI::Range(low, high))
        ->needs(needed)
        ->group(figureGroup);
  };
  add("--width-mm", figure.width, "Width in mm; default: 180", 20.0, 1000.0)->type_name("MM");
  add("--height-mm", figure.height, "Height in mm; default: 130", 20.0, 1000.0)->type_name("MM");
  add("--dpi", figure.dpi, "Pixels per inch of a .png, and at most of dense runs elsewhere; default: 300", 36,
      1200)
      ->type_name("N");
  add("--font-size", figure.fontSize, "Size of letters in points; default: 8", 3.0, 72.0)->type_name("PT");
  add("--line-width", figure.lineWidth, "Width of axes in points; default: 0.75", 0.1, 10.0)->type_name("PT");
  add("--strongest", figure.strongest, "How many parameters, the strongest first; default: 6", std::size_t(0),
      std::size_t(100))
      ->type_name("N");
}

void addFigureSwitches(CLI::App& command, FigureArguments& figure, CLI::Option* needed)
{
  auto const add = [&](char const* name, bool& value, char const* help) {
    command.add_flag(name, value, help)->needs(needed)->group(figureGroup);
  };
  add("--no-gates", figure.noGates, "Without the gates");
  add("--no-legend", figure.noLegend, "Without the legend");
  add("--no-counts", figure.noCounts, "Without the numbers of runs in the legend");
  add("--no-thresholds", figure.noThresholds, "Without what a star means, and without the noise floor");
  add("--no-scale-bar", figure.noScaleBar, "Without the bars that tell what shades mean");
  add("--whole-bands", figure.wholeBands,
      "Runs as bands of whole runs: the deepest run, the deeper half, all but outlying runs");
  add("--scatter", figure.scatter, "Parameters against the last value of the first output");
  add("--transparent", figure.transparent, "Without a white ground");
  add("--data", figure.data, "Write the data behind it as CSV files beside the picture");
}

} // namespace

void addFigureOptions(CLI::App& command, FigureArguments& figure)
{
  auto* wanted = command
                     .add_flag("--figure", figure.wanted,
                               "A figure for a paper, of a size in mm, in place of the composite view")
                     ->group(figureGroup);
  addFigureSize(command, figure, wanted);
  auto const text = [&](char const* name, std::string& value, char const* help, char const* type) {
    return command.add_option(name, value, help)->type_name(type)->needs(wanted)->group(figureGroup);
  };
  auto const names = [&](char const* name, std::vector<std::string>& value, char const* help) {
    return command.add_option(name, value, help)
        ->type_name("NAME")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->needs(wanted)
        ->group(figureGroup);
  };
  text("--font", figure.font, "Family of the letters", "NAME");
  text("--title", figure.title, "Title above the figure", "TEXT");
  text("--palette", figure.palette, "standard or colour-blind", "NAME")
      ->check(CLI::IsMember({"standard", "colour-blind"}).description(""));
  text("--focus", figure.focus, "The other runs: all (as they are), faded or hidden", "WAY")
      ->check(CLI::IsMember({"all", "faded", "hidden"}).description(""));
  text("--time-range", figure.timeRange, "Part of the times, such as 0..60", "LOW..HIGH")
      ->check(CLI::Validator(checkTimes, ""));
  names("--show", figure.outputs, "Output to show; may be repeated, for charts one above the other");
  names("--log", figure.logOutputs, "Output with a logarithmic axis; may be repeated");
  names("--value-range", figure.valueRanges, "Part of the values, such as \"cI in 0..5000\"; may be repeated")
      ->type_name("RANGE")
      ->check(CLI::Validator(checkRange, ""));
  names("--show-parameter", figure.parameters, "Parameter to show; may be repeated");
  names("--gate-name", figure.gateNames, "Name of a gate, in the order of the gates; may be repeated");
  text("--pin", figure.pins, "Runs to mark, such as 3,5,10-15", "RUNS")->check(CLI::Validator(checkRuns, ""));
  addFigureSwitches(command, figure, wanted);
}

std::vector<RunKey> keysOfRuns(std::string const& text)
{
  try {
    return parseGate("runs " + text).runs;
  } catch (GateError const&) {
    throw UsageError("expected runs such as 3,5,10-15, found " + runsieve::quoted(text));
  }
}

std::pair<double, double> rangeOfTimes(std::string const& text)
{
  try {
    std::optional<GateSpan> const span = parseGate("time @ " + text + " in ..").span;
    if (span && span->first && span->last && *span->first < *span->last) return {*span->first, *span->last};
  } catch (GateError const&) {
    // Told as any other text that is no range.
  }
  throw UsageError("expected a range of times such as 0..60, found " + runsieve::quoted(text));
}

} // namespace runsieve::app
