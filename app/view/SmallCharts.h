#pragma once

#include <runsieve/core/scan/Scan.h>
#include <runsieve/plot/PlotContainer.h>

#include <vtkChart.h>
#include <vtkChartMatrix.h>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// For each parameter of a plot its position in Scan::parameters, which counts all columns of parameters.
[[nodiscard]] std::vector<std::size_t> positionsInScan(PlotContainer const& plot);

/// Calls a function with each small chart of the composite view and the position of its parameter in the
/// scan.
template <class Function> void eachSmallChart(PlotContainer& plot, Function const& function)
{
  if (plot.metaData->getPlotStyle() != selectionCdfPlot || !plot.chartMatrix) return;
  const std::vector<std::size_t> positions = positionsInScan(plot);
  const std::vector<int> shown = plot.shownParameters();
  const vtkVector2i size = plot.chartMatrix->GetSize();
  for (std::size_t k = 0; k < shown.size(); ++k) {
    const int cell = static_cast<int>(k);
    const vtkVector2i place(cell % size.GetX(), cell / size.GetX());
    if (place.GetY() < size.GetY())
      function(plot.chartMatrix->GetChart(place), positions[static_cast<std::size_t>(shown[k])]);
  }
}

/// Writes the texts of text parameters at the axes of their small charts, in place of the numbers that stand
/// for them. Long ones are cut, and of many only some are written. To be called after each redraw.
/// \param width of the view in pixels
void nameTexts(PlotContainer& plot, Scan const& scan, int width);

} // namespace runsieve::app
