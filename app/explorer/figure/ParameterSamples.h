#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/figure/FigureContent.h"

#include <QPointF>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// The values of a parameter of numbers in the two groups of a comparison, in ascending order.
struct ParameterSamples
{
  std::vector<double> passing; ///< empty without gates
  std::vector<double> others;  ///< all that take part without gates
  AxisMap axis;                ///< of all of them
};

/// \param logarithmic by position of the parameter; one that is missing is logarithmic if its values are
/// spread by ratios: positive, over more than two decades, with a median nearer to the middle of a
/// logarithmic axis than of a linear one
[[nodiscard]] ParameterSamples samplesOf(FigureContent const& content, std::size_t parameter);

/// The cumulative curve, in steps, from the low to the high end of an axis: value and share.
[[nodiscard]] std::vector<QPointF> cumulativeCurve(std::vector<double> const& sorted, AxisMap const& axis);

/// The density along an axis as it is shown, per length of the axis: Gaussian kernels with the bandwidth of
/// Silverman's rule of thumb, mirrored at both ends (B. W. Silverman, Density Estimation, 1986, 2.10, 3.4.2).
/// Place on the axis from 0 to 1, and density. Empty below 11 values, which have no density that means
/// anything.
[[nodiscard]] std::vector<QPointF> densityCurve(std::vector<double> const& sorted, AxisMap const& axis);

} // namespace runsieve::app
