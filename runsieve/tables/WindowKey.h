#pragma once

#include <runsieve/records/ReducedMetaData.h>

class PlotMetaData;

namespace runsieve {

/// The key under which the axis ranges of a plot with such settings are remembered.
ReducedMetaData windowKey(PlotMetaData const& settings);

} // namespace runsieve
