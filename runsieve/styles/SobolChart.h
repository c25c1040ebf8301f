#pragma once

class vtkChart;
class vtkTable;

namespace runsieve {

/// Fills a new chart with bars over the rows of a table of Sobol indices, or with areas over its times, with
/// the legend beside the plot. \param total indices of total order, which may be above 1
void addSobolBars(vtkChart* chart, vtkTable* table, bool total);
void addSobolAreas(vtkChart* chart, vtkTable* table, bool total);

} // namespace runsieve
