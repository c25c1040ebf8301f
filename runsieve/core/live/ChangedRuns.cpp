#include <runsieve/core/live/ChangedRuns.h>

#include <cstddef>
#include <cstring>

namespace runsieve {

namespace {

std::uint64_t eightAt(std::vector<std::uint8_t> const& marks, std::size_t first)
{
  std::uint64_t eight = 0;
  std::memcpy(&eight, marks.data() + first, sizeof eight);
  return eight;
}

} // namespace

void findChanged(std::vector<std::uint8_t> const& before, std::vector<std::uint8_t> const& after,
                 std::vector<std::uint32_t>& changed)
{
  constexpr std::size_t together = sizeof(std::uint64_t);
  std::size_t const runs = before.size();
  changed.resize(runs);
  std::size_t found = 0;
  auto const look = [&](std::size_t run) { // without a branch, which could not be predicted
    changed[found] = static_cast<std::uint32_t>(run);
    found += before[run] != after[run] ? 1 : 0;
  };
  std::size_t run = 0;
  for (; run + together <= runs; run += together)
    if (eightAt(before, run) != eightAt(after, run))
      for (std::size_t i = 0; i < together; ++i) look(run + i);
  for (; run < runs; ++run) look(run);
  changed.resize(found);
}

} // namespace runsieve
