#pragma once

#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <string>

namespace runsieve::app {

/// The lines of the bands of a figure as CSV: output, group, line, time and value, for the times that are
/// shown. Groups are called as in the legend. Lines are quantiles, "5 %" to "95 %"; or "lowest", "lower
/// half", "deepest", "upper half" and "highest" of a functional boxplot, and the outlying runs that are
/// drawn, as "run 12". Empty if the figure has no bands.
[[nodiscard]] std::string figureBandsCsv(FigureContent const& content, FigureOptions const& options);

} // namespace runsieve::app
