#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// One chart with one plot of two columns, as points or as a line for each run.
extern const Style scatterPlotBuilder;

} // namespace runsieve
