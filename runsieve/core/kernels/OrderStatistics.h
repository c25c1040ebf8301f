#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <array>
#include <cstddef>
#include <vector>

namespace runsieve {

/// Minimum, first quartile, median, third quartile and maximum.
using FiveNumbers = std::array<double, 5>;

/// The five numbers of each time point of a stacked column, over its runs.
///
/// They are those of vtkOrderStatistics with Quantize on, to the last bit. A quartile that falls between two
/// values is the mean of both. As long as a sample has more distinct values than `mostBins`, its values are
/// rounded to half as many steps of equal width, so that also minimum and maximum can be half a step off.
///
/// -0.0 and 0.0 are one value, shown by the sign that comes first. Infinities count in a sample of at most
/// `mostBins` distinct values; in a larger one the step is infinite, and so all five numbers are NaN. A NaN
/// counts as the least value before it, since the ordered map of the filter takes it for equal to the first
/// key that it is compared with; a sample that begins with NaN is NaN.
///
/// \param values runs of stride values each, one after the other; runs and stride at least 1
RUNSIEVE_CORE_EXPORT std::vector<FiveNumbers> orderStatistics(double const* values, std::size_t runs,
                                                              std::size_t stride, std::size_t mostBins);

} // namespace runsieve
