#pragma once

#include "app/explorer/figure/FigureOptions.h"

namespace runsieve::app {

/// The options of the last figure, as the settings of the program keep them; those of a first one else. What
/// belongs to one scan, such as its title, outputs and parameters, is not kept.
[[nodiscard]] FigureOptions lastFigureOptions();
void keepFigureOptions(FigureOptions const& options);

} // namespace runsieve::app
