#pragma once

class vtkChart;
class vtkIntArray;
class vtkTable;

namespace runsieve {

/// Adds a line for each run to a chart, in the colour of its cluster. \param runs a column per run, then the
/// times
void addClusterLines(vtkChart* chart, vtkTable* runs, vtkIntArray* labels);

/// Adds the mean curve of each cluster. \param means a column per cluster, then the times
void addMeanCurves(vtkChart* chart, vtkTable* means);

} // namespace runsieve
