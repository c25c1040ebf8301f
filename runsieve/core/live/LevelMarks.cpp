#include <runsieve/core/live/LevelMarks.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

namespace runsieve {

LevelMarks::LevelMarks(std::vector<std::uint32_t> levelsOfRuns, std::size_t count, Steps steps)
    : steps(steps), levels(std::move(levelsOfRuns)), sizes(count), passing(count + 1)
{
  for (std::uint32_t& level : levels) {
    level = static_cast<std::uint32_t>(std::min<std::size_t>(level, count));
    if (level < count) ++sizes[level];
  }
}

void LevelMarks::flip(std::vector<std::uint32_t> const& changed, std::uint8_t const* passes)
{
  // Less one is the largest number more: counts may pass 0.
  for (std::uint32_t const run : changed) passing[levels[run]] += passes[run] != 0 ? 1u : ~0u;
}

LargestDifference LevelMarks::largest() const
{
  LargestDifference result;
  for (std::size_t level = 0; level < sizes.size(); ++level) {
    result.passing += passing[level];
    result.others += sizes[level] - passing[level];
  }
  // Shares fall behind as the larger runs are still to come, so cumulative differences are turned round.
  std::int64_t const sign = steps == Steps::CUMULATIVE ? -1 : 1;
  std::int64_t difference = 0;
  for (std::size_t level = 0; level < sizes.size(); ++level) {
    if (steps == Steps::EACH_GROUP) difference = 0;
    difference += sign * (std::int64_t{passing[level]} * result.others -
                          std::int64_t{sizes[level] - passing[level]} * result.passing);
    if (std::abs(difference) <= std::abs(result.difference)) continue;
    result.difference = difference;
    result.place = level;
  }
  return result;
}

} // namespace runsieve
