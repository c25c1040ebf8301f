#include "app/explorer/figure/ParameterSamples.h"

#include "app/explorer/parameters/CountDensity.h"
#include "app/explorer/parameters/ParameterSpread.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

constexpr std::size_t densityPoints = 121;

} // namespace

ParameterSamples samplesOf(FigureContent const& content, std::size_t parameter)
{
  ParameterSamples samples;
  ScanParameter const& column = content.scan->parameters[parameter];
  const RunSet selected = content.selected();
  for (std::size_t run = 0; run < column.values.size(); ++run) {
    const double value = column.values[run];
    if (!content.eligible.contains(run) || !std::isfinite(value)) continue;
    (selected.contains(run) ? samples.passing : samples.others).push_back(value);
  }
  for (std::vector<double>* values : {&samples.passing, &samples.others})
    std::sort(values->begin(), values->end());
  const ParameterSpread spread = spreadOf(column);
  auto const typed = content.logParameters.find(parameter);
  samples.axis = spread.axis(typed != content.logParameters.end() ? typed->second : spread.isLogarithmic);
  return samples;
}

TextGroups textGroupsOf(FigureContent const& content, std::size_t parameter)
{
  return textGroupsOf(content.scan->parameters[parameter], content.selected().mask(),
                      content.eligible.mask());
}

std::vector<QPointF> cumulativeCurve(std::vector<double> const& sorted, AxisMap const& axis)
{
  std::vector<QPointF> curve;
  if (sorted.empty()) return curve;
  const auto count = static_cast<double>(sorted.size());
  double share = 0.0;
  std::size_t next = 0;
  while (next < sorted.size() && sorted[next] < axis.low()) ++next;
  share = static_cast<double>(next) / count;
  curve.emplace_back(axis.low(), share);
  while (next < sorted.size()) {
    const double value = sorted[next];
    curve.emplace_back(value, share);
    while (next < sorted.size() && sorted[next] == value) ++next;
    share = static_cast<double>(next) / count;
    curve.emplace_back(value, share);
  }
  curve.emplace_back(axis.high(), share);
  return curve;
}

std::vector<QPointF> densityCurve(std::vector<double> const& sorted, AxisMap const& axis)
{
  const ColumnCounts counts(RunColumns(sorted, axis), std::vector<std::uint8_t>(sorted.size(), 1));
  if (counts.onAxis() < fewestForDensity) return {};
  const std::vector<double> density = densityOf(counts, densityPoints);
  std::vector<QPointF> curve;
  for (std::size_t i = 0; i < density.size(); ++i)
    curve.emplace_back(static_cast<double>(i) / (densityPoints - 1), density[i]);
  return curve;
}

} // namespace runsieve::app
