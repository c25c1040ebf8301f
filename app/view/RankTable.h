#pragma once

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/plot/PlotContainer.h>

#include <vector>

namespace runsieve::app {

/// A parameter of a plot; `parameter` counts those on show.
using RankedParameter = ParameterComparison;

/// All parameters of the current selection, significant ones first, then by p-value, then by falling
/// statistic. Empty if no run passes.
std::vector<RankedParameter> rankedParameters(PlotContainer const& plot);

} // namespace runsieve::app
