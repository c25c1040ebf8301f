// Grouping the runs of a scan by their shape: by the filter of VTK, and by the kernel that gives the same
// clusters.

#include "BenchScan.h"

#include <runsieve/records/vtkKMeansPearson.h>
#include <runsieve/core/kernels/PearsonKMeans.h>

#include <benchmark/benchmark.h>
#include <vtkDoubleArray.h>
#include <vtkKMeansStatistics.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <string>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

constexpr int clusters = 4;
constexpr std::size_t output = 0; ///< column of the scan whose runs are grouped

void kernel(benchmark::State& state, std::string const& name)
{
  LinePlotTable const& scan = *benchScan(name).table;
  const vtkNew<vtkKMeansStatistics> defaults;
  const SearchLimits limits{defaults->GetMaxNumIterations(), defaults->GetTolerance()};
  for (auto _ : state)
    benchmark::DoNotOptimize(clusterByShape(scan.columnData[output], scan.trajectoryCount,
                                            scan.trajectoryLength, clusters, limits));
}

void filter(benchmark::State& state, std::string const& name)
{
  LinePlotTable const& scan = *benchScan(name).table;
  vtkNew<vtkTable> runs;
  for (std::uint64_t t = 0; t < scan.trajectoryLength; ++t) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(std::to_string(100000 + t).c_str());
    for (std::uint64_t r = 0; r < scan.trajectoryCount; ++r)
      column->InsertNextValue(scan.columnData[output][r * scan.trajectoryLength + t]);
    runs->AddColumn(column);
  }
  for (auto _ : state) {
    vtkNew<vtkKMeansStatistics> search;
    vtkNew<vtkKMeansPearson> distance;
    for (vtkIdType c = 0; c < runs->GetNumberOfColumns(); ++c)
      search->SetColumnStatus(runs->GetColumnName(c), 1);
    search->RequestSelectedColumns();
    search->SetInputData(0, runs);
    search->SetDistanceFunctor(distance);
    search->SetAssessOption(true);
    search->SetDefaultNumberOfClusters(clusters);
    search->Update();
  }
}

} // namespace

BENCHMARK_CAPTURE(filter, W1, "W1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W1, "W1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W2, "W2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W3, "W3")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
