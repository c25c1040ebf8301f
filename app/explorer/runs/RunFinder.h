#pragma once

#include "app/explorer/charts/ChartFrame.h"

#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <QPointF>

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// A run near a place in a chart.
struct FoundRun
{
  std::size_t run;
  double time;  ///< of the scan, nearest to the place
  double value; ///< of the run at that time; NaN if it is missing
};

/// The run whose line is nearest to a place, up and down, within some pixels; before the first time and
/// behind the last one its ends count. Nothing if there is none. \param among the runs to look at \param
/// reach pixels
[[nodiscard]] std::optional<FoundRun> findRun(Scan const& scan, std::size_t output, ChartFrame const& frame,
                                              QPointF const& place, double reach, RunSet const& among);

} // namespace runsieve::app
