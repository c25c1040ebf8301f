#pragma once

#include <string>
#include <vector>

namespace runsieve {

/// Short names for the runs of several files: the parts in which the paths differ, as "7" for "run_007.csv"
/// beside "run_008.csv", "WT" for "model_WT.txt" beside "model_mutant.txt", "12/3" for
/// "realization-12/iter-3/out.csv" in a tree.
///
/// Where a part is a whole number in every path it is written without leading zeros, unless that would make
/// two of them the same. \param paths different, divided by '/' \return one per path, all different
[[nodiscard]] std::vector<std::string> runKeysOf(std::vector<std::string> const& paths);

} // namespace runsieve
