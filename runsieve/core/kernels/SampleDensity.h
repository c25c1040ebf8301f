#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <runsieve/core/kernels/RankedSample.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Grid points of every density.
constexpr int densityPoints = 200;

/// Every how many-th value enters the estimate: between 400 and 599 of a sample of 800 or more.
RUNSIEVE_CORE_EXPORT std::size_t thinningStep(std::size_t sampleSize);

/// The density of a sorted sample on densityPoints locations across its range.
///
/// From 11 thinned values on a Gaussian kernel estimate on the unit range, the sample being mirrored at the
/// lower end and, if the range is closed, at the upper end, so that the density does not fall off there
/// (reflection, Silverman, Density Estimation, 1986, 2.10; bandwidth by his rule of thumb with 1.06). Below
/// that one spike of height 1 per value, and for a degenerate range one spike in all. An empty sample gives 0
/// everywhere.
RUNSIEVE_CORE_EXPORT void sampleDensity(std::vector<double> const& sorted, ParameterRange const& range,
                                        double* locations, double* density);

} // namespace runsieve
