#include <runsieve/core/inference/Stability.h>

#include <runsieve/core/inference/OrderedRuns.h>
#include <runsieve/core/inference/Quantile.h>
#include <runsieve/core/inference/RandomStream.h>

#include <boost/math/special_functions/erf.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace runsieve {

namespace {

/// On either side; resamples of fewer hardly differ, which would pass for certainty.
constexpr double LEAST_RUNS = 3.0;

std::size_t piecesOf(std::size_t resamples)
{
  return (resamples + LANES - 1) / LANES;
}

/// Draws as many of the runs as there are, with replacement, and tells how often each was drawn.
void draw(std::vector<std::uint32_t> const& runs, RandomStream& random, std::vector<std::uint32_t>& times)
{
  std::fill(times.begin(), times.end(), 0u);
  const auto size = static_cast<std::uint32_t>(runs.size());
  for (std::uint32_t i = 0; i < size; ++i) ++times[random.below(size)];
}

} // namespace

Stability::Stability(std::vector<ComparedParameter> const& parameters,
                     std::vector<unsigned char> const& passing, StabilitySettings const& stabilitySettings)
    : compared(parameters), settings(stabilitySettings), runs(passing.size()),
      passingRuns(runsMarked(passing, true)), otherRuns(runsMarked(passing, false)),
      work(piecesOf(settings.resamples), LANES * runs + runs * compared.size(), settings.threads)
{
  if (!(settings.confidence > 0.0 && settings.confidence < 1.0))
    throw std::invalid_argument("the confidence must be between 0 and 1");
  for (ComparedParameter const& parameter : compared) {
    checkRuns(parameter.values, runs);
    observed.push_back(observe(parameter, passing));
  }
  distances.resize(piecesOf(settings.resamples) * LANES * compared.size());
  changes.resize(distances.size());
}

Stability::Observed Stability::observe(ComparedParameter const& parameter,
                                       std::vector<unsigned char> const& passing)
{
  OrderedValues const& ordered = parameter.values;
  Observed result;
  result.differences = shareDifferences(parameter, passing);
  double passingSize = 0.0;
  for (const std::uint32_t run : ordered.order) passingSize += passing[run];
  const double otherSize = static_cast<double>(ordered.order.size()) - passingSize;
  result.defined = passingSize > 0.0 && otherSize > 0.0;
  result.enough = passingSize >= LEAST_RUNS && otherSize >= LEAST_RUNS;
  if (!result.defined) return result;
  const auto most = std::max_element(result.differences.begin(), result.differences.end(),
                                     [](double a, double b) { return std::abs(a) < std::abs(b); });
  const auto group = static_cast<std::size_t>(most - result.differences.begin());
  const std::uint32_t end = ordered.groupEnds[group];
  const bool fromFirst = parameter.steps == Steps::CUMULATIVE || group == 0;
  const std::uint32_t begin = fromFirst ? 0 : ordered.groupEnds[group - 1];
  double inGroups = 0.0;
  for (std::uint32_t i = begin; i < end; ++i) inGroups += passing[ordered.order[i]];
  const double shareOfPassing = inGroups / passingSize;
  const double shareOfOthers = (end - begin - inGroups) / otherSize;
  result.distance = std::abs(*most);
  result.error = std::sqrt(shareOfPassing * (1.0 - shareOfPassing) / passingSize +
                           shareOfOthers * (1.0 - shareOfOthers) / otherSize);
  return result;
}

void Stability::advance(std::size_t pieces)
{
  work.advance(pieces, [this](std::size_t piece) { resample(piece); });
}

LaneCounts Stability::drawnCounts(std::size_t piece) const
{
  LaneCounts counts(runs);
  std::vector<std::uint32_t> times(std::max(passingRuns.size(), otherRuns.size()));
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    RandomStream random(settings.seed, piece * LANES + lane);
    draw(passingRuns, random, times);
    for (std::size_t i = 0; i < passingRuns.size(); ++i) counts[passingRuns[i]].of[lane] = times[i];
    draw(otherRuns, random, times);
    for (std::size_t i = 0; i < otherRuns.size(); ++i)
      counts[otherRuns[i]].of[lane] = -static_cast<double>(times[i]);
  }
  return counts;
}

void Stability::resample(std::size_t piece)
{
  const LaneCounts counts = drawnCounts(piece);
  const LaneSteps steps = laneSteps(counts);
  for (std::size_t p = 0; p < compared.size(); ++p) {
    const LaneDistances found = laneDistances(compared[p], counts, steps, observed[p].differences);
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      const std::size_t place = (piece * LANES + lane) * compared.size() + p;
      distances[place] = found.distance[lane];
      changes[place] = found.change[lane];
    }
  }
}

std::vector<std::size_t> Stability::timesAmongTop() const
{
  std::vector<std::size_t> times(compared.size());
  const std::size_t top = std::min(settings.top, compared.size());
  std::vector<std::size_t> ranked(compared.size());
  for (std::size_t b = 0; b < settings.resamples; ++b) {
    double const* of = distances.data() + b * compared.size();
    std::iota(ranked.begin(), ranked.end(), std::size_t{0});
    std::partial_sort(
        ranked.begin(), ranked.begin() + static_cast<std::ptrdiff_t>(top), ranked.end(),
        [of](std::size_t p, std::size_t q) { return of[p] > of[q] || (of[p] == of[q] && p < q); });
    for (std::size_t i = 0; i < top; ++i) ++times[ranked[i]];
  }
  return times;
}

DistanceStability Stability::stabilityOf(std::size_t parameter) const
{
  DistanceStability result;
  result.distance = observed[parameter].distance;
  result.upper = 1.0;
  if (!observed[parameter].defined || settings.resamples == 0) return result;
  std::vector<double> sorted;
  for (std::size_t b = 0; b < settings.resamples; ++b)
    sorted.push_back(changes[b * compared.size() + parameter]);
  std::sort(sorted.begin(), sorted.end());
  if (!observed[parameter].enough) return result;
  const double tail = 0.5 * (1.0 - settings.confidence);
  const double normal = std::sqrt(2.0) * boost::math::erf_inv(settings.confidence);
  result.lower = std::max(result.distance - quantileOf(sorted, 1.0 - tail), 0.0);
  result.upper = std::min(result.distance + normal * observed[parameter].error, 1.0);
  return result;
}

std::vector<DistanceStability> Stability::parameters() const
{
  const std::vector<std::size_t> times = timesAmongTop();
  std::vector<DistanceStability> results;
  for (std::size_t p = 0; p < compared.size(); ++p) {
    results.push_back(stabilityOf(p));
    if (settings.resamples > 0)
      results.back().topShare = static_cast<double>(times[p]) / static_cast<double>(settings.resamples);
  }
  return results;
}

} // namespace runsieve
