#pragma once

#include "app/explorer/parameters/ParameterRuns.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace runsieve::app {

/// Some parameters as the axes of parallel coordinates: each run is a line over them. They take the form of
/// a scan whose times are the axes, 0, 1, 2 ..., and whose only output is the place on each, 0 to 1, so that
/// whatever draws runs over time draws them. A run without a value has none there.
[[nodiscard]] std::shared_ptr<Scan const> parallelRuns(ParameterRuns const& runs,
                                                       std::vector<std::size_t> const& parameters);

/// Where a run stands on the axis of a parameter, from 0 at its low end to 1; texts stand evenly. NaN without
/// a value, and for what the axis doesn't have.
[[nodiscard]] double parallelPlace(ParameterRuns const& runs, std::size_t parameter, std::size_t run);

} // namespace runsieve::app
