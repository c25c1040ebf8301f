#pragma once

#include "support/PlotParts.h"

#include "ScanColumns.h"

#include "app/store/StoredPlot.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

namespace runsieve::test {

/// Whether two scans agree in names, shape and every bit of every value.
inline testing::AssertionResult sameBits(LinePlotTable const& a, LinePlotTable const& b)
{
  if (a.columnNames != b.columnNames) return testing::AssertionFailure() << "other columns";
  if (a.trajectoryCount != b.trajectoryCount || a.trajectoryLength != b.trajectoryLength)
    return testing::AssertionFailure() << "other runs";
  for (std::size_t c = 0; c < a.columnData.size(); ++c)
    if (std::memcmp(a.columnData[c], b.columnData[c], a.rows() * sizeof(double)) != 0)
      return testing::AssertionFailure() << "other values in " << namesOf(a)[c];
  return testing::AssertionSuccess();
}

inline auto membersOf(app::ViewOptions const& view)
{
  return std::make_tuple(view.output, view.density, view.commonScale, view.quantiles, view.logAxes,
                         view.points, view.plainLines, view.pThreshold, view.ksThreshold);
}

/// The corners of an invalid window mean nothing.
inline auto membersOf(CoordinateWindow const& window)
{
  return window.valid ? std::make_tuple(true, window.xMin, window.yMin, window.xMax, window.yMax)
                      : std::make_tuple(false, 0.0, 0.0, 0.0, 0.0);
}

/// Whether two plots agree in everything that a file keeps.
inline testing::AssertionResult samePlot(app::StoredPlot const& a, app::StoredPlot const& b)
{
  if (membersOf(a.view) != membersOf(b.view)) return testing::AssertionFailure() << "another view";
  if (membersOf(a.window) != membersOf(b.window)) return testing::AssertionFailure() << "another window";
  if (a.selectedRows != b.selectedRows) return testing::AssertionFailure() << "another selection";
  return sameBits(*a.scan, *b.scan);
}

/// A view with no member at its default.
inline app::ViewOptions unusualView(std::size_t output)
{
  app::ViewOptions view;
  view.output = output;
  view.density = view.commonScale = view.quantiles = view.logAxes = view.points = view.plainLines = true;
  view.pThreshold = 0.012;
  view.ksThreshold = 0.34;
  return view;
}

} // namespace runsieve::test
