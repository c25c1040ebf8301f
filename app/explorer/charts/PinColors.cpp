#include "app/explorer/charts/PinColors.h"

namespace runsieve::app {

PinColors::PinColors(std::vector<NamedSet> const& sets, PinnedRuns const& pins, Theme const& theme)
{
  const std::size_t all = theme.sets.size();
  std::vector<bool> isOfSet(all);
  for (NamedSet const& set : sets)
    if (set.shown) isOfSet[set.color % all] = true;
  std::vector<std::size_t> others; // that no set has, first those that no run has
  std::vector<bool> isOfRun(all);
  for (std::size_t const run : pins.runs()) isOfRun[pins.numberOf(run) % all] = true;
  for (bool const used : {false, true})
    for (std::size_t color = 0; color < all; ++color)
      if (!isOfSet[color] && isOfRun[color] == used) others.push_back(color);
  std::size_t next = 0;
  for (std::size_t const run : pins.inOrder()) {
    std::size_t color = pins.numberOf(run) % all;
    if (isOfSet[color] && !others.empty()) color = others[next++ % others.size()];
    colors[run] = theme.sets[color];
  }
}

} // namespace runsieve::app
