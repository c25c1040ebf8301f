#include <runsieve/core/inference/LaneDistances.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Clones give the loops the widest registers of the machine. All give the same: this file is compiled without
// fused products and sums.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define RUNSIEVE_VECTOR_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define RUNSIEVE_VECTOR_CLONES
#endif

namespace runsieve {

namespace {

constexpr std::ptrdiff_t AHEAD = 24; ///< runs to prefetch

/// Writes the largest sum at the end of a group of equal values, and the largest change from the given one.
/// \param scale makes a difference of shares of the sum
template <Steps way>
[[gnu::always_inline]] inline void walk(OrderedValues const& ordered, LaneRow const* steps,
                                        double const* scale, double const* given, LaneDistances& found)
{
  double scales[LANES];
  std::memcpy(scales, scale, sizeof scales);
  double sum[LANES] = {};
  double largest[LANES] = {};
  double change[LANES] = {};
  std::uint32_t const* run = ordered.order.data();
  std::uint32_t const* const first = run;
  std::uint32_t const* const last = run + ordered.order.size();
  for (const std::uint32_t end : ordered.groupEnds) {
    if (way == Steps::EACH_GROUP) std::memset(sum, 0, sizeof sum);
    for (; run != first + end; ++run) {
      // Beyond some 30,000 runs the steps outgrow the cache.
      __builtin_prefetch(steps + run[last - run > AHEAD ? AHEAD : 0]);
      double const* step = steps[*run].of;
      for (std::size_t lane = 0; lane < LANES; ++lane) sum[lane] += step[lane];
    }
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      const double size = std::abs(sum[lane]);
      largest[lane] = size > largest[lane] ? size : largest[lane];
      const double changed = std::abs(sum[lane] * scales[lane] - *given);
      change[lane] = changed > change[lane] ? changed : change[lane];
    }
    ++given;
  }
  std::memcpy(found.distance, largest, sizeof largest);
  std::memcpy(found.change, change, sizeof change);
}

RUNSIEVE_VECTOR_CLONES
void walkUpToGroups(OrderedValues const& ordered, LaneRow const* steps, double const* scale,
                    double const* given, LaneDistances& found)
{
  walk<Steps::CUMULATIVE>(ordered, steps, scale, given, found);
}

RUNSIEVE_VECTOR_CLONES
void walkEachGroup(OrderedValues const& ordered, LaneRow const* steps, double const* scale,
                   double const* given, LaneDistances& found)
{
  walk<Steps::EACH_GROUP>(ordered, steps, scale, given, found);
}

/// Numbers of passing runs and others in each lane.
struct LaneSizes
{
  double passing[LANES] = {};
  double others[LANES] = {};

  void add(LaneRow const& counts)
  {
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      passing[lane] += counts.of[lane] > 0.0 ? counts.of[lane] : 0.0;
      others[lane] -= counts.of[lane] < 0.0 ? counts.of[lane] : 0.0;
    }
  }
};

LaneSteps stepsOf(LaneCounts const& counts, LaneSizes const& sizes)
{
  LaneSteps result;
  result.steps.resize(counts.size());
  for (std::size_t run = 0; run < counts.size(); ++run)
    for (std::size_t lane = 0; lane < LANES; ++lane) {
      const double count = counts[run].of[lane];
      result.steps[run].of[lane] = count * (count > 0.0 ? sizes.others[lane] : sizes.passing[lane]);
    }
  for (std::size_t lane = 0; lane < LANES; ++lane)
    result.product[lane] = sizes.passing[lane] * sizes.others[lane];
  return result;
}

LaneDistances distancesOf(ComparedParameter const& parameter, LaneSteps const& steps,
                          std::vector<double> const& given)
{
  double scale[LANES];
  for (std::size_t lane = 0; lane < LANES; ++lane)
    scale[lane] = steps.product[lane] > 0.0 ? 1.0 / steps.product[lane] : 0.0;
  LaneDistances found;
  if (parameter.steps == Steps::CUMULATIVE)
    walkUpToGroups(parameter.values, steps.steps.data(), scale, given.data(), found);
  else
    walkEachGroup(parameter.values, steps.steps.data(), scale, given.data(), found);
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    const bool defined = steps.product[lane] > 0.0;
    found.distance[lane] = defined ? found.distance[lane] / steps.product[lane] : 0.0;
    if (!defined) found.change[lane] = 1.0;
  }
  return found;
}

} // namespace

LaneSteps laneSteps(LaneCounts const& counts)
{
  LaneSizes sizes;
  for (LaneRow const& run : counts) sizes.add(run);
  return stepsOf(counts, sizes);
}

LaneDistances laneDistances(ComparedParameter const& parameter, LaneCounts const& counts,
                            LaneSteps const& steps, std::vector<double> const& given)
{
  if (parameter.values.order.size() == counts.size()) return distancesOf(parameter, steps, given);
  LaneSizes sizes;
  for (const std::uint32_t run : parameter.values.order) sizes.add(counts[run]);
  return distancesOf(parameter, stepsOf(counts, sizes), given);
}

std::vector<double> shareDifferences(ComparedParameter const& parameter,
                                     std::vector<unsigned char> const& passing)
{
  OrderedValues const& ordered = parameter.values;
  double passingSize = 0.0;
  for (const std::uint32_t run : ordered.order) passingSize += passing[run];
  const double otherSize = static_cast<double>(ordered.order.size()) - passingSize;
  const double product = passingSize * otherSize;
  std::vector<double> differences;
  differences.reserve(ordered.groupEnds.size());
  double sum = 0.0;
  std::size_t i = 0;
  for (const std::uint32_t end : ordered.groupEnds) {
    if (parameter.steps == Steps::EACH_GROUP) sum = 0.0;
    for (; i < end; ++i) sum += passing[ordered.order[i]] ? otherSize : -passingSize;
    differences.push_back(product > 0.0 ? sum / product : 0.0);
  }
  return differences;
}

} // namespace runsieve
