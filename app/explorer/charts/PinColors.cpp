#include "app/explorer/charts/PinColors.h"

#include <algorithm>

namespace runsieve::app {

PinColors::PinColors(std::vector<NamedSet> const& sets, Theme const& theme)
{
  for (std::size_t color = 0; color < theme.sets.size(); ++color)
    if (std::none_of(sets.begin(), sets.end(), [&](NamedSet const& set) {
          return set.shown && set.color % theme.sets.size() == color;
        }))
      colors.push_back(theme.sets[color]);
  if (colors.empty()) colors.assign(theme.sets.begin(), theme.sets.end());
}

} // namespace runsieve::app
