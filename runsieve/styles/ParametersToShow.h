#pragma once

#include <runsieve/records/KsStatistics.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Small charts in a row of the composite view.
constexpr int chartsPerRow = 4;

/// The parameters that the composite view shows, by position: those that differ, in their order, then others
/// until whole rows are full. Both thresholds include equality. \param count number of parameters; statistics
/// may be fewer, or more from an earlier table \param order positions in the order in which others are chosen
/// and all stand; those that it leaves out follow, and what is no position in it, or stands there twice, is
/// passed over
std::vector<int> parametersToShow(std::vector<KsStatistics> const& statistics, std::size_t count,
                                  double pThreshold, double ksThreshold, std::vector<int> const& order = {});

} // namespace runsieve
