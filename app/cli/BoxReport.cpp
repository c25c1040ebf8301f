#include "app/cli/BoxReport.h"

#include "app/cli/AlignedTable.h"
#include "app/cli/RankReport.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/ShownText.h>
#include <runsieve/core/write/RowWriter.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

namespace runsieve::app {

namespace {

using Row = std::vector<std::string>;

constexpr std::size_t widest = 100;

std::string share(double value)
{
  return formatted(value, "%.3f", "-");
}

std::string percent(std::size_t part, std::size_t whole)
{
  if (whole == 0) return "-";
  return formatted(100.0 * static_cast<double>(part) / static_cast<double>(whole), "%.0f%%", "-");
}

std::string spreadText(BoxSpreads const& spread, char const* format)
{
  if (spread.count == 0) return "-";
  return formatted(spread.low, format, "-") + ".." + formatted(spread.high, format, "-");
}

std::string nameText(Scan const& scan, BoxParameter const& parameter, std::size_t most)
{
  std::string const unit = printable(scan.parameters[parameter.parameter].label.unit);
  return shortened(printable(parameter.name) + (unit.empty() ? "" : " [" + unit + "]"), most);
}

/// The restricted parameters, those first whose limits matter most.
std::vector<BoxParameter const*> restrictedOf(BoxOfRuns const& box, bool isText)
{
  std::vector<BoxParameter const*> parameters;
  for (BoxParameter const& parameter : box.parameters)
    if (parameter.isRestricted && parameter.isText == isText) parameters.push_back(&parameter);
  std::stable_sort(parameters.begin(), parameters.end(),
                   [](auto const* a, auto const* b) { return a->quasiP < b->quasiP; });
  return parameters;
}

/// So many runs that a probability is no number any more are no wonder here.
std::string quasiPText(double p)
{
  constexpr double least = 1e-300;
  if (std::isnan(p)) return "-";
  return p < least ? pText(least, true) : pText(p);
}

Row rowOf(BoxParameter const& parameter, std::string name, std::size_t halves)
{
  return {std::move(name),
          formatted(parameter.low, "%.6g", "-"),
          formatted(parameter.high, "%.6g", "-"),
          quasiPText(parameter.quasiPLow),
          quasiPText(parameter.quasiPHigh),
          percent(parameter.restrictedIn, halves),
          spreadText(parameter.lows, "%.4g"),
          spreadText(parameter.highs, "%.4g")};
}

std::size_t widthWithoutNames(std::vector<Row> const& rows)
{
  std::size_t width = 0;
  for (std::size_t column = 1; column < rows.front().size(); ++column) {
    std::size_t cell = 0;
    for (Row const& row : rows) cell = std::max(cell, shownWidth(row[column]));
    width += 2 + cell;
  }
  return width;
}

void printNumbers(std::ostream& out, Scan const& scan, BoxOfRuns const& box)
{
  std::vector<BoxParameter const*> const parameters = restrictedOf(box, false);
  if (parameters.empty()) return;
  std::vector<Row> rows = {
      {"parameter", "low", "high", "p low", "p high", "halves", "low 5..95%", "high 5..95%"}};
  for (auto const* parameter : parameters) rows.push_back(rowOf(*parameter, "", box.method.resamples));
  constexpr std::size_t leastName = 9;
  std::size_t const most = widest - std::min(widest - leastName, widthWithoutNames(rows));
  for (std::size_t i = 0; i < parameters.size(); ++i)
    rows[i + 1].front() = nameText(scan, *parameters[i], most);
  printAligned(out, rows, 1);
}

std::string listOf(std::vector<BoxText> const& texts, bool inside, std::size_t most)
{
  std::string list;
  for (BoxText const& text : texts)
    if (text.isInside == inside) list += (list.empty() ? "" : ", ") + printable(text.text);
  return shortened(list, most);
}

void printTexts(std::ostream& out, Scan const& scan, BoxOfRuns const& box)
{
  constexpr std::size_t mostName = 30;
  constexpr std::size_t mostList = 60;
  for (auto const* parameter : restrictedOf(box, true)) {
    out << nameText(scan, *parameter, mostName) << " is " << listOf(parameter->texts, true, mostList)
        << "\n  without " << listOf(parameter->texts, false, mostList) << "; p "
        << quasiPText(parameter->quasiP) << ", " << percent(parameter->restrictedIn, box.method.resamples)
        << " of the halves\n";
  }
}

/// Parameters that most halves restrict and the box does not.
void printOthers(std::ostream& out, BoxOfRuns const& box)
{
  std::string names;
  for (BoxParameter const& parameter : box.parameters)
    if (!parameter.isRestricted && 2 * parameter.restrictedIn > box.method.resamples)
      names += (names.empty() ? "" : ", ") + printable(parameter.name) + " (" +
               percent(parameter.restrictedIn, box.method.resamples) + ")";
  if (!names.empty()) out << "restricted by most halves, not by the box: " << names << '\n';
}

void printMeasure(std::ostream& out, char const* name, double value, BoxSpreads const& halves,
                  std::string const& counts)
{
  std::string const others = halves.count == 0 ? "" : "halves " + spreadText(halves, "%.3f");
  out << name << share(value) << "  " << counts << (others.empty() ? "" : "; ") << others << '\n';
}

void printQuality(std::ostream& out, BoxOfRuns const& box)
{
  auto const of = [](std::size_t part, std::size_t whole) {
    return std::to_string(part) + " of " + std::to_string(whole);
  };
  printMeasure(out, "coverage    ", box.quality.coverage, box.coverage,
               of(box.quality.passing, box.all.passing) + " passing runs are inside");
  printMeasure(out, "density     ", box.quality.density, box.density,
               of(box.quality.passing, box.quality.runs) + " runs inside pass, " + share(box.all.density) +
                   " of all");
  printMeasure(out, "mass        ", box.quality.mass, box.mass, of(box.quality.runs, box.all.runs) + " runs");
  out << "restricted  " << of(box.restricted, box.parameters.size()) << " parameters\n";
}

void printExplanation(std::ostream& out, BoxOfRuns const& box)
{
  if (box.restricted > 0)
    out << "p       quasi-p: how likely at least as many runs inside pass if the limit makes no difference; "
           "no\n"
           "        error rate, since limits are sought that make it small\n";
  if (box.method.resamples > 0)
    out << "halves  " << box.method.resamples << " random halves of the runs (seed " << box.method.seed
        << "): how many restrict the parameter, 5..95 % of\n"
           "        their limits, and of their coverage, density and mass on the other half\n";
}

Row stepRow(std::string mark, std::size_t restricted, BoxQuality const& quality)
{
  return {std::move(mark),
          std::to_string(restricted),
          share(quality.coverage),
          share(quality.density),
          share(quality.mass),
          std::to_string(quality.runs),
          std::to_string(quality.passing)};
}

void printPath(std::ostream& out, BoxOfRuns const& box)
{
  constexpr std::size_t mostRows = 12;
  std::vector<Row> rows = {{"step", "parameters", "coverage", "density", "mass", "runs", "passing", ""}};
  for (std::size_t const step : shownSteps(box, mostRows)) {
    rows.push_back(stepRow(std::to_string(step), box.path[step].restricted, box.path[step].quality));
    rows.back().emplace_back(step == box.chosen ? "* chosen" : "");
  }
  rows.push_back(stepRow("box", box.restricted, box.quality));
  bool const isChosen = box.quality.runs == box.path[box.chosen].quality.runs;
  rows.back().emplace_back(isChosen ? "" : "made of the chosen one");
  // The remarks begin at their left end.
  std::size_t longest = 0;
  for (Row const& row : rows) longest = std::max(longest, row.back().size());
  for (Row& row : rows) row.back().resize(longest, ' ');
  printAligned(out, rows);
}

/// For a shell, within double quotes if nothing in it means something there.
std::string shellWord(std::string const& text)
{
  if (text.find_first_of("\"$`\\!") == std::string::npos) return '"' + text + '"';
  std::string word = "'";
  for (char const c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + '\'';
}

/// How far a step lies from those that are shown already, in the plane of coverage and density.
double distance(BoxOfRuns const& box, std::vector<std::size_t> const& shown, std::size_t step)
{
  double nearest = std::numeric_limits<double>::infinity();
  for (std::size_t const other : shown) {
    BoxQuality const& a = box.path[step].quality;
    BoxQuality const& b = box.path[other].quality;
    nearest = std::min(nearest, std::hypot(a.coverage - b.coverage, a.density - b.density));
  }
  return nearest;
}

/// Adds steps, each time the one that is farthest from those there are.
void spread(BoxOfRuns const& box, std::vector<std::size_t>& shown, std::vector<std::size_t> const& candidates,
            std::size_t most)
{
  while (shown.size() < most) {
    std::size_t best = 0;
    double farthest = 0.0;
    for (std::size_t const step : candidates)
      if (double const d = distance(box, shown, step); d > farthest) {
        farthest = d;
        best = step;
      }
    if (farthest == 0.0) return;
    shown.push_back(best);
  }
}

nlohmann::ordered_json spreadJson(BoxSpreads const& spread)
{
  return {{"halves", spread.count},
          {"p5", numberJson(spread.low)},
          {"p50", numberJson(spread.median)},
          {"p95", numberJson(spread.high)}};
}

void addQuality(nlohmann::ordered_json& json, BoxQuality const& quality)
{
  json["runs"] = quality.runs;
  json["passing"] = quality.passing;
  json["coverage"] = numberJson(quality.coverage);
  json["density"] = numberJson(quality.density);
  json["mass"] = numberJson(quality.mass);
}

nlohmann::ordered_json parameterJson(BoxParameter const& parameter)
{
  nlohmann::ordered_json json = {{"name", parameter.name},
                                 {"type", parameter.isText ? "text" : "number"},
                                 {"restricted", parameter.isRestricted},
                                 {"n_missing", parameter.missing}};
  if (parameter.isText) {
    json["texts"] = nlohmann::ordered_json::array();
    for (BoxText const& text : parameter.texts)
      json["texts"].push_back(
          {{"text", text.text}, {"inside", text.isInside}, {"left_out_in_halves", text.leftOut}});
  } else {
    json["low"] = numberJson(parameter.low);
    json["high"] = numberJson(parameter.high);
    json["quasi_p_low"] = numberJson(parameter.quasiPLow);
    json["quasi_p_high"] = numberJson(parameter.quasiPHigh);
  }
  json["quasi_p"] = numberJson(parameter.quasiP);
  json["restricted_in_halves"] = parameter.restrictedIn;
  if (parameter.isText) return json;
  json["low_in_halves"] = spreadJson(parameter.lows);
  json["high_in_halves"] = spreadJson(parameter.highs);
  return json;
}

nlohmann::ordered_json stepJson(BoxPathStep const& step)
{
  nlohmann::ordered_json json = {{"restricted", step.restricted}};
  if (step.side != BoxSide::None) {
    json["parameter"] = step.name;
    json["side"] = boxSideName(step.side);
    json["limit"] = step.side == BoxSide::Text ? nlohmann::ordered_json(step.text) : numberJson(step.limit);
  }
  addQuality(json, step.quality);
  return json;
}

nlohmann::ordered_json methodJson(BoxMethod const& method)
{
  nlohmann::ordered_json json = {{"search", "patient rule induction: peeling, pasting, quasi-p"},
                                 {"peel", method.peel},
                                 {"least_mass", method.leastMass}};
  json["choice"] = method.leastCoverage ? "densest of least coverage" : "knee";
  json["least_coverage"] =
      method.leastCoverage ? nlohmann::ordered_json(*method.leastCoverage) : nlohmann::ordered_json();
  json["largest_quasi_p"] =
      method.largestQuasiP ? nlohmann::ordered_json(*method.largestQuasiP) : nlohmann::ordered_json();
  json["resamples"] = method.resamples;
  json["seed"] = method.seed;
  return json;
}

} // namespace

std::vector<std::size_t> shownSteps(BoxOfRuns const& box, std::size_t most)
{
  std::vector<std::size_t> all(box.path.size());
  for (std::size_t step = 0; step < all.size(); ++step) all[step] = step;
  if (all.size() <= most) return all;
  std::vector<std::size_t> changes;
  for (std::size_t step = 0; step + 1 < all.size(); ++step)
    if (box.path[step + 1].restricted > box.path[step].restricted) changes.push_back(step);
  std::vector<std::size_t> shown = {0};
  for (std::size_t const step : {box.chosen, all.back()})
    if (std::find(shown.begin(), shown.end(), step) == shown.end()) shown.push_back(step);
  spread(box, shown, changes, most);
  spread(box, shown, all, most);
  std::sort(shown.begin(), shown.end());
  return shown;
}

std::string gateWords(std::vector<Gate> const& gates)
{
  std::string words;
  for (Gate const& gate : gates)
    words += (words.empty() ? "--gate " : " --gate ") + shellWord(printable(formatGate(gate)));
  return words;
}

void printBox(std::ostream& out, Scan const& scan, BoxOfRuns const& box, std::vector<Gate> const& gates)
{
  if (box.restricted == 0) out << "no limit of a parameter matters: the box is all runs\n";
  printNumbers(out, scan, box);
  printTexts(out, scan, box);
  printOthers(out, box);
  out << '\n';
  printQuality(out, box);
  out << '\n';
  printPath(out, box);
  out << '\n';
  printExplanation(out, box);
  if (!gates.empty()) out << '\n' << gateWords(gates) << '\n';
}

void printBoxCsv(std::ostream& out, BoxOfRuns const& box)
{
  BoxMethod const& method = box.method;
  std::string common = ',' + exact(box.all.density);
  for (double const value : {method.peel, method.leastMass,
                             method.leastCoverage.value_or(std::numeric_limits<double>::quiet_NaN())})
    common += ',' + exact(value);
  common += ',' + std::to_string(method.seed) + "," RUNSIEVE_VERSION "\n";
  out << "step,parameter,side,limit,restricted,runs,passing,coverage,density,mass,chosen,base_density,peel,"
         "least_mass,least_coverage,seed,version\n";
  for (std::size_t i = 0; i < box.path.size(); ++i) {
    BoxPathStep const& step = box.path[i];
    out << i << ',' << (step.side == BoxSide::None ? "" : quotedField(step.name)) << ','
        << boxSideName(step.side) << ','
        << (step.side == BoxSide::Text ? quotedField(step.text) : exact(step.limit)) << ',' << step.restricted
        << ',' << step.quality.runs << ',' << step.quality.passing;
    for (double const value : {step.quality.coverage, step.quality.density, step.quality.mass})
      out << ',' << exact(value);
    out << ',' << (i == box.chosen ? "true" : "false") << common;
  }
}

nlohmann::ordered_json boxJson(BoxOfRuns const& box, std::vector<Gate> const& gates)
{
  nlohmann::ordered_json json;
  json["method"] = methodJson(box.method);
  json["base_density"] = numberJson(box.all.density);
  nlohmann::ordered_json& found = json["box"];
  addQuality(found, box.quality);
  found["restricted"] = box.restricted;
  found["gates"] = nlohmann::ordered_json::array();
  for (Gate const& gate : gates) found["gates"].push_back(formatGate(gate));
  json["halves"] = {{"coverage", spreadJson(box.coverage)},
                    {"density", spreadJson(box.density)},
                    {"mass", spreadJson(box.mass)}};
  json["parameters"] = nlohmann::ordered_json::array();
  for (BoxParameter const& parameter : box.parameters) json["parameters"].push_back(parameterJson(parameter));
  json["chosen_step"] = box.chosen;
  json["path"] = nlohmann::ordered_json::array();
  for (BoxPathStep const& step : box.path) json["path"].push_back(stepJson(step));
  json["left_out"] = leftOutJson(box.leftOut);
  return json;
}

} // namespace runsieve::app
