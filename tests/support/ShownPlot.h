#pragma once

#include "PlotScene.h"

#include <gtest/gtest.h>
#include <vtkFloatArray.h>
#include <vtkPlotPoints.h>
#include <vtkStringArray.h>

#include <string>
#include <vector>

namespace runsieve::test {

inline std::vector<std::string> textsOf(vtkStringArray* array)
{
  std::vector<std::string> found;
  for (vtkIdType i = 0; i < array->GetNumberOfValues(); ++i) found.push_back(array->GetValue(i));
  return found;
}

/// A scatter plot in a scene whose looks are set without a redraw.
struct ShownPlot : testing::Test
{
  PlotScene plot;

  ShownPlot()
  {
    plot.container.setPlotData(
        makeTable({{"a", {1, 2, 3}}, {"b", {2, 30, 100}}, {"c", {30, 10, 20}}, {"d", {7, 8, 9}}}));
    plot.container.plotData->AddColumn(makeColumn<vtkFloatArray, float>("error", {1, 1, 1}));
    plot.settings().yColumns = {1};
    plot.settings().zColumns = {4};
    plot.container.redraw();
  }

  PlotContainer& container() { return plot.container; }
  vtkPlotPoints* points() { return vtkPlotPoints::SafeDownCast(plot.chart()->GetPlot(0)); }

  void changeStyle(plotStyles style)
  {
    plot.container.setPlotStyle(style);
    plot.show();
  }

  void setStyleSilently(plotStyles style)
  {
    plot.settings().blockSignals(true);
    plot.settings().setPlotStyle(style);
    plot.settings().blockSignals(false);
  }
};

} // namespace runsieve::test
