#pragma once

#include <cstddef>

class vtkChart;
class vtkTable;

namespace runsieve {

/// Replaces the plots of a chart by points for each residual, or by a line for each prediction and points for
/// each observation. \param series number of data series \param overTime column 0 holds the times; else rows
/// are counted
void showResiduals(vtkChart* chart, vtkTable* table, std::size_t series, bool overTime, bool curves);

} // namespace runsieve
