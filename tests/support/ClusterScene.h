#pragma once

#include "PlotScene.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace runsieve::test {

using Curve = std::vector<double>;
using Curves = std::vector<Curve>;

/// A plot of runs that stand one below the other in column 0, with the times 0, 10, 20, ... in column 1.
struct ClusterScene : testing::Test, PlotScene
{
  void load(Curves const& runs)
  {
    std::vector<double> values, times;
    for (Curve const& run : runs)
      for (std::size_t t = 0; t < run.size(); ++t) {
        values.push_back(run[t]);
        times.push_back(10.0 * static_cast<double>(t));
      }
    container.plotData = makeTable({{"Molecule: A", values}, {": Time [s]", times}});
    settings().xColumns = {1};
    settings().yColumns = {0};
    settings().setStride(runs.empty() ? 1 : static_cast<int>(runs.front().size()));
  }

  /// Clusters, and returns what that printed.
  std::string cluster(int clusters, int mode = 0)
  {
    testing::internal::CaptureStdout();
    container.clusterTimeSeries(clusters, mode);
    return testing::internal::GetCapturedStdout();
  }

  std::vector<int> labels()
  {
    std::vector<int> found;
    for (double label : numbers(container.clusterLabels)) found.push_back(static_cast<int>(label));
    return found;
  }

  static std::vector<double> column(vtkTable* table, vtkIdType number)
  {
    return numbers(vtkDataArray::SafeDownCast(table->GetColumn(number)));
  }
};

} // namespace runsieve::test
