#pragma once

#include <runsieve/core/compare/StabilityOfComparison.h>

namespace runsieve {

/// Finds the verdict on whether there are enough runs, and the sentence that tells it.
void judge(ComparisonStability& stability, Comparison const& comparison);

} // namespace runsieve
