#pragma once

#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <vector>

namespace runsieve {

/// A selection of rows of a plot, ascending, that lets exactly these runs survive. Row r is run r / times at
/// time r % times.
///
/// Plots keep a run if, at every time at which any row is selected, a row of that run is selected. They see
/// rows, not outputs or gates. So here the rows of the passing runs are selected at all times at which any
/// gate is a condition, where a person would have dragged; at the first time of the scan if none is. A set
/// without members gives no rows. \param gates that were resolved on this scan
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<long long>
rowsToSelect(RunSet const& runs, std::vector<ResolvedGate> const& gates, Scan const& scan);

} // namespace runsieve
