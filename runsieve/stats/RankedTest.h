#pragma once

#include <runsieve/core/parallel/BlockRunner.h>
#include <runsieve/records/KsStatistics.h>

#include <vector>

class vtkTable;

namespace runsieve {

/// Compares the columns "Sorted ..." of two ranked tables pairwise by the two-sample Kolmogorov-Smirnov test.
/// Missing tables give an empty result, missing columns a statistic of 0.
/// \param runner does a pair in each block
std::vector<KsStatistics> compareRanked(vtkTable* first, vtkTable* second, BlockRunner const& runner = {});

} // namespace runsieve
