#include <runsieve/core/kernels/SampleDensity.h>

#include <runsieve/core/kernels/UnivariateDensityDerivative.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace runsieve {

namespace {

constexpr double accuracy = 0.01;
constexpr std::size_t fewestForEstimate = 11;

/// The thinned sample on the unit range, with its mirror images, ascending if all values lie in the range.
struct Sources
{
  std::vector<double> values;
  std::size_t perCopy = 0;
  int copies = 3;
  double mean = 0.0; ///< of the whole sample, not only of the values taken

  double* centralCopy() { return values.data() + perCopy; }
};

Sources mirroredSources(std::vector<double> const& sorted, ParameterRange const& range, int copies)
{
  const std::size_t M = sorted.size();
  const std::size_t step = thinningStep(M);
  Sources sources;
  sources.copies = copies;
  sources.perCopy = M / step;
  sources.values.resize(sources.perCopy * static_cast<std::size_t>(copies));
  const std::size_t n = sources.perCopy;
  const double inverseWidth = 1.0 / range.width;
  double sum = 0.0;
  std::size_t q = 0;
  std::size_t untilNext = 0;
  for (std::size_t j = 0; j < M; ++j) {
    const double t = (sorted[j] - range.lower) * inverseWidth;
    sum += (t + 1.0) / copies;
    if (untilNext == 0 && q < n) {
      untilNext = step;
      sources.values[n - 1 - q] = (1.0 - t) / copies;
      sources.values[n + q] = (t + 1.0) / copies;
      if (copies == 3) sources.values[3 * n - 1 - q] = (3.0 - t) / 3.0;
      ++q;
    }
    --untilNext;
  }
  sources.mean = sum / static_cast<double>(M);
  return sources;
}

double bandwidthOf(Sources& sources, double gridStep)
{
  const std::size_t n = sources.perCopy;
  double const* central = sources.centralCopy();
  double variance = 0.0;
  for (std::size_t q = 0; q < n; ++q) variance += (central[q] - sources.mean) * (central[q] - sources.mean);
  variance /= static_cast<double>(n);
  const double spread = (central[3 * n / 4] - central[n / 4]) / 1.34;
  const double rule = 1.06 * std::min(spread, std::sqrt(variance)) * std::pow(static_cast<double>(n), -0.2);
  return std::max(rule, 0.2 * std::fabs(gridStep));
}

void showSpikes(std::vector<double> const& sorted, ParameterRange const& range, double const* locations,
                double* density)
{
  std::fill(density, density + densityPoints, 0.0);
  if (sorted.empty()) return;
  const double half = range.width * 0.5 / 199.0;
  std::size_t current = 0;
  for (int j = 0; j < densityPoints && current < sorted.size(); ++j) {
    if (!(locations[j] - half <= sorted[current] && sorted[current] <= locations[j] + half)) continue;
    density[j] = 1.0;
    if (!range.degenerate) ++current;
  }
}

} // namespace

std::size_t thinningStep(std::size_t sampleSize)
{
  return std::max<std::size_t>(1, sampleSize / 400);
}

void sampleDensity(std::vector<double> const& sorted, ParameterRange const& range, double* locations,
                   double* density)
{
  const int copies = range.upper < std::numeric_limits<double>::infinity() ? 3 : 2;
  std::array<double, densityPoints> targets;
  for (int j = 0; j < densityPoints; ++j) {
    targets[j] = j / 199.0 / copies + 1.0 / copies;
    locations[j] = range.width * copies * (targets[j] - 1.0 / copies) + range.lower;
  }
  const std::size_t thinned = sorted.size() / thinningStep(sorted.size());
  if (range.degenerate || thinned < fewestForEstimate) {
    showSpikes(sorted, range, locations, density);
    return;
  }
  Sources sources = mirroredSources(sorted, range, copies);
  UnivariateDensityDerivative estimate(static_cast<int>(sources.values.size()), densityPoints,
                                       sources.values.data(), targets.data(),
                                       bandwidthOf(sources, targets[1] - targets[0]), 0, accuracy, density);
  estimate.Evaluate();
  for (int j = 0; j < densityPoints; ++j) density[j] /= range.width;
}

} // namespace runsieve
