#pragma once

#include <runsieve/core/inference/BoxTable.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// The runs of a level, by their marks as BoxSample has them; runs marked 0 don't count.
[[nodiscard]] inline BoxTally tallyOf(BoxColumn const& column, std::size_t level,
                                      std::vector<unsigned char> const& marks)
{
  BoxTally tally;
  for (auto const *run = column.begin(level), *end = column.end(level); run != end; ++run)
    tally += BoxSample::tallyOf(marks[*run]);
  return tally;
}

/// Levels at one end of a parameter that are cut off or joined together.
struct TakenLevels
{
  BoxTally tally;
  std::ptrdiff_t last = -1; ///< the last one taken that has runs
  std::ptrdiff_t next = -1; ///< the first one left that has runs; -1 if none is left
};

/// Takes as many whole levels as have at most `most` runs, but at least one: ties cannot be told apart.
/// Levels without marked runs count for nothing.
/// \param from first level \param to one past the last one \param step 1 or -1, the way from there to there
[[nodiscard]] inline TakenLevels takeLevels(BoxColumn const& column, std::vector<unsigned char> const& marks,
                                            std::ptrdiff_t from, std::ptrdiff_t to, std::ptrdiff_t step,
                                            std::size_t most)
{
  TakenLevels taken;
  for (std::ptrdiff_t level = from; level != to; level += step) {
    BoxTally const tally = tallyOf(column, static_cast<std::size_t>(level), marks);
    if (tally.runs == 0) continue;
    if (taken.tally.runs > 0 && taken.tally.runs + tally.runs > most) {
      taken.next = level;
      break;
    }
    taken.tally += tally;
    taken.last = level;
  }
  return taken;
}

/// The runs without a value.
[[nodiscard]] inline BoxTally tallyOfMissing(BoxColumn const& column, std::vector<unsigned char> const& marks)
{
  BoxTally tally;
  for (std::uint32_t const run : column.missing) tally += BoxSample::tallyOf(marks[run]);
  return tally;
}

} // namespace runsieve
