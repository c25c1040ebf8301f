#include <runsieve/core/compare/StabilityOfComparison.h>

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/EnoughRuns.h>
#include <runsieve/core/compare/FamilyOfTests.h>
#include <runsieve/core/inference/SizeCurve.h>
#include <runsieve/core/inference/Stability.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve {

namespace {

void checkMethod(StabilityMethod const& method)
{
  if (method.resamples == 0 || method.subsamples == 0)
    throw std::invalid_argument("at least one resample and one subsample are needed");
  if (!std::is_sorted(method.shares.begin(), method.shares.end()))
    throw std::invalid_argument("the shares of the runs must ascend");
}

/// For each parameter of a comparison its place among the compared ones.
std::vector<std::size_t> placesOf(Comparison const& comparison, ComparedRuns const& runs)
{
  constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
  std::vector<std::size_t> placeOf;
  for (std::size_t i = 0; i < runs.parameters().size(); ++i) {
    placeOf.resize(runs.positionOf(i) + 1, none);
    placeOf.back() = i;
  }
  std::vector<std::size_t> places;
  for (ParameterComparison const& parameter : comparison.parameters) {
    std::size_t const place = parameter.parameter < placeOf.size() ? placeOf[parameter.parameter] : none;
    if (place == none) throw std::invalid_argument("the comparison is of other runs");
    places.push_back(place);
    placeOf[parameter.parameter] = none;
  }
  if (places.size() != runs.parameters().size())
    throw std::invalid_argument("the comparison is of other runs");
  return places;
}

std::size_t significantOnes(Comparison const& comparison)
{
  return static_cast<std::size_t>(
      std::count_if(comparison.parameters.begin(), comparison.parameters.end(),
                    [](ParameterComparison const& parameter) { return parameter.significant; }));
}

/// Does all pieces of the work.
template <class Work> void finish(Work& pieces, ComparisonWork const& work)
{
  while (!pieces.done()) {
    if (work.cancelled && work.cancelled()) throw ComparisonCancelled();
    pieces.advance();
  }
}

std::vector<SureDistance> sureDistances(ComparedRuns const& runs, std::vector<std::uint8_t> const& mask,
                                        StabilityMethod const& method, ComparisonWork const& work)
{
  StabilitySettings settings;
  settings.resamples = method.resamples;
  settings.seed = method.seed;
  settings.confidence = method.confidence;
  settings.top = method.top;
  settings.threads = work.threads;
  Stability stability(runs.parameters(), mask, settings);
  finish(stability, work);
  std::vector<SureDistance> distances;
  for (DistanceStability const& found : stability.parameters())
    distances.push_back({found.lower, found.upper, found.topShare});
  return distances;
}

ComparisonAtSize atSize(SizePoint const& point)
{
  ComparisonAtSize size;
  size.share = point.share;
  size.passing = point.passing;
  size.others = point.others;
  if (std::isfinite(point.floor)) size.noiseFloor = point.floor;
  for (DistanceRange const& range : point.parameters)
    size.parameters.push_back({range.low, range.median, range.high});
  return size;
}

std::vector<ComparisonAtSize> sizesOf(ComparedRuns const& runs, std::vector<std::uint8_t> const& mask,
                                      StabilityMethod const& method, double level, ComparisonWork const& work)
{
  SizeCurveSettings settings;
  settings.shares = method.shares;
  settings.subsamples = method.subsamples;
  settings.seed = method.seed;
  settings.level = level;
  settings.threads = work.threads;
  SizeCurve curve(runs.parameters(), mask, settings);
  finish(curve, work);
  std::vector<ComparisonAtSize> sizes;
  for (SizePoint const& point : curve.points()) sizes.push_back(atSize(point));
  return sizes;
}

/// So many that a noise floor at the level is known, within reason.
std::size_t enoughSubsamples(std::size_t wanted, double level)
{
  constexpr double most = 2000.0;
  return std::max(wanted, static_cast<std::size_t>(std::min(most, std::ceil(1.0 / level))));
}

/// At a threshold of 1 there is no floor that chance exceeds so often: then the least one.
double levelOf(ComparisonMethod const& method)
{
  constexpr double most = 1.0 - 1e-9;
  return std::min(cutOf(method), most);
}

/// In the order of a comparison; not defined where d is not.
template <class Entry>
std::vector<Entry> picked(std::vector<Entry> const& entries, std::vector<std::size_t> const& places,
                          Comparison const& comparison)
{
  std::vector<Entry> result(places.size());
  for (std::size_t i = 0; i < places.size(); ++i)
    if (!std::isnan(comparison.parameters[i].d)) result[i] = entries[places[i]];
  return result;
}

bool isComparable(Comparison const& comparison)
{
  return std::any_of(comparison.parameters.begin(), comparison.parameters.end(),
                     [](ParameterComparison const& parameter) { return !std::isnan(parameter.d); });
}

} // namespace

ComparisonStability stabilityOfComparison(Scan const& scan, RunSet const& passing, RunSet const& eligible,
                                          Comparison const& comparison, StabilityMethod const& method,
                                          ComparisonWork const& work)
{
  checkMethod(method);
  const ComparedRuns runs(scan, eligible);
  const std::vector<std::uint8_t> mask = runs.maskOf(passing);
  const std::vector<std::size_t> places = placesOf(comparison, runs);
  const double level = levelOf(comparison.method);
  ComparisonStability result;
  result.method = method;
  if (method.top == 0) result.method.top = std::max<std::size_t>(1, significantOnes(comparison));
  result.method.subsamples = enoughSubsamples(method.subsamples, level);
  result.parameters.resize(places.size());
  if (isComparable(comparison)) {
    result.parameters = picked(sureDistances(runs, mask, result.method, work), places, comparison);
    result.sizes = sizesOf(runs, mask, result.method, level, work);
  }
  for (ComparisonAtSize& size : result.sizes) {
    size.parameters = picked(size.parameters, places, comparison);
    if (size.share == 1.0 && !std::isnan(comparison.noiseFloor)) size.noiseFloor = comparison.noiseFloor;
  }
  judge(result, comparison);
  return result;
}

} // namespace runsieve
