#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// All pairs of parameters as a triangle of small charts, and the plot's own columns in a large one.
extern const Style multiPlotBuilder;

} // namespace runsieve
