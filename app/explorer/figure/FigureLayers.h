#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <runsieve/core/scan/RunSet.h>

#include <QColor>
#include <QString>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// Runs that are shown in a colour of their own.
struct FigureLayer
{
  QString name; ///< for the legend
  QColor color;
  RunSet runs;
  double opacity = 1.0; ///< less than 1 for a pale ground
};

/// The groups of runs of a figure, the later ones above.
[[nodiscard]] std::vector<FigureLayer> figureLayers(FigureContent const& content,
                                                    FigureOptions const& options, Theme const& theme);

/// What the dark marks in the charts of parameters are, where no group of the legend says so: the runs that
/// do not pass. Empty if nothing passes or fails.
[[nodiscard]] QString othersText(FigureContent const& content, FigureOptions const& options);

/// What the legend says of a group: its name, and how many runs it has if counts are shown.
[[nodiscard]] QString legendText(FigureLayer const& layer, FigureOptions const& options);

} // namespace runsieve::app
