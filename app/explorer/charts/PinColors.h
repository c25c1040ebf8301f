#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/document/State.h"

#include <QColor>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// The colours of pinned runs in their order: those that no shown set has, so that a run is not taken for a
/// member; all of them if sets have them all.
class PinColors
{
public:
  PinColors(std::vector<NamedSet> const& sets, Theme const& theme);

  [[nodiscard]] QColor const& of(std::size_t pin) const { return colors[pin % colors.size()]; }

private:
  std::vector<QColor> colors;
};

} // namespace runsieve::app
