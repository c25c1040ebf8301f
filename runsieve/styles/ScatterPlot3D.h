#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// Three columns as points in space.
extern const Style scatterPlot3DBuilder;

} // namespace runsieve
