#pragma once

#include <vtkSmartPointer.h>

class vtkIntArray;
class vtkTable;

namespace runsieve {

/// How runs are grouped.
struct ClusterSearch
{
  int clusters; ///< below 1 nothing is grouped
  int mode;   ///< 2: by the phase of the Fourier transform, 3: by its magnitude, others: by the curve itself
  int starts; ///< searches, of which the best counts
  bool finiteOnly = false; ///< runs with a NaN or an infinity take no part, and belong to the first cluster
};

/// The runs of a stacked table, grouped. All null if there is no complete run or one of the columns is
/// missing.
struct RunClusters
{
  vtkSmartPointer<vtkTable> curves;    ///< a column per run, then "Time"
  vtkSmartPointer<vtkTable> means;     ///< a mean curve per cluster, then "Time"
  vtkSmartPointer<vtkIntArray> labels; ///< the cluster of each run
};

RunClusters clusterRuns(vtkTable* table, int x, int y, int stride, ClusterSearch const& search);

} // namespace runsieve
