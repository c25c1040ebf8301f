#pragma once

#include <runsieve/records/KsStatistics.h>

#include <vector>

class vtkTable;

namespace runsieve {

/// Compares the columns "Sorted ..." of two ranked tables pairwise by the two-sample Kolmogorov-Smirnov test.
/// Missing tables give an empty result, missing columns a statistic of 0.
std::vector<KsStatistics> compareRanked(vtkTable* first, vtkTable* second);

} // namespace runsieve
