#pragma once

#include <vector>

class vtkChart;
class vtkChartMatrix;

namespace runsieve {

/// The charts that a matrix holds. Asked by position it would make one in each empty cell.
std::vector<vtkChart*> chartsIn(vtkChartMatrix* matrix);

} // namespace runsieve
