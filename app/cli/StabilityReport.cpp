#include "app/cli/StabilityReport.h"

#include "app/cli/RankReport.h"

#include <runsieve/core/text/ShownText.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <ostream>
#include <string>

namespace runsieve::app {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t mostName = 23; // beside three ranges and all runs 100 wide
constexpr std::size_t rangeWidth = 21;
constexpr std::size_t numberWidth = 6;

using Cell = std::function<std::string(ComparisonAtSize const&)>;

std::string threeDigits(double value)
{
  return formatted(value, "%.3f", "-");
}

/// All runs are one sample: there is no range.
bool isRange(ComparisonAtSize const& size)
{
  return size.share < 1.0;
}

std::string distanceText(ComparisonAtSize const& size, std::size_t parameter)
{
  DistanceAtSize const& d = size.parameters[parameter];
  std::string text = threeDigits(d.median);
  if (isRange(size) && !std::isnan(d.median))
    text += " (" + threeDigits(d.low) + ".." + threeDigits(d.high) + ')';
  return text + (size.isBeyond(parameter) ? '*' : ' ');
}

void printLine(std::ostream& out, std::vector<ComparisonAtSize> const& sizes, std::string const& name,
               std::size_t nameWidth, Cell const& cell)
{
  printField(out, shortened(name, mostName), nameWidth, true);
  for (ComparisonAtSize const& size : sizes) {
    out << std::string(gap, ' ');
    printField(out, cell(size), isRange(size) ? rangeWidth : numberWidth);
  }
  out << '\n';
}

} // namespace

void printStabilityMethod(std::ostream& out, ComparisonStability const& stability)
{
  StabilityMethod const& method = stability.method;
  out << "|d| " << percentText(method.confidence) << "  confidence interval of |d|, from " << method.resamples
      << " resamples of the runs (seed " << method.seed
      << ")\ntop    share of the resamples in which the parameter is "
      << (method.top == 1 ? std::string("the one") : "among the " + std::to_string(method.top))
      << " with the largest |d|\n";
}

void printEnoughRuns(std::ostream& out, Comparison const& comparison, ComparisonStability const& stability)
{
  if (stability.sizes.empty()) {
    out << "enough runs?  " << printable(stability.verdictText) << '\n';
    return;
  }
  std::size_t const shown = std::min(mostCurves, comparison.parameters.size());
  std::vector<ComparisonAtSize> const& sizes = stability.sizes;
  std::size_t nameWidth = std::string("noise floor").size();
  for (std::size_t i = 0; i < shown; ++i)
    nameWidth = std::max(nameWidth, std::min(mostName, shownWidth(printable(comparison.parameters[i].name))));
  out << "enough runs?  |d| in " << stability.method.subsamples
      << " samples of a part of the runs: median (5 % .. 95 %)\n";
  printLine(out, sizes, "", nameWidth,
            [](ComparisonAtSize const& size) { return percentText(size.share) + ' '; });
  printLine(out, sizes, "passing", nameWidth,
            [](ComparisonAtSize const& size) { return std::to_string(size.passing) + ' '; });
  printLine(out, sizes, "others", nameWidth,
            [](ComparisonAtSize const& size) { return std::to_string(size.others) + ' '; });
  for (std::size_t i = 0; i < shown; ++i)
    printLine(out, sizes, printable(comparison.parameters[i].name), nameWidth,
              [i](ComparisonAtSize const& size) { return distanceText(size, i); });
  printLine(out, sizes, "noise floor", nameWidth,
            [](ComparisonAtSize const& size) { return threeDigits(size.noiseFloor) + ' '; });
  out << "* beyond the noise floor of so many runs in at least 95 % of the samples\n"
      << printable(stability.verdictText) << '\n';
}

nlohmann::ordered_json stabilityJson(ComparisonStability const& stability)
{
  StabilityMethod const& method = stability.method;
  return {{"resamples", method.resamples},
          {"confidence", method.confidence},
          {"top", method.top},
          {"seed", method.seed}};
}

nlohmann::ordered_json enoughRunsJson(Comparison const& comparison, ComparisonStability const& stability)
{
  nlohmann::ordered_json json = {{"verdict", enoughRunsName(stability.verdict)},
                                 {"text", stability.verdictText},
                                 {"subsamples", stability.method.subsamples},
                                 {"seed", stability.method.seed}};
  json["sizes"] = nlohmann::json::array();
  for (ComparisonAtSize const& size : stability.sizes) {
    nlohmann::ordered_json entry = {{"share", size.share},
                                    {"passing", size.passing},
                                    {"others", size.others},
                                    {"noise_floor", numberJson(size.noiseFloor)}};
    entry["parameters"] = nlohmann::json::array();
    for (std::size_t i = 0; i < size.parameters.size(); ++i)
      entry["parameters"].push_back({{"name", comparison.parameters[i].name},
                                     {"d_5", numberJson(size.parameters[i].low)},
                                     {"d_median", numberJson(size.parameters[i].median)},
                                     {"d_95", numberJson(size.parameters[i].high)},
                                     {"beyond_noise", size.isBeyond(i)}});
    json["sizes"].push_back(std::move(entry));
  }
  return json;
}

} // namespace runsieve::app
