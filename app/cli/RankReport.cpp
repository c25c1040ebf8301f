#include "app/cli/RankReport.h"

#include "app/cli/WrappedText.h"

#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/ShownText.h>
#include <runsieve/core/write/RowWriter.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <iterator>
#include <ostream>

namespace runsieve::app {

namespace {

constexpr std::size_t widest = 100;
constexpr std::size_t gap = 2;

struct Row
{
  ParameterComparison const& comparison;
  Adjustment adjustment;
  SureDistance const* sure; ///< null without stability
};

enum class Shown
{
  Always,
  IfRoom,       ///< left out of a table that would be too wide, the last first
  WithStability ///< left out without
};

struct Column
{
  char const* title;
  int width;
  Shown shown;
  std::string (*text)(Row const&);
};

std::string rounded(double value)
{
  return formatted(value, "%.4g", "-");
}

std::string placeText(ParameterComparison const& c)
{
  constexpr std::size_t most = 9;
  return c.isText ? shortened(printable(c.text), most) : rounded(c.value);
}

std::string rangeText(SureDistance const& sure)
{
  if (std::isnan(sure.low)) return "-";
  return formatted(sure.low, "%.3f", "-") + ".." + formatted(sure.high, "%.3f", "-");
}

constexpr std::array<Column, 10> columns = {{
    {"d", 6, Shown::Always, [](Row const& r) { return formatted(r.comparison.d, "%+.3f", "-"); }},
    {"|d| 95 %", 12, Shown::WithStability, [](Row const& r) { return rangeText(*r.sure); }},
    {"top", 5, Shown::WithStability,
     [](Row const& r) { return formatted(100.0 * r.sure->topShare, "%.0f%%", "-"); }},
    {"at", 9, Shown::IfRoom, [](Row const& r) { return placeText(r.comparison); }},
    {"p", 9, Shown::Always, [](Row const& r) { return pText(r.comparison.p, r.comparison.isBelow); }},
    {"p adj", 9, Shown::Always,
     [](Row const& r) {
       return pText(adjustedP(r.comparison, r.adjustment)) + (r.comparison.significant ? " *" : "  ");
     }},
    {"med. passing", 12, Shown::Always, [](Row const& r) { return rounded(r.comparison.medianPassing); }},
    {"med. others", 11, Shown::Always, [](Row const& r) { return rounded(r.comparison.medianOthers); }},
    {"shift", 6, Shown::IfRoom,
     [](Row const& r) { return formatted(r.comparison.medianShift, "%+.2f", "-"); }},
    {"kept", 5, Shown::IfRoom,
     [](Row const& r) { return formatted(100.0 * r.comparison.rangeShare, "%.0f%%", "-"); }},
}};

/// The columns that fit beside names of a width.
std::vector<Column> columnsBeside(std::size_t nameWidth, bool withStability)
{
  std::vector<Column> chosen;
  std::copy_if(columns.begin(), columns.end(), std::back_inserter(chosen),
               [&](Column const& column) { return withStability || column.shown != Shown::WithStability; });
  auto const width = [&] {
    std::size_t sum = nameWidth;
    for (Column const& column : chosen) sum += gap + static_cast<std::size_t>(column.width);
    return sum;
  };
  while (width() > widest) {
    auto const last = std::find_if(chosen.rbegin(), chosen.rend(),
                                   [](Column const& column) { return column.shown == Shown::IfRoom; });
    if (last == chosen.rend()) break;
    chosen.erase(std::next(last).base());
  }
  return chosen;
}

} // namespace

std::string formatted(double value, char const* format, char const* missing)
{
  if (std::isnan(value)) return missing;
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  bool const roundsToZero = std::signbit(value) && std::strtod(text, nullptr) == 0.0;
  if (roundsToZero) std::snprintf(text, sizeof text, format, 0.0); // "-0.00" claims a direction
  return text;
}

std::string percentText(double share)
{
  return formatted(100.0 * share, "%.3g", "-") + " %";
}

std::string exact(double value)
{
  return std::isnan(value) ? std::string() : decimal(value + 0.0); // no minus zero
}

void printField(std::ostream& out, std::string const& text, std::size_t width, bool left)
{
  std::size_t const taken = shownWidth(text);
  std::string const blanks(width > taken ? width - taken : 0, ' ');
  out << (left ? text + blanks : blanks + text);
}

nlohmann::ordered_json numberJson(double value)
{
  if (std::isnan(value)) return nullptr;
  if (std::isinf(value)) return value < 0.0 ? "-inf" : "inf";
  return value;
}

std::string pText(double p, bool isBelow)
{
  if (isBelow) return "< " + formatted(p, "%.0e", "-");
  return formatted(p, p < 9.5e-4 ? "%.1e" : "%.2g", "-");
}

void printRankTable(std::ostream& out, std::vector<ParameterComparison> const& ranked, Adjustment adjustment,
                    std::vector<SureDistance> const* stability)
{
  constexpr std::size_t mostName = 45;
  std::size_t nameWidth = 9;
  for (ParameterComparison const& r : ranked)
    nameWidth = std::max(nameWidth, std::min(mostName, shownWidth(printable(r.name))));
  std::vector<Column> const shown = columnsBeside(nameWidth, stability != nullptr);
  printField(out, "parameter", nameWidth, true);
  for (Column const& column : shown) {
    bool const starred = std::string(column.title) == "p adj";
    out << std::string(gap, ' ');
    printField(out, column.title + std::string(starred ? "  " : ""), static_cast<std::size_t>(column.width));
  }
  out << '\n';
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    printField(out, shortened(printable(ranked[i].name), mostName), nameWidth, true);
    Row const row{ranked[i], adjustment, stability == nullptr ? nullptr : &(*stability)[i]};
    for (Column const& column : shown) {
      out << std::string(gap, ' ');
      printField(out, column.text(row), static_cast<std::size_t>(column.width));
    }
    out << '\n';
  }
}

void printNotCompared(std::ostream& out, std::size_t notComplete)
{
  if (notComplete > 0)
    out << notComplete << (notComplete == 1 ? " run is" : " runs are")
        << " not complete and not compared (a gate on the status compares them too)\n";
}

void printMethod(std::ostream& out, ComparisonMethod const& method, std::size_t tests,
                 std::size_t permutations, double noiseFloor, bool isSettled)
{
  // The largest |d| of a permutation is that of one set of gates; its p is multiplied.
  std::size_t const counted =
      method.adjustment == Adjustment::Permutation ? tests / method.gatesTried : tests;
  std::string const ofTests = " of " + std::to_string(counted) + (counted == 1 ? " test" : " tests");
  std::string const tried = method.gatesTried > 1
                                ? ", for " + std::to_string(method.gatesTried) + " sets of gates tried"
                                : std::string();
  out << "d      largest distance of the distributions, each run counted once; + where passing runs are "
         "larger\n"
         "p      two-sample Kolmogorov-Smirnov test of this parameter alone (of texts: permutations)\np adj "
         " ";
  switch (method.adjustment) {
  case Adjustment::Permutation:
    out << "largest |d|" << ofTests << " in " << permutations << " permutations (seed " << method.seed << ')';
    break;
  case Adjustment::Holm:
    out << "Holm" << ofTests;
    break;
  case Adjustment::BenjaminiHochberg:
    out << "false discovery rate (Benjamini-Hochberg)" << ofTests;
    break;
  case Adjustment::None:
    out << "p, not adjusted";
    break;
  }
  out << (method.adjustment == Adjustment::None ? "" : tried) << '\n';
  if (!std::isnan(noiseFloor))
    out << "floor  chance alone exceeds |d| = " << formatted(noiseFloor, "%.3f", "-") << " in "
        << percentText(cutOf(method)) << " of the permutations\n";
  if (!isSettled && method.adjustment == Adjustment::Permutation)
    out << "note   a p adj is close to the threshold; --permutations makes more\n";
}

void printWarnings(std::ostream& out, std::vector<ComparisonWarning> const& warnings)
{
  for (ComparisonWarning const& warning : warnings)
    printWrapped(out, "warning  ", {printable(warning.text), printable(warning.advice)}, widest);
}

nlohmann::ordered_json warningsJson(std::vector<ComparisonWarning> const& warnings)
{
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  for (ComparisonWarning const& warning : warnings)
    json.push_back({{"kind", warning.kind}, {"text", warning.text}, {"advice", warning.advice}});
  return json;
}

nlohmann::ordered_json leftOutJson(std::vector<LeftOutParameter> const& leftOut)
{
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  for (LeftOutParameter const& left : leftOut) json.push_back({{"name", left.name}, {"reason", left.reason}});
  return json;
}

nlohmann::ordered_json methodJson(ComparisonMethod const& method, std::size_t family,
                                  std::size_t permutations, double noiseFloor, bool isSettled)
{
  return {{"test", "two-sample Kolmogorov-Smirnov, two-sided, conditional on ties"},
          {"adjust", adjustmentName(method.adjustment)},
          {"p_threshold", method.thresholds.largestP},
          {"ks_threshold", method.thresholds.smallestD},
          {"family", family},
          {"gates_tried", method.gatesTried},
          {"permutations", permutations},
          {"most_permutations", std::max(method.permutations, method.mostPermutations)},
          {"seed", method.seed},
          {"noise_floor", numberJson(noiseFloor)},
          {"settled", isSettled}};
}

nlohmann::ordered_json comparisonJson(ParameterComparison const& c, Adjustment adjustment,
                                      SureDistance const* sure)
{
  nlohmann::ordered_json json = {{"name", c.name},
                                 {"type", c.isText ? "text" : "number"},
                                 {"n_passing", c.passing},
                                 {"n_others", c.others},
                                 {"d", numberJson(c.d)}};
  json["at"] = c.isText ? (c.text.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(c.text))
                        : numberJson(c.value);
  json["p"] = numberJson(c.p);
  json["p_is_bound"] = c.isBelow;
  json["p_method"] = pSourceName(c.source);
  json["p_holm"] = numberJson(c.pHolm);
  json["p_bh"] = numberJson(c.pBenjaminiHochberg);
  json["p_perm"] = numberJson(c.pPermutation);
  json["p_adjusted"] = numberJson(adjustedP(c, adjustment));
  json["median_passing"] = numberJson(c.medianPassing);
  json["median_others"] = numberJson(c.medianOthers);
  json["area"] = numberJson(c.area);
  json["median_shift"] = numberJson(c.medianShift);
  json["range_kept"] = numberJson(c.rangeShare);
  json["significant"] = c.significant;
  json["d_low"] = sure == nullptr ? nlohmann::ordered_json() : numberJson(sure->low);
  json["d_high"] = sure == nullptr ? nlohmann::ordered_json() : numberJson(sure->high);
  json["top_share"] = sure == nullptr ? nlohmann::ordered_json() : numberJson(sure->topShare);
  return json;
}

void printRankCsv(std::ostream& out, Comparison const& comparison, ComparisonStability const* stability)
{
  ComparisonMethod const& method = comparison.method;
  std::string const common =
      std::string(",") + adjustmentName(method.adjustment) + ',' + std::to_string(comparison.family) + ',' +
      std::to_string(comparison.permutations) + ',' + std::to_string(method.seed) + ',' +
      exact(comparison.noiseFloor) + ',' + (comparison.isSettled ? "true," : "false,") +
      exact(method.thresholds.largestP) + ',' + exact(method.thresholds.smallestD) + ',' +
      std::to_string(method.gatesTried) + "," RUNSIEVE_VERSION;
  out << "parameter,n_passing,n_others,d,at,p,p_is_bound,p_method,p_holm,p_bh,p_perm,p_adjusted,median_"
         "passing,median_others,area,median_shift,range_kept,significant,adjust,family,permutations,seed,"
         "noise_floor,settled,p_threshold,ks_threshold,gates_tried,version"
      << (stability == nullptr ? "\n" : ",d_low,d_high,top_share,top,resamples\n");
  for (std::size_t i = 0; i < comparison.parameters.size(); ++i) {
    ParameterComparison const& c = comparison.parameters[i];
    out << quotedField(c.name) << ',' << c.passing << ',' << c.others << ',' << exact(c.d) << ','
        << (c.isText ? quotedField(c.text) : exact(c.value)) << ',' << exact(c.p) << ','
        << (c.isBelow ? "true" : "false") << ',' << pSourceName(c.source);
    for (double const value : {c.pHolm, c.pBenjaminiHochberg, c.pPermutation, adjustedP(c, method.adjustment),
                               c.medianPassing, c.medianOthers, c.area, c.medianShift, c.rangeShare})
      out << ',' << exact(value);
    out << ',' << (c.significant ? "true" : "false") << common;
    if (stability != nullptr) {
      SureDistance const& sure = stability->parameters[i];
      out << ',' << exact(sure.low) << ',' << exact(sure.high) << ',' << exact(sure.topShare) << ','
          << stability->method.top << ',' << stability->method.resamples;
    }
    out << '\n';
  }
}

} // namespace runsieve::app
