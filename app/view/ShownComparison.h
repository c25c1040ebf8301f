#pragma once

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/compare/ParameterComparer.h>
#include <runsieve/core/live/LiveDistance.h>
#include <runsieve/plot/PlotContainer.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// A comparison with the runs that it is of, to be shown in the small charts of the composite view.
struct ShownComparison
{
  Comparison numbers;
  RunSet passing; ///< runs of the scan; those that are not eligible don't count
};

/// Compares runs with all others. Nothing to show, and no numbers, if none of them is eligible.
[[nodiscard]] ShownComparison compareRuns(ParameterComparer const& comparer, RunSet const& passing,
                                          ComparisonMethod const& method);
/// The same for the runs that the selection of a plot lets through; nothing without a selection.
[[nodiscard]] ShownComparison compareSelection(PlotContainer const& plot, ParameterComparer const& comparer,
                                               ComparisonMethod const& method);

/// Lets the small charts follow the numbers of the program in place of the library's own: which parameters
/// are shown, and in which order. Redraws.
void orderBy(PlotContainer& plot, Comparison const& comparison);
void orderBy(PlotContainer& plot, ClusterComparison const& comparison);

/// Writes d, adjusted p and a star over the small charts, counts each run once in their curves, and draws the
/// noise floor: a band around the curve of the others that the curve of the passing runs leaves where the
/// difference is more than chance makes. To be called after each redraw; twice does no harm. \param comparer
/// that made the comparison
void label(PlotContainer& plot, ParameterComparer const& comparer, ShownComparison const& shown);
/// The same for clusters, without a noise floor.
void label(PlotContainer& plot, ClusterComparison const& comparison);

/// Writes nothing but d over the small charts, while a selection is being made; without distances their
/// titles go. \param distances one per parameter of the scan, or none
void labelDistances(PlotContainer& plot, std::vector<LiveDistance> const& distances);

/// "d +0.43, p 0.002 *" or, if it is not significant, "d +0.05, p 0.9 n.s.": short, since charts can be
/// small.
[[nodiscard]] std::string chartTitle(double d, double p, bool significant);

} // namespace runsieve::app
