#include "app/explorer/document/PinnedRuns.h"

#include <algorithm>
#include <utility>

namespace runsieve::app {

PinnedRuns::PinnedRuns(std::vector<std::size_t> const& inOrder)
{
  for (std::size_t const run : inOrder) add(run);
}

void PinnedRuns::add(std::size_t run)
{
  if (!all.insert(run).second) return;
  const std::size_t number = gaps.empty() ? numbers.size() : *gaps.begin();
  gaps.erase(number);
  numbers[run] = number;
}

std::vector<std::size_t> PinnedRuns::inOrder() const
{
  std::vector<std::size_t> order(all.begin(), all.end());
  std::sort(order.begin(), order.end(),
            [this](std::size_t a, std::size_t b) { return numberOf(a) < numberOf(b); });
  return order;
}

void PinnedRuns::set(std::set<std::size_t> runs)
{
  for (std::size_t const run : std::exchange(all, {})) {
    if (runs.count(run) > 0) {
      all.insert(run);
      continue;
    }
    gaps.insert(numberOf(run));
    numbers.erase(run);
  }
  for (std::size_t const run : runs) add(run);
}

} // namespace runsieve::app
