#pragma once

#include <runsieve/plot/PlotContainer.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// How one parameter differs between the runs that pass all places and the others.
struct RankedParameter
{
  std::string name; ///< bare name
  double p;         ///< two-sample Kolmogorov-Smirnov p-value
  double d;         ///< its statistic
  double medianPassing;
  double medianOthers;
  bool significant; ///< by both thresholds of the plot
};

/// All parameters of the current selection, significant ones first, then by p-value, then by falling
/// statistic. Empty if no run passes.
std::vector<RankedParameter> rankedParameters(PlotContainer const& plot);

} // namespace runsieve::app
