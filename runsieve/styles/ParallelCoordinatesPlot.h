#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// A line for each row through an axis for each column.
extern const Style parallelCoordinatesBuilder;

} // namespace runsieve
