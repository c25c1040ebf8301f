#include "app/cli/PairReport.h"

#include "app/cli/AlignedTable.h"
#include "app/cli/RankReport.h"

#include <runsieve/core/text/ShownText.h>
#include <runsieve/core/write/RowWriter.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <utility>
#include <vector>

namespace runsieve::app {

namespace {

constexpr std::size_t widest = 100;
constexpr std::size_t gap = 2;
constexpr char unseen[] =
    "what is not monotone, as |x| < y or a ring, and what takes three parameters at once";

struct Column
{
  char const* title;
  std::size_t width;
  std::string (*text)(ParameterPair const&);
};

std::string correlation(double r)
{
  return formatted(r, "%+.3f", "-");
}

constexpr std::array<Column, 5> columns = {{
    {"r passing", 9, [](ParameterPair const& pair) { return correlation(pair.rPassing); }},
    {"r others", 8, [](ParameterPair const& pair) { return correlation(pair.rOthers); }},
    {"difference", 10, [](ParameterPair const& pair) { return correlation(pair.difference()); }},
    {"by design", 9,
     [](ParameterPair const& pair) { return pair.byDesign ? correlation(pair.rAll) : std::string(); }},
    {"p adj  ", 9,
     [](ParameterPair const& pair) { return pText(pair.p) + (pair.significant ? " *" : "  "); }},
}};

bool hasByDesign(PairComparisons const& comparison)
{
  return std::any_of(comparison.pairs.begin(), comparison.pairs.end(),
                     [](ParameterPair const& pair) { return pair.byDesign; });
}

/// The tests that a p is adjusted for.
std::size_t familyOf(PairComparisons const& comparison)
{
  return comparison.pairs.size() * comparison.method.gatesTried;
}

/// Without the column of designs if nothing stands in it.
std::vector<Column> columnsFor(PairComparisons const& comparison)
{
  std::vector<Column> chosen(columns.begin(), columns.end());
  if (!hasByDesign(comparison)) chosen.erase(chosen.begin() + 3);
  return chosen;
}

/// Width of each of the two names of a pair.
std::size_t mostName(std::vector<Column> const& shown)
{
  std::size_t taken = gap;
  for (Column const& column : shown) taken += gap + column.width;
  return (widest - taken) / 2;
}

} // namespace

void printPairTable(std::ostream& out, PairComparisons const& comparison, std::size_t top)
{
  std::size_t const shown = std::min(top, comparison.pairs.size());
  std::vector<Column> const chosen = columnsFor(comparison);
  auto const nameText = [most = mostName(chosen)](std::string const& name) {
    return shortened(printable(name), most);
  };
  std::vector<std::vector<std::string>> rows = {{"parameter", "with"}};
  for (Column const& column : chosen) rows[0].emplace_back(column.title);
  for (std::size_t i = 0; i < shown; ++i) {
    ParameterPair const& pair = comparison.pairs[i];
    std::vector<std::string> row = {nameText(pair.first), nameText(pair.second)};
    for (Column const& column : chosen) row.push_back(column.text(pair));
    rows.push_back(std::move(row));
  }
  printAligned(out, rows, 2);
  if (shown < comparison.pairs.size())
    out << "the strongest " << shown << " of " << comparison.pairs.size()
        << " pairs; --top shows more, --format csv all\n";
}

void printPairMethod(std::ostream& out, PairComparisons const& comparison)
{
  ComparisonMethod const& method = comparison.method;
  out << "r       Spearman's correlation; r passing is tested, the difference to the others is not\n";
  if (hasByDesign(comparison))
    out << "design  r in all runs, if they are not sampled independently; the test allows for it\n";
  out << "p adj   ";
  if (comparison.permutations == 0)
    out << "none: all runs pass";
  else
    out << "largest |r| of " << comparison.pairs.size() << (comparison.pairs.size() == 1 ? " pair" : " pairs")
        << " in " << comparison.permutations << " permutations (seed " << method.seed << ')';
  if (method.gatesTried > 1) out << ", " << method.gatesTried << " sets of gates tried";
  out << '\n';
  if (!std::isnan(comparison.noiseFloor))
    out << "floor   chance alone exceeds |r| = " << formatted(comparison.noiseFloor, "%.3f", "-") << " in "
        << percentText(cutOf(method)) << " of the permutations\n";
  out << "unseen  " << unseen << '\n';
  if (!comparison.isSettled) out << "note    a p adj is close to the threshold; --permutations makes more\n";
}

nlohmann::ordered_json pairMethodJson(PairComparisons const& comparison)
{
  ComparisonMethod const& method = comparison.method;
  return {{"test", "Spearman's rank correlation in the passing runs, two-sided"},
          {"adjust", "permutation"},
          {"p_threshold", method.thresholds.largestP},
          {"family", familyOf(comparison)},
          {"gates_tried", method.gatesTried},
          {"permutations", comparison.permutations},
          {"most_permutations", std::max(method.permutations, method.mostPermutations)},
          {"seed", method.seed},
          {"noise_floor", numberJson(comparison.noiseFloor)},
          {"settled", comparison.isSettled},
          {"unseen", unseen}};
}

nlohmann::ordered_json pairJson(ParameterPair const& pair)
{
  return {{"first", pair.first},
          {"second", pair.second},
          {"n_passing", pair.passing},
          {"n_others", pair.others},
          {"r_passing", numberJson(pair.rPassing)},
          {"r_others", numberJson(pair.rOthers)},
          {"difference", numberJson(pair.difference())},
          {"r_all", numberJson(pair.rAll)},
          {"by_design", pair.byDesign},
          {"r_expected", numberJson(pair.expected)},
          {"statistic", numberJson(pair.statistic)},
          {"p_adjusted", numberJson(pair.p)},
          {"significant", pair.significant}};
}

void printPairCsv(std::ostream& out, PairComparisons const& comparison)
{
  ComparisonMethod const& method = comparison.method;
  std::string const common =
      ',' + std::to_string(familyOf(comparison)) + ',' + std::to_string(comparison.permutations) + ',' +
      std::to_string(method.seed) + ',' + exact(comparison.noiseFloor) +
      (comparison.isSettled ? ",true," : ",false,") + exact(method.thresholds.largestP) + ',' +
      std::to_string(method.gatesTried) + "," RUNSIEVE_VERSION "\n";
  out << "first,second,n_passing,n_others,r_passing,r_others,difference,r_all,by_design,r_expected,statistic,"
         "p_adjusted,significant,family,permutations,seed,noise_floor,settled,p_threshold,gates_tried,"
         "version\n";
  for (ParameterPair const& pair : comparison.pairs) {
    out << quotedField(pair.first) << ',' << quotedField(pair.second) << ',' << pair.passing << ','
        << pair.others;
    for (double const value : {pair.rPassing, pair.rOthers, pair.difference(), pair.rAll})
      out << ',' << exact(value);
    out << ',' << (pair.byDesign ? "true" : "false");
    for (double const value : {pair.expected, pair.statistic, pair.p}) out << ',' << exact(value);
    out << ',' << (pair.significant ? "true" : "false") << common;
  }
}

std::string pairTitle(ParameterPair const& pair)
{
  if (std::isnan(pair.rPassing)) return "no correlation";
  std::string title = "r = " + formatted(pair.rPassing, "%+.2f", "-");
  if (!std::isnan(pair.rOthers)) title += " (others " + formatted(pair.rOthers, "%+.2f", "-") + ")";
  if (!std::isnan(pair.p)) title += ", p = " + pText(pair.p) + (pair.significant ? " *" : "");
  return title;
}

} // namespace runsieve::app
