#include "app/explorer/session/ShellCommand.h"

#include "app/explorer/figure/FigureSettings.h"

#include <runsieve/core/gate/GateText.h>

#include <QString>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace runsieve::app {

namespace {

using Words = std::vector<std::string>;

bool isPlain(char c)
{
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         (c != '\0' && std::strchr("_-./,:=+@%", c) != nullptr);
}

/// The fewest digits that read back to the same number.
std::string numberWord(double value)
{
  char text[32];
  auto const [end, error] = std::to_chars(text, text + sizeof text, value);
  return error == std::errc() ? std::string(text, end) : std::string("nan");
}

/// An option with its value; one that begins with a minus is no option of its own.
void add(Words& words, char const* option, std::string const& value)
{
  if (!value.empty() && value.front() != '-') {
    words.emplace_back(option);
    words.push_back(value);
  } else {
    words.push_back(std::string(option) + '=' + value);
  }
}

void addAll(Words& words, char const* option, std::vector<std::string> const& values)
{
  for (std::string const& value : values) add(words, option, value);
}

std::string joined(std::vector<std::string> const& names)
{
  std::string text;
  for (std::string const& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

bool hasGates(Session const& session)
{
  return std::any_of(session.gates.begin(), session.gates.end(),
                     [](NamedGate const& gate) { return gate.on; });
}

void addGates(Words& words, Session const& session)
{
  for (NamedGate const& gate : session.gates)
    if (gate.on) add(words, "--gate", formatGate(gate.gate));
  if (session.join == GateJoin::Any && hasGates(session)) words.emplace_back("--any");
}

void addMethod(Words& words, ComparisonMethod const& method)
{
  const ComparisonMethod usual;
  if (method.thresholds.largestP != usual.thresholds.largestP)
    add(words, "--p-threshold", numberWord(method.thresholds.largestP));
  if (method.thresholds.smallestD != usual.thresholds.smallestD)
    add(words, "--ks-threshold", numberWord(method.thresholds.smallestD));
  if (method.adjustment != usual.adjustment) add(words, "--adjust", adjustmentName(method.adjustment));
  if (method.permutations != usual.permutations || method.mostPermutations != usual.mostPermutations)
    add(words, "--permutations", std::to_string(method.permutations));
  if (method.seed != usual.seed) add(words, "--seed", std::to_string(method.seed));
  if (method.gatesTried != usual.gatesTried) add(words, "--gates-tried", std::to_string(method.gatesTried));
}

Words begun(char const* command, Session const& session)
{
  Words words = {"runsieve", command, session.path.empty() ? std::string("scan.csv") : session.path};
  const Words reading = readingWords(session.read);
  words.insert(words.end(), reading.begin(), reading.end());
  addGates(words, session);
  addMethod(words, session.method);
  return words;
}

void addSize(Words& words, FigureOptions const& options)
{
  const FigureOptions usual;
  add(words, "--width-mm", numberWord(options.width));
  add(words, "--height-mm", numberWord(options.height));
  if (options.dpi != usual.dpi) add(words, "--dpi", std::to_string(options.dpi));
  if (!options.family.isEmpty()) add(words, "--font", options.family.toStdString());
  if (options.fontSize != usual.fontSize) add(words, "--font-size", numberWord(options.fontSize));
  if (options.lineWidth != usual.lineWidth) add(words, "--line-width", numberWord(options.lineWidth));
  if (!options.title.isEmpty()) add(words, "--title", options.title.toStdString());
}

void addParts(Words& words, FigureOptions const& options)
{
  auto const flag = [&](bool wanted, char const* name) {
    if (wanted) words.emplace_back(name);
  };
  flag(!options.gates, "--no-gates");
  flag(!options.legend, "--no-legend");
  flag(!options.counts, "--no-counts");
  flag(!options.thresholds, "--no-thresholds");
  flag(!options.scaleBar, "--no-scale-bar");
  flag(!options.ground, "--transparent");
  flag(options.runsLook == RunsLook::Bands, "--quantiles");
  flag(options.runsLook == RunsLook::WholeBands, "--whole-bands");
  flag(options.runsLook == RunsLook::Lines, "--plain-lines");
  flag(options.parameterLook == ParameterLook::Densities, "--density");
  flag(options.parameterLook == ParameterLook::Scatter, "--scatter");
  if (options.palette == FigurePalette::ColourBlind) add(words, "--palette", "colour-blind");
}

std::string rangeText(std::string const& output, TypedRange const& range)
{
  Gate gate;
  gate.column = output;
  gate.range = {range.low, range.high};
  return formatGate(gate);
}

/// Names of gates, if some are not those that a figure gives by itself, and pinned runs.
void addNames(Words& words, Session const& session)
{
  Words names;
  bool own = false;
  for (NamedGate const& gate : session.gates) {
    if (!gate.on) continue;
    names.push_back(gate.name);
    own = own || gate.name != "Gate " + std::to_string(names.size());
  }
  if (own) addAll(words, "--gate-name", names);
  if (session.pinned.empty()) return;
  Gate pinned;
  pinned.kind = GateKind::Runs;
  pinned.runs = session.pinned;
  const std::string text = formatGate(pinned);
  add(words, "--pin", text.substr(text.find(' ') + 1));
}

void addView(Words& words, Session const& session)
{
  SessionView const& view = session.view;
  for (auto const& [name, on] : view.logOutputs)
    if (on) add(words, "--log", name);
  if (view.focus != Focus::All) add(words, "--focus", view.focus == Focus::Faded ? "faded" : "hidden");
  std::optional<TypedRange> const& time = view.zoomedTime ? view.zoomedTime : view.timeRange;
  if (time) add(words, "--time-range", formatSpan({time->low, time->high}));
  std::map<std::string, TypedRange> ranges = view.zoomedValues;
  ranges.insert(view.outputRanges.begin(), view.outputRanges.end());
  for (auto const& [name, range] : ranges) add(words, "--value-range", rangeText(name, range));
}

} // namespace

std::string shellWord(std::string const& word)
{
  if (!word.empty() && std::all_of(word.begin(), word.end(), isPlain)) return word;
  std::string quoted = "'";
  for (char const c : word) {
    if (c == '\'')
      quoted += "'\\''";
    else
      quoted += c;
  }
  return quoted + '\'';
}

std::string shellLine(std::vector<std::string> const& words)
{
  std::string line;
  for (std::string const& word : words) line += (line.empty() ? "" : " ") + shellWord(word);
  return line;
}

std::vector<std::string> readingWords(ReadOptions const& read)
{
  Words words;
  if (!read.time.empty()) add(words, "--time", read.time);
  if (!read.run.empty()) add(words, "--run", read.run);
  if (read.parameters) addAll(words, "--parameter", *read.parameters);
  addAll(words, "--output", read.outputs);
  addAll(words, "--ignore", read.ignore);
  addAll(words, "--missing", read.missing);
  if (!read.names.empty()) add(words, "--names", joined(read.names));
  if (read.decimal != 0) add(words, "--decimal", std::string(1, read.decimal));
  if (read.delimiter != 0) {
    const bool isBlank = read.delimiter == ' ' || read.delimiter == '\t';
    add(words, "--delimiter",
        isBlank ? std::string(read.delimiter == ' ' ? "blank" : "tab") : std::string(1, read.delimiter));
  }
  if (!read.dataset.empty()) add(words, "--dataset", read.dataset);
  if (!read.parametersFile.empty()) add(words, "--parameters", read.parametersFile);
  if (read.exactTimes) words.emplace_back("--exact-times");
  return words;
}

std::vector<std::string> rankCommand(Session const& session)
{
  return hasGates(session) ? begun("rank", session) : Words();
}

std::vector<std::string> figureCommand(Session const& session, FigureOptions const& options, Scan const& scan,
                                       std::string const& picture)
{
  Words words = begun("render", session);
  words.emplace_back("--figure");
  addSize(words, options);
  if (options.outputs.empty()) addAll(words, "--show", session.view.outputs);
  for (std::size_t const output : options.outputs)
    if (output < scan.outputs.size()) add(words, "--show", scan.outputs[output].label.fullName());
  addView(words, session);
  for (std::size_t const parameter : options.parameters)
    if (parameter < scan.parameters.size())
      add(words, "--show-parameter", scan.parameters[parameter].label.fullName());
  if (options.parameters.empty() && options.strongest != FigureOptions().strongest)
    add(words, "--strongest", std::to_string(options.strongest));
  addParts(words, options);
  addNames(words, session);
  add(words, "-o", picture);
  return words;
}

std::string commandOf(Session const& session, FigureOptions const& options, Scan const& scan)
{
  const Words rank = rankCommand(session);
  const std::string table = rank.empty() ? std::string() : shellLine(rank) + '\n';
  return table + shellLine(figureCommand(session, options, scan, "figure.pdf")) + '\n';
}

std::string commandOf(Document const& document, std::function<void(Session&)> const& complete)
{
  if (!document.isOpen()) return {};
  Session session = sessionOf(document, std::string());
  if (complete) complete(session);
  FigureOptions shown = lastFigureOptions();
  shown.runsLook = document.state().view.runsLook;
  shown.parameterLook = document.state().view.parameterLook;
  return commandOf(session, shown, document.scan());
}

} // namespace runsieve::app
