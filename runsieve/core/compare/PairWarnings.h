#pragma once

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/compare/ComparisonWarning.h>
#include <runsieve/core/compare/Pairs.h>

#include <cstdint>
#include <vector>

namespace runsieve {

/// What makes the correlations of pairs mean less than they seem to.
/// \param passing as ComparedRuns::maskOf() gives it
[[nodiscard]] std::vector<ComparisonWarning> pairWarningsOf(ComparedRuns const& runs,
                                                            std::vector<std::uint8_t> const& passing,
                                                            PairComparisons const& comparison);

} // namespace runsieve
