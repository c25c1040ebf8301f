#include "app/explorer/parameters/CountDensity.h"

#include <runsieve/core/kernels/UnivariateDensityDerivative.h>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double accuracy = 0.01;
constexpr std::size_t mostSources = 600;

/// Places from 0 to 1, ascending: those of a column are spread evenly over it.
std::vector<double> placesOf(ColumnCounts const& counts, std::size_t size)
{
  constexpr auto columns = static_cast<double>(RunColumns::columns);
  const std::size_t taken = std::min(size, mostSources);
  const double step = static_cast<double>(size) / static_cast<double>(taken);
  std::vector<double> places;
  places.reserve(taken);
  double next = 0.5 * step; // in runs, from the lowest
  double sum = 0.0;
  for (std::size_t i = 0; i < RunColumns::columns; ++i) {
    const double here = counts.at(i);
    for (; next < sum + here && places.size() < taken; next += step)
      places.push_back((static_cast<double>(i) + (next - sum) / here) / columns);
    sum += here;
  }
  return places;
}

double bandwidthOf(std::vector<double> const& places, std::size_t size)
{
  const auto n = static_cast<double>(places.size());
  double mean = 0.0;
  for (double const place : places) mean += place / n;
  double variance = 0.0;
  for (double const place : places) variance += (place - mean) * (place - mean) / n;
  const double quartiles = (places[3 * places.size() / 4] - places[places.size() / 4]) / 1.34;
  const double deviation = std::sqrt(variance);
  constexpr double column = 1.0 / RunColumns::columns;
  // Most runs at one value: the quartiles say nothing.
  const double spread = quartiles > column ? std::min(quartiles, deviation) : deviation;
  return std::max(1.06 * spread * std::pow(static_cast<double>(size), -0.2), 2.0 * column);
}

} // namespace

std::vector<double> densityOf(ColumnCounts const& counts, std::size_t points)
{
  std::vector<double> density(points);
  const std::size_t size = counts.onAxis();
  if (size < fewestForDensity || points < 2) return density;
  const std::vector<double> places = placesOf(counts, size);
  std::vector<double> sources;
  sources.reserve(3 * places.size());
  for (std::size_t i = places.size(); i-- > 0;) sources.push_back(-places[i]);
  sources.insert(sources.end(), places.begin(), places.end());
  for (std::size_t i = places.size(); i-- > 0;) sources.push_back(2.0 - places[i]);
  std::vector<double> targets;
  for (std::size_t i = 0; i < points; ++i)
    targets.push_back(static_cast<double>(i) / static_cast<double>(points - 1));
  UnivariateDensityDerivative estimate(static_cast<int>(sources.size()), static_cast<int>(points),
                                       sources.data(), targets.data(), bandwidthOf(places, size), 0, accuracy,
                                       density.data());
  estimate.Evaluate();
  for (double& value : density) value *= 3.0; // mirror images counted as sources
  return density;
}

} // namespace runsieve::app
