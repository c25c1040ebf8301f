#include <runsieve/core/inference/SizeCurve.h>

#include <runsieve/core/inference/NoiseFloor.h>
#include <runsieve/core/inference/OrderedRuns.h>
#include <runsieve/core/inference/Quantile.h>
#include <runsieve/core/inference/RandomStream.h>
#include <runsieve/core/inference/Shuffle.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve {

namespace {

/// Of `runs` runs, at least one if there is one.
std::size_t sizeOf(double share, std::size_t runs)
{
  const auto size = static_cast<std::size_t>(std::round(share * static_cast<double>(runs)));
  return std::clamp(size, std::min<std::size_t>(1, runs), runs);
}

void mark(LaneCounts& counts, std::size_t lane, std::uint32_t const* runs, std::size_t count, double step)
{
  for (std::size_t i = 0; i < count; ++i) counts[runs[i]].of[lane] = step;
}

} // namespace

SizeCurve::SizeCurve(std::vector<ComparedParameter> const& parameters,
                     std::vector<unsigned char> const& passing, SizeCurveSettings const& curveSettings)
    : compared(parameters), settings(curveSettings), runs(passing.size()),
      passingRuns(runsMarked(passing, true)), otherRuns(runsMarked(passing, false)),
      blocks((settings.subsamples + LANES - 1) / LANES), given(runs),
      work(settings.shares.size() * blocks, 2 * runs * (LANES + compared.size()), settings.threads)
{
  for (const double share : settings.shares)
    if (!(share > 0.0 && share <= 1.0)) throw std::invalid_argument("a share must be above 0 and at most 1");
  for (ComparedParameter const& parameter : compared) checkRuns(parameter.values, runs);
  maxima.resize(settings.shares.size() * blocks * LANES);
  distances.resize(maxima.size() * compared.size());
}

void SizeCurve::advance(std::size_t pieces)
{
  work.advance(pieces, [this](std::size_t piece) { subsample(piece); });
}

SizeCurve::Drawn SizeCurve::drawn(std::size_t share, std::size_t first) const
{
  const std::size_t passing = sizeOf(settings.shares[share], passingRuns.size());
  const std::size_t others = sizeOf(settings.shares[share], otherRuns.size());
  Drawn result{LaneCounts(runs), LaneCounts(runs)};
  std::vector<std::uint32_t> fromPassing = passingRuns;
  std::vector<std::uint32_t> fromOthers = otherRuns;
  std::vector<std::uint32_t> both(passing + others);
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    RandomStream random(settings.seed, first + lane);
    std::copy(passingRuns.begin(), passingRuns.end(), fromPassing.begin());
    std::copy(otherRuns.begin(), otherRuns.end(), fromOthers.begin());
    shuffleToFront(fromPassing.data(), fromPassing.size(), passing, random);
    shuffleToFront(fromOthers.data(), fromOthers.size(), others, random);
    mark(result.subsamples, lane, fromPassing.data(), passing, 1.0);
    mark(result.subsamples, lane, fromOthers.data(), others, -1.0);
    std::copy_n(fromOthers.begin(), others, std::copy_n(fromPassing.begin(), passing, both.begin()));
    shuffleToFront(both.data(), both.size(), passing, random);
    mark(result.shuffled, lane, both.data(), passing, 1.0);
    mark(result.shuffled, lane, both.data() + passing, others, -1.0);
  }
  return result;
}

void SizeCurve::subsample(std::size_t piece)
{
  const std::size_t first = piece * LANES;
  const Drawn counts = drawn(piece / blocks, first);
  const LaneSteps steps = laneSteps(counts.subsamples);
  const LaneSteps noiseSteps = laneSteps(counts.shuffled);
  for (std::size_t p = 0; p < compared.size(); ++p) {
    const LaneDistances found = laneDistances(compared[p], counts.subsamples, steps, given);
    const LaneDistances noise = laneDistances(compared[p], counts.shuffled, noiseSteps, given);
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      distances[(first + lane) * compared.size() + p] = found.distance[lane];
      maxima[first + lane] = std::max(maxima[first + lane], noise.distance[lane]);
    }
  }
}

DistanceRange SizeCurve::rangeOf(std::size_t share, std::size_t parameter) const
{
  if (settings.subsamples == 0) return {};
  std::vector<double> sorted;
  for (std::size_t i = 0; i < settings.subsamples; ++i)
    sorted.push_back(distances[(share * blocks * LANES + i) * compared.size() + parameter]);
  std::sort(sorted.begin(), sorted.end());
  return {quantileOf(sorted, 0.05), quantileOf(sorted, 0.5), quantileOf(sorted, 0.95)};
}

std::vector<SizePoint> SizeCurve::points() const
{
  std::vector<SizePoint> points;
  for (std::size_t share = 0; share < settings.shares.size(); ++share) {
    SizePoint point;
    point.share = settings.shares[share];
    point.passing = sizeOf(point.share, passingRuns.size());
    point.others = sizeOf(point.share, otherRuns.size());
    const auto first = maxima.begin() + static_cast<std::ptrdiff_t>(share * blocks * LANES);
    point.floor =
        noiseFloorOf({first, first + static_cast<std::ptrdiff_t>(settings.subsamples)}, settings.level);
    for (std::size_t p = 0; p < compared.size(); ++p) point.parameters.push_back(rangeOf(share, p));
    points.push_back(point);
  }
  return points;
}

} // namespace runsieve
