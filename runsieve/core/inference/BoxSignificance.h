#pragma once

#include <runsieve/core/inference/BoxTable.h>

#include <limits>
#include <vector>

namespace runsieve {

/// How likely chance alone makes a range of a box look as good as it does; NaN for a limit that is open.
struct RangeSignificance
{
  double low = std::numeric_limits<double>::quiet_NaN();  ///< quasi-p of the lower limit
  double high = std::numeric_limits<double>::quiet_NaN(); ///< of the upper limit
  double range = 1.0; ///< of the whole range, both limits or the categories
};

/// The quasi-p-values of the ranges of a box (Bryant and Lempert, Technological Forecasting and Social Change
/// 77, 2010): with n runs in the box of which p pass, and n', p' in the box that lacks the limit, the
/// probability of at least p successes in n trials that succeed with p' / n' each. "Quasi", since the limits
/// have been sought: the values compare limits, they are no error rates. The box without a parameter's last
/// limit holds the runs that miss its value as well. 1 for a box without runs.
/// \return one per range of the box \throw std::invalid_argument as checkSizes()
[[nodiscard]] std::vector<RangeSignificance> quasiP(BoxTable const& table, BoxSample const& sample,
                                                    Box const& box);

/// The box without the limits that don't matter: takes out the limit, or the categories of a parameter, with
/// the largest quasi-p-value, as long as it is above `largest`; after each the others are computed anew.
/// Limits that keep no run out go first, whatever their value. Of equal ones the first goes.
/// \throw std::invalid_argument as checkSizes()
[[nodiscard]] Box significantLimits(BoxTable const& table, BoxSample const& sample, Box box,
                                    double largest = 0.05);

} // namespace runsieve
