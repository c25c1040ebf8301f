#pragma once

#include "PlotScene.h"

#include <gtest/gtest.h>

namespace runsieve::test {

/// Pairs of parameters beside the plot's own columns. Columns: 0 "x" of 0 to 40, 1 "y", then "Parameter: a",
/// ...
struct MultiPlotScene : testing::Test, PlotScene
{
  void load(int parameters)
  {
    std::vector<std::pair<std::string, std::vector<double>>> columns{{"x", {0, 20, 40}}, {"y", {1, 2, 3}}};
    std::vector<int> numbers;
    for (int i = 0; i < parameters; ++i) {
      numbers.push_back(static_cast<int>(columns.size()));
      columns.push_back(
          {std::string("Parameter: ") + static_cast<char>('a' + i), {i + 1.0, i + 10.0, i + 50.0}});
    }
    container.setPlotData(makeTable(columns));
    settings().yColumns = {1};
    settings().parameterColumns = numbers;
    container.setPlotStyle(multiPlot);
    container.redraw();
    show();
  }

  [[nodiscard]] vtkChartMatrix* matrix() { return container.chartMatrix; }
  [[nodiscard]] vtkChart* cell(int column, int row) { return matrix()->GetChart({column, row}); }
};

} // namespace runsieve::test
