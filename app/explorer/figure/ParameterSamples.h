#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/charts/TextBars.h"
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

/// The axis is logarithmic if the content says so, else by the distribution of the values.
[[nodiscard]] ParameterSamples samplesOf(FigureContent const& content, std::size_t parameter);

/// The runs with each text of a text parameter; without gates all are others.
[[nodiscard]] TextGroups textGroupsOf(FigureContent const& content, std::size_t parameter);

/// The cumulative curve, in steps, from the low to the high end of an axis: value and share.
[[nodiscard]] std::vector<QPointF> cumulativeCurve(std::vector<double> const& sorted, AxisMap const& axis);

/// The density along an axis, as densityOf() estimates it: place on the axis from 0 to 1, and density. Empty
/// for fewer than fewestForDensity values on it.
[[nodiscard]] std::vector<QPointF> densityCurve(std::vector<double> const& sorted, AxisMap const& axis);

} // namespace runsieve::app
