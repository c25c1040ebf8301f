#pragma once

#include "PlotScene.h"
#include "ScanBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace runsieve::test {

/// The composite view of a small scan: 6 runs of 3 times, drawn in a scene.
struct CdfScene : testing::Test, PlotScene
{
  void load(int parameters, ScanShape shape = {})
  {
    shape.runs = 6;
    shape.parameters = parameters;
    settings().setPlotStyle(selectionCdfPlot);
    container.setLinePlotTable(makeScan(shape), false);
  }

  /// Draws again as if the test of each parameter had come out as given.
  void drawWith(std::vector<PlotContainer::KsStatistics> const& statistics)
  {
    container.ksStatistics = statistics;
    container.redraw();
  }

  [[nodiscard]] vtkChartMatrix& matrix() { return *container.chartMatrix; }
  [[nodiscard]] vtkChart* small(int column, int row) { return matrix().GetChart({column, row}); }
  [[nodiscard]] vtkAxis* axis(vtkChart* chart, int number) { return chart->GetAxis(number); }

  /// Parameters on show, in the order of the grid: row by row from the bottom.
  std::vector<std::string> shown()
  {
    std::vector<std::string> names;
    vtkVector2i const size = matrix().GetSize();
    for (int row = 0; row < size.GetY() / 2; ++row)
      for (int column = 0; column < size.GetX(); ++column)
        if (small(column, row)->GetNumberOfPlots() > 0)
          names.push_back(small(column, row)->GetAxis(vtkAxis::BOTTOM)->GetTitle());
    return names;
  }

  /// The plot of the runs, which stands in front of the quartile bands.
  [[nodiscard]] vtkPlot* runs() { return chart()->GetPlot(chart()->GetNumberOfPlots() - 1); }
};

inline constexpr PlotContainer::KsStatistics significant{0.01, 0.9};
inline constexpr PlotContainer::KsStatistics insignificant{0.9, 0.05};

} // namespace runsieve::test
