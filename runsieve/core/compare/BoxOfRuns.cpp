#include <runsieve/core/compare/BoxOfRuns.h>

#include <runsieve/core/compare/BoxTableOfRuns.h>
#include <runsieve/core/compare/BoxWarnings.h>
#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/RoundLimit.h>
#include <runsieve/core/inference/BoxChoice.h>
#include <runsieve/core/inference/BoxSignificance.h>
#include <runsieve/core/inference/BoxStability.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace runsieve {

namespace {

/// Limits that keep no run out go for any largest quasi-p-value.
constexpr double noneButIdle = 1.0;

BoxQuality qualityOf(BoxMeasures const& measures)
{
  return {measures.inside.runs, measures.inside.passing, measures.coverage(), measures.density(),
          measures.mass()};
}

BoxSpreads spreadsOf(BoxSpread const& spread)
{
  return {spread.count, spread.low, spread.median, spread.high};
}

void checkMethod(BoxMethod const& method)
{
  if (method.largestQuasiP && !(*method.largestQuasiP >= 0.0 && *method.largestQuasiP <= 1.0))
    throw std::invalid_argument("the largest quasi-p-value of a box is not in 0 to 1");
}

template <class Found> Found finished(std::optional<Found> found)
{
  if (!found) throw ComparisonCancelled();
  return std::move(*found);
}

/// All steps of the search, on one table.
class BoxSearch
{
public:
  BoxSearch(ComparedRuns const& compared, std::vector<std::uint8_t> const& mask, BoxMethod const& method,
            ComparisonWork const& work)
      : runs(compared), columns(compared), table(columns.table()),
        sample(mask.data(), mask.size()), options{method.peel, method.leastMass},
        rule{method.leastCoverage, true, method.largestQuasiP.value_or(noneButIdle)}, method(method),
        work(work)
  {}

  [[nodiscard]] BoxOfRuns result(std::size_t runsOfScan) const
  {
    BoxPath const path = finished(findBoxPath(table, sample, options, work.cancelled));
    Box const box = finished(chosenBox(table, sample, path, options, rule, work.cancelled));
    BoxOfRuns found;
    found.method = method;
    found.leftOut = columns.leftOut();
    found.restricted = box.ranges.size();
    found.runs = runsIn(box, runsOfScan);
    found.quality = qualityOf(measure(table, sample, box));
    for (std::size_t step = 0; step < path.steps.size(); ++step) found.path.push_back(stepOf(path, step));
    found.all = found.path.front().quality;
    found.chosen = chosenStep(path, rule.leastCoverage);
    for (std::size_t column = 0; column < table.columns().size(); ++column)
      found.parameters.push_back(parameterOf(column));
    takeRanges(found, box);
    takeStability(found);
    return found;
  }

private:
  [[nodiscard]] RunSet runsIn(Box const& box, std::size_t runsOfScan) const
  {
    RunSet inside(runsOfScan);
    for (std::size_t run = 0; run < runs.members().size(); ++run)
      if (table.holds(box, run)) inside.set(runs.members()[run]);
    return inside;
  }

  [[nodiscard]] BoxPathStep stepOf(BoxPath const& path, std::size_t number) const
  {
    BoxStep const& from = path.steps[number];
    BoxPathStep step;
    step.restricted = from.restricted;
    step.quality = qualityOf(path.measures(number));
    if (!from.peel) return step;
    std::size_t const column = from.peel->parameter;
    std::size_t const index = columns.indexOf(column);
    step.name = runs.parameterOf(index).label.name;
    step.parameter = runs.positionOf(index);
    if (from.peel->kind == BoxPeel::Kind::Category) {
      step.side = BoxSide::Text;
      step.text = columns.textOf(column, static_cast<std::size_t>(from.peel->limit));
    } else {
      step.side = from.peel->kind == BoxPeel::Kind::Low ? BoxSide::Low : BoxSide::High;
      step.limit = from.peel->limit;
    }
    return step;
  }

  [[nodiscard]] BoxParameter parameterOf(std::size_t column) const
  {
    std::size_t const index = columns.indexOf(column);
    BoxParameter parameter;
    parameter.name = runs.parameterOf(index).label.name;
    parameter.parameter = runs.positionOf(index);
    parameter.isText = runs.parameterOf(index).isText();
    parameter.missing = table.columns()[column].missing.size();
    for (std::size_t category = 0; category < table.columns()[column].categories; ++category)
      parameter.texts.push_back({columns.textOf(column, category)});
    return parameter;
  }

  // Gates ask all runs of the scan, so that limits separate those that take no part as well.
  [[nodiscard]] double rounded(std::size_t column, double limit, bool isLow) const
  {
    return roundLimit(runs.parameterOf(columns.indexOf(column)).values, limit, isLow);
  }

  void takeRanges(BoxOfRuns& found, Box const& box) const
  {
    std::vector<RangeSignificance> const p = quasiP(table, sample, box);
    for (std::size_t i = 0; i < box.ranges.size(); ++i) {
      BoxRange const& range = box.ranges[i];
      BoxParameter& parameter = found.parameters[range.parameter];
      parameter.isRestricted = true;
      parameter.quasiPLow = p[i].low;
      parameter.quasiPHigh = p[i].high;
      parameter.quasiP = p[i].range;
      if (range.cutsLow()) parameter.low = rounded(range.parameter, range.low, true);
      if (range.cutsHigh()) parameter.high = rounded(range.parameter, range.high, false);
      for (std::size_t category = 0; category < range.kept.size(); ++category)
        parameter.texts[category].isInside = range.kept[category] != 0;
    }
  }

  void takeStability(BoxOfRuns& found) const
  {
    BoxStability const stability = finished(boxStability(
        table, sample, options, rule, {method.resamples, method.seed, work.threads}, work.cancelled));
    for (std::size_t column = 0; column < found.parameters.size(); ++column) {
      BoxParameter& parameter = found.parameters[column];
      RangeStability const& of = stability.parameters[column];
      parameter.restrictedIn = of.restricted;
      parameter.lows = spreadsOf(of.low);
      parameter.highs = spreadsOf(of.high);
      for (std::size_t category = 0; category < of.leftOut.size(); ++category)
        parameter.texts[category].leftOut = of.leftOut[category];
    }
    found.coverage = spreadsOf(stability.coverage);
    found.density = spreadsOf(stability.density);
    found.mass = spreadsOf(stability.mass);
  }

  ComparedRuns const& runs;
  BoxTableOfRuns columns;
  BoxTable const& table;
  BoxSample sample;
  PeelOptions options;
  BoxRule rule;
  BoxMethod const& method;
  ComparisonWork const& work;
};

} // namespace

char const* boxSideName(BoxSide side)
{
  constexpr std::array<char const*, 4> names = {"", "low", "high", "text"};
  return names.at(static_cast<std::size_t>(side));
}

BoxOfRuns findBox(Scan const& scan, RunSet const& passing, RunSet const& eligible, BoxMethod const& method,
                  ComparisonWork const& work)
{
  checkMethod(method);
  ComparedRuns const runs(scan, eligible);
  BoxOfRuns found = BoxSearch(runs, runs.maskOf(passing), method, work).result(scan.runs.size());
  found.warnings = warningsOf(found);
  return found;
}

} // namespace runsieve
