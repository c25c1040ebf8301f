#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterRuns.h"

#include <QPolygonF>

class QPainter;

namespace runsieve::app {

/// The curves of a chart of a parameter, into the plot of its axes. They come from counts in columns, which
/// stand on the axis of the values; the axis of the chart may reach further.
namespace ChartLooks {

/// Cumulative shares, and around those of the others the noise floor. \param noiseFloor of d; NaN: none
/// \param furthest value at which the curves are furthest apart; NaN: none
void paintCurves(QPainter& painter, ChartFrame const& frame, AxisMap const& values,
                 ParameterGroups const& groups, double noiseFloor, double furthest, Theme const& theme);

/// The densities of both groups, each at as many points as the plot has pixels, at most.
struct Densities
{
  std::vector<double> passing; ///< per length of the axis of the values; empty: too few, shown one by one
  std::vector<double> others;
  double largest = 0.0;
};
[[nodiscard]] Densities densitiesOf(ParameterGroups const& groups);
void paintDensities(QPainter& painter, ChartFrame const& frame, AxisMap const& values,
                    ParameterGroups const& groups, Densities const& densities, Theme const& theme);

/// A distribution function at the ends of pixels, without the points that lie between equal ones.
[[nodiscard]] QPolygonF stepLine(ChartFrame const& frame, AxisMap const& values, ColumnCounts const& counts);

} // namespace ChartLooks

} // namespace runsieve::app
