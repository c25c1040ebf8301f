#pragma once

class vtkChart;
class vtkTable;

namespace runsieve {

/// Fills a chart with a sampled density as a filled curve over three ticks.
/// \param samples columns x and density of floats; null: no curve
/// \param height the upper end of the vertical axis, but for some room
/// \param span of x, which decides upon the decimals of the ticks
void showDensity(vtkChart* chart, vtkTable* samples, double height, double span);

} // namespace runsieve
