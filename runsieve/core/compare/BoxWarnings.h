#pragma once

#include <runsieve/core/compare/BoxOfRuns.h>
#include <runsieve/core/compare/ComparisonWarning.h>

#include <vector>

namespace runsieve {

/// What makes a box mean less than it seems to.
[[nodiscard]] std::vector<ComparisonWarning> warningsOf(BoxOfRuns const& box);

} // namespace runsieve
