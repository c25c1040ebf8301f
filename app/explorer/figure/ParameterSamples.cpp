#include "app/explorer/figure/ParameterSamples.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

constexpr std::size_t fewestForDensity = 11;
constexpr std::size_t mostForDensity = 600; ///< spread evenly through the order of the others
constexpr int densityPoints = 120;

double medianOf(std::vector<double> const& sorted)
{
  return sorted[sorted.size() / 2];
}

bool isSpreadByRatios(std::vector<double> const& sorted)
{
  constexpr double twoDecades = 100.0;
  if (sorted.empty() || sorted.front() <= 0.0 || sorted.back() <= twoDecades * sorted.front()) return false;
  auto const offMiddle = [&](bool logarithmic) {
    const AxisMap axis(sorted.front(), sorted.back(), logarithmic);
    return std::fabs(axis.place(medianOf(sorted)) - 0.5);
  };
  return offMiddle(true) < offMiddle(false);
}

AxisMap axisOf(std::vector<double> const& all, bool logarithmic)
{
  if (all.empty()) return {};
  auto const positive = std::upper_bound(all.begin(), all.end(), 0.0);
  if (logarithmic && positive != all.end()) return {*positive, all.back(), true};
  return {all.front(), all.back()};
}

} // namespace

ParameterSamples samplesOf(FigureContent const& content, std::size_t parameter)
{
  ParameterSamples samples;
  ScanParameter const& column = content.scan->parameters[parameter];
  std::vector<double> all;
  for (std::size_t run = 0; run < column.values.size(); ++run) {
    const double value = column.values[run];
    if (!content.eligible.contains(run) || !std::isfinite(value)) continue;
    const bool passes = content.sieves && content.passing.contains(run);
    (passes ? samples.passing : samples.others).push_back(value);
    all.push_back(value);
  }
  for (std::vector<double>* values : {&samples.passing, &samples.others, &all})
    std::sort(values->begin(), values->end());
  auto const typed = content.logParameters.find(parameter);
  samples.axis = axisOf(all, typed != content.logParameters.end() ? typed->second : isSpreadByRatios(all));
  return samples;
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
  std::vector<double> places;
  const std::size_t step = std::max<std::size_t>(1, sorted.size() / mostForDensity);
  for (std::size_t i = step / 2; i < sorted.size(); i += step)
    if (const double place = axis.place(sorted[i]); std::isfinite(place)) places.push_back(place);
  const auto count = static_cast<double>(places.size());
  if (places.size() < fewestForDensity) return {};
  double mean = 0.0;
  for (double const place : places) mean += place / count;
  double squares = 0.0;
  for (double const place : places) squares += (place - mean) * (place - mean);
  const double deviation = std::sqrt(squares / (count - 1.0));
  const double quartiles = (places[3 * places.size() / 4] - places[places.size() / 4]) / 1.34;
  const double spread = quartiles > 0.0 ? std::min(deviation, quartiles) : deviation;
  const double width = std::max(1.06 * spread * std::pow(count, -0.2), 1.0 / densityPoints);
  const double height = 1.0 / (count * width * std::sqrt(2.0 * M_PI));
  std::vector<QPointF> curve;
  for (int i = 0; i <= densityPoints; ++i) {
    const double at = static_cast<double>(i) / densityPoints;
    double density = 0.0;
    for (double const place : places)
      for (double const mirrored : {place, -place, 2.0 - place}) {
        const double far = (at - mirrored) / width;
        density += height * std::exp(-0.5 * far * far);
      }
    curve.emplace_back(at, density);
  }
  return curve;
}

} // namespace runsieve::app
