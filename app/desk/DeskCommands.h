#pragma once

#include "app/cli/Commands.h"
#include "app/desk/Desk.h"

#include <runsieve/core/compare/StabilityOfComparison.h>
#include <runsieve/core/scan/Scan.h>

namespace runsieve::app {

// The commands that need Qt and VTK. Each returns the exit status, and throws if its work fails.
int renderPicture(RenderArguments const& arguments);
/// The same if a figure is wanted.
int renderFigure(RenderArguments const& arguments);
int convertPlot(ConvertArguments const& arguments);
int openExplorer(ExploreArguments const& arguments);
/// Groups the runs of an output as the cluster command does, and draws them.
void drawClusterPicture(ClusterArguments const& arguments, Scan const& scan, ClusterPicture const& picture);
/// Draws the runs of a scan by pairs of their parameters.
void drawPairPicture(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture);

/// Draws how coverage and density change along the path on which a box was found.
void drawBoxPicture(BoxArguments const& arguments, BoxOfRuns const& box, std::string const& title);
/// Draws |d| of the first parameters of a comparison against the share of the runs.
void drawStabilityPicture(RankArguments const& arguments, Comparison const& comparison,
                          ComparisonStability const& stability);

} // namespace runsieve::app
