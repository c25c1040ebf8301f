#pragma once

#include <string>
#include <vector>

class vtkChart;
class vtkTable;

namespace runsieve {

/// Replaces the plots of a chart by a line for each of the named columns, in the colours of a series.
/// \param x number of the column along the bottom axis
void showItemLines(vtkChart* chart, vtkTable* table, int x, std::vector<std::string> const& columns);

} // namespace runsieve
