#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// All columns, or those in use, against each other.
extern const Style scatterPlotMatrixBuilder;

} // namespace runsieve
