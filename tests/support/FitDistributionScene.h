#pragma once

#include "PlotScene.h"

#include <vtkPlotPoints.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

using Cell = std::pair<int, int>;

/// The course of a fit of n parameters in three steps: columns "score", "iteration", "Parameter: k1", ...
struct FitDistributionScene : testing::Test, PlotScene
{
  void load(int n, std::vector<double> const& scores = {1, 10, 100})
  {
    loadScores(n, makeColumn("score", scores), static_cast<int>(scores.size()));
  }

  void loadScores(int n, vtkAbstractArray* scores, int rows)
  {
    vtkNew<vtkTable> table;
    table->AddColumn(scores);
    table->AddColumn(makeColumn("iteration", course(0, rows)));
    std::vector<int> columns;
    for (int i = 0; i < n; ++i) {
      columns.push_back(2 + i);
      table->AddColumn(makeColumn("Parameter: k" + std::to_string(i + 1), course(10 * (i + 1), rows)));
    }
    container.setPlotData(table);
    settings().parameterColumns = columns; // after the table, which has no typed columns
    draw();
  }

  void draw()
  {
    if (settings().getPlotStyle() == fitParameterDistributionPlot) container.redraw();
    settings().setPlotStyle(fitParameterDistributionPlot);
  }

  static std::vector<double> course(int first, int rows)
  {
    std::vector<double> values;
    for (int row = 0; row < rows; ++row) values.push_back(first + row);
    return values;
  }

  [[nodiscard]] vtkChartMatrix& matrix() { return *container.chartMatrix; }
  [[nodiscard]] vtkChart* cell(int x, int y) { return matrix().GetChart({x, y}); }
  [[nodiscard]] vtkPlotPoints* points(int x, int y)
  {
    return vtkPlotPoints::SafeDownCast(cell(x, y)->GetPlot(0));
  }

  std::vector<Cell> usedCells()
  {
    std::vector<Cell> used;
    for (int x = 0; x < matrix().GetSize().GetX(); ++x)
      for (int y = 0; y < matrix().GetSize().GetY(); ++y)
        if (cell(x, y)->GetNumberOfPlots() > 0) used.emplace_back(x, y);
    return used;
  }

  void paintAll()
  {
    RecordingPainter recorder;
    show();
    paint(recorder);
  }
};

inline std::pair<std::string, std::string> drawnPair(vtkChart* chart)
{
  return {drawnColumn(chart->GetPlot(0), 0), drawnColumn(chart->GetPlot(0), 1)};
}

} // namespace runsieve::test
