#pragma once

#include "app/explorer/parameters/ColumnCounts.h"

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// Fewer runs on an axis have no density that means anything: they are shown one by one.
constexpr std::size_t fewestForDensity = 11;

/// The density of runs along an axis as it is shown, per length of the axis: on a logarithmic one that of the
/// logarithms. Gaussian kernels of Silverman's bandwidth, 1.06 times the smaller one of standard deviation
/// and interquartile range / 1.34, over the fifth root of the number of runs; mirrored at both ends, so that
/// it does not fall off there (B. W. Silverman, Density Estimation, 1986, 2.10 and 3.4.2). Of many runs some
/// 500 that are evenly spread through their order stand for all. \param points at least 2, from one end of
/// the axis to the other \return one per point; zeros below fewestForDensity runs
[[nodiscard]] std::vector<double> densityOf(ColumnCounts const& counts, std::size_t points);

} // namespace runsieve::app
