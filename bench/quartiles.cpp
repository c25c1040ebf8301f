// Minimum, quartiles and maximum of each time point of a scan: by the filter of VTK, and by the kernel that
// gives the same numbers.

#include "BenchScan.h"

#include <runsieve/core/kernels/OrderStatistics.h>

#include <benchmark/benchmark.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkOrderStatistics.h>
#include <vtkTable.h>

#include <string>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

constexpr std::size_t output = 0; ///< column of the scan

void kernel(benchmark::State& state, std::string const& name)
{
  LinePlotTable const& scan = *benchScan(name).table;
  const vtkNew<vtkOrderStatistics> defaults;
  const auto mostBins = static_cast<std::size_t>(defaults->GetMaximumHistogramSize());
  for (auto _ : state)
    benchmark::DoNotOptimize(
        orderStatistics(scan.columnData[output], scan.trajectoryCount, scan.trajectoryLength, mostBins));
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
    vtkNew<vtkOrderStatistics> statistics;
    for (vtkIdType c = 0; c < runs->GetNumberOfColumns(); ++c) statistics->AddColumn(runs->GetColumnName(c));
    statistics->SetInputData(0, runs);
    statistics->SetQuantize(true);
    statistics->Update();
  }
}

} // namespace

BENCHMARK_CAPTURE(filter, W1, "W1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filter, W2, "W2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W1, "W1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W2, "W2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernel, W3, "W3")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
