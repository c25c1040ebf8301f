#include <runsieve/core/coverage/CoverageLanes.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <optional>
#include <vector>

namespace runsieve {

namespace {

constexpr std::size_t mostLanes = 8;
constexpr std::size_t mostExtraBytes = std::size_t{8} << 20;
constexpr std::size_t fewestPoints = 50'000; ///< fewer are counted before a thread has woken up
constexpr std::size_t runsOfChunk = 128;

/// What is to be drawn.
struct Work
{
  std::size_t runs = 0;
  std::int64_t coats = 0; ///< that are added
};

/// Objects that count at the same time, the one that takes the sum among them.
std::size_t lanesFor(RunCoverage const& counts)
{
  const std::size_t bytes = counts.differences().size() * sizeof(std::uint32_t);
  return std::min(mostLanes, 1 + mostExtraBytes / bytes);
}

bool isWorthThreads(RunCoverage const& counts, RunBlock const& runs, Work const& work)
{
  // Each point ends a piece at worst. Near the limit the order of runs decides what fits.
  const auto mostPieces = static_cast<std::int64_t>(runs.stride) * work.coats;
  return work.runs * runs.stride >= fewestPoints && lanesFor(counts) > 1 &&
         counts.coats() + mostPieces <= RunCoverage::mostCoats;
}

RunBlock partOf(RunBlock const& runs, std::size_t first, std::size_t count)
{
  return {runs.points + 2 * runs.stride * first, runs.stride, count};
}

/// Calls draw(object, first, count) for chunks of the runs, and sums up.
template <class Draw>
void drawInLanes(RunCoverage& counts, std::size_t runs, BlockRunner const& runner, Draw const& draw)
{
  const std::size_t lanes = lanesFor(counts);
  std::vector<std::optional<RunCoverage>> others(lanes - 1);
  std::atomic<std::size_t> next = 0;
  runBlocks(runner, lanes, [&](std::size_t lane) {
    RunCoverage* own = lane == 0 ? &counts : nullptr;
    for (std::size_t first = next.fetch_add(runsOfChunk); first < runs; first = next.fetch_add(runsOfChunk)) {
      if (!own) own = &others[lane - 1].emplace(counts.frame());
      draw(*own, first, std::min(runsOfChunk, runs - first));
    }
  });
  for (auto const& other : others)
    if (other) counts.merge(*other);
}

} // namespace

bool CoverageLanes::add(RunCoverage& counts, RunBlock const& runs, std::uint8_t const* coats,
                        BlockRunner const& runner)
{
  Work work;
  for (std::size_t i = 0; i < runs.count; ++i) {
    const int own = coats ? coats[i] : 1;
    work.runs += own > 0;
    work.coats += own;
  }
  if (!runner || !isWorthThreads(counts, runs, work)) return counts.add(runs, coats);
  drawInLanes(counts, runs.count, runner, [&](RunCoverage& own, std::size_t first, std::size_t count) {
    own.add(partOf(runs, first, count), coats ? coats + first : nullptr);
  });
  return true;
}

bool CoverageLanes::change(RunCoverage& counts, RunBlock const& runs, std::uint8_t const* oldCoats,
                           std::uint8_t const* newCoats, BlockRunner const& runner)
{
  Work work;
  for (std::size_t i = 0; i < runs.count; ++i) {
    work.runs += oldCoats[i] != newCoats[i];
    work.coats += std::max(0, newCoats[i] - oldCoats[i]);
  }
  if (!runner || !isWorthThreads(counts, runs, work)) return counts.change(runs, oldCoats, newCoats);
  drawInLanes(counts, runs.count, runner, [&](RunCoverage& own, std::size_t first, std::size_t count) {
    own.change(partOf(runs, first, count), oldCoats + first, newCoats + first);
  });
  return true;
}

} // namespace runsieve
