#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/document/PinnedRuns.h"
#include "app/explorer/document/State.h"

#include <QColor>

#include <cstddef>
#include <map>
#include <vector>

namespace runsieve::app {

/// The colours of pinned runs, by their numbers. One that a shown set has goes to none, so that a run is not
/// taken for a member: the run whose it is has another one that is free, all others keep theirs. If sets have
/// all colours, runs have them as well.
class PinColors
{
public:
  PinColors(std::vector<NamedSet> const& sets, PinnedRuns const& pins, Theme const& theme);

  /// Of a pinned run.
  [[nodiscard]] QColor const& of(std::size_t run) const { return colors.at(run); }

private:
  std::map<std::size_t, QColor> colors; ///< by run
};

} // namespace runsieve::app
