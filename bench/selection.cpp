// From a change of the selection to the statistics, as a whole and step by step.

#include "BenchScan.h"

#include "app/view/ThreadPool.h"

#include <runsieve/core/kernels/RunIntersection.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/selection/RunIndex.h>
#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <vtkAnnotationLink.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <fstream>
#include <iostream>
#include <memory>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

constexpr int stride = 101;
constexpr int timeColumn = 4;

/// A plot without a scene: nothing is drawn, and the line it prints about that is dropped.
struct SilentPlot
{
  explicit SilentPlot(BenchScan const& scan) : plot(nullptr)
  {
    std::cout.rdbuf(nullptr);
    plot.metaData->blockSignals(true);
    plot.metaData->setPlotStyle(selectionCdfPlot);
    plot.setLinePlotTable(scan.table, false);
  }
  PlotContainer plot;
};

std::vector<long long> const& rowsOf(BenchScan const& scan, bool brush)
{
  return brush ? scan.brush : scan.wide;
}

double residentMegabytes()
{
  std::ifstream status("/proc/self/statm");
  long pages = 0;
  long resident = 0;
  status >> pages >> resident;
  return static_cast<double>(resident) * 4096.0 / 1e6;
}

void selectionToStatistics(benchmark::State& state, std::string const& name, bool brush,
                           BlockRunner const& runner)
{
  BenchScan const& scan = benchScan(name);
  SilentPlot silent(scan);
  silent.plot.setRunner(runner);
  const vtkSmartPointer<vtkSelection> selection = rowSelection(rowsOf(scan, brush));
  const double before = residentMegabytes();
  silent.plot.annotationLink->SetCurrentSelection(
      selection); // fills memory and indices that later selections reuse
  const double after = residentMegabytes();
  for (auto _ : state) silent.plot.annotationLink->SetCurrentSelection(selection);
  const auto sampleRows = static_cast<double>(silent.plot.tables[2]->GetNumberOfRows() +
                                              silent.plot.tables[5]->GetNumberOfRows());
  const double sampleMegabytes =
      sampleRows * static_cast<double>(silent.plot.tables[2]->GetNumberOfColumns()) * 8e-6;
  double sumD = 0.0;
  for (auto const& statistics : silent.plot.ksStatistics) sumD += statistics.d;
  state.counters["passing rows"] = static_cast<double>(silent.plot.tables[2]->GetNumberOfRows());
  state.counters["sum of d"] = sumD;
  state.counters["extra MB"] = after - before;
  state.counters["extra/samples"] = (after - before) / sampleMegabytes;
}

void inOneThread(benchmark::State& state, std::string const& name, bool brush)
{
  selectionToStatistics(state, name, brush, {});
}

void inThreads(benchmark::State& state, std::string const& name, bool brush)
{
  selectionToStatistics(state, name, brush, app::sharedThreads());
}

/// Nothing is known of the columns yet, and all memory comes from the system.
void firstSelection(benchmark::State& state, std::string const& name, bool brush)
{
  BenchScan const& scan = benchScan(name);
  const vtkSmartPointer<vtkSelection> selection = rowSelection(rowsOf(scan, brush));
  for (auto _ : state) {
    const SilentPlot silent(scan);
    auto const start = std::chrono::steady_clock::now();
    silent.plot.annotationLink->SetCurrentSelection(selection);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(taken.count());
  }
}

void filterAlone(benchmark::State& state, std::string const& name, bool brush)
{
  BenchScan const& scan = benchScan(name);
  SilentPlot silent(scan);
  silent.plot.annotationLink->SetCurrentSelection(rowSelection(rowsOf(scan, brush)));
  for (auto _ : state) {
    auto filter =
        vtkSmartPointer<vtkCombinedFilterAndSelectedRows>::Take(vtkCombinedFilterAndSelectedRows::New());
    filter->SetParaCount(20);
    filter->SetTimeColumnIndex(timeColumn);
    filter->SetStride(stride);
    filter->SetInputData(0, silent.plot.plotData);
    filter->SetSelectionConnection(silent.plot.annotationLink->GetOutputPort(2));
    filter->Update();
    benchmark::DoNotOptimize(filter->GetOutputDataObject(0));
  }
}

std::vector<unsigned char> flagsOf(BenchScan const& scan, bool brush)
{
  std::vector<unsigned char> selected(scan.table->rows(), 0);
  for (long long row : rowsOf(scan, brush)) selected[static_cast<std::size_t>(row)] = 1;
  return selected;
}

void intersectionAlone(benchmark::State& state, std::string const& name, bool brush)
{
  BenchScan const& scan = benchScan(name);
  const auto rows = static_cast<long long>(scan.table->rows());
  double const* const times = scan.table->columnData[timeColumn];
  const std::vector<unsigned char> selected = flagsOf(scan, brush);
  const RunGrid grid(times, rows, stride);
  for (auto _ : state) {
    const RunIntersection runs(selected.data(), times, rows, stride, grid);
    benchmark::DoNotOptimize(runs.split().others.rowCount());
  }
}

void copiesAlone(benchmark::State& state, std::string const& name, bool brush)
{
  BenchScan const& scan = benchScan(name);
  SilentPlot silent(scan);
  const auto rows = static_cast<long long>(scan.table->rows());
  double const* const times = scan.table->columnData[timeColumn];
  const std::vector<unsigned char> selected = flagsOf(scan, brush);
  const RunGrid grid(times, rows, stride);
  const RunIntersection::Split split = RunIntersection(selected.data(), times, rows, stride, grid).split();
  vtkTable* const from = silent.plot.plotData;
  RunIndex index;
  const StackedRuns known = {&index, stride, vtkDoubleArray::SafeDownCast(from->GetColumn(timeColumn))};
  for (auto _ : state) {
    vtkNew<vtkTable> passing;
    vtkNew<vtkTable> others;
    RowGather gather(from, known);
    gather.add(split.remainder, false, passing);
    gather.add(split.others, false, others);
    gather.run();
    benchmark::DoNotOptimize(others->GetNumberOfRows());
  }
}

void testAlone(benchmark::State& state, std::string const& name, bool brush)
{
  BenchScan const& scan = benchScan(name);
  SilentPlot silent(scan);
  silent.plot.annotationLink->SetCurrentSelection(rowSelection(rowsOf(scan, brush)));
  for (auto _ : state) {
    silent.plot.ksTestSelection(3, 6);
    benchmark::DoNotOptimize(silent.plot.ksStatistics.data());
  }
}

using Journey = void (*)(benchmark::State&, std::string const&, bool);

benchmark::internal::Benchmark* add(std::string const& title, Journey journey, std::string const& scan,
                                    bool brush)
{
  const std::string name = title + "/" + scan + (brush ? "/brush" : "/wide");
  return benchmark::RegisterBenchmark(name.c_str(), journey, scan, brush)->Unit(benchmark::kMillisecond);
}

void registerJourney(std::string const& title, Journey journey, std::string const& scan)
{
  for (bool brush : {true, false}) add(title, journey, scan, brush);
}

} // namespace

int main(int argc, char** argv)
{
  for (std::string scan : {"W1", "W2", "W3"}) {
    registerJourney("selection to statistics", inOneThread, scan);
    registerJourney("selection to statistics, all cores", inThreads, scan);
    for (bool brush : {true, false}) add("first selection", firstSelection, scan, brush)->UseManualTime();
    registerJourney("step: filter with copies", filterAlone, scan);
    registerJourney("step: intersection", intersectionAlone, scan);
    registerJourney("step: copies", copiesAlone, scan);
    registerJourney("step: two-sample tests", testAlone, scan);
  }
  benchmark::Initialize(&argc, argv);
  std::cout.flush();
  std::unique_ptr<benchmark::BenchmarkReporter> reporter(benchmark::CreateDefaultDisplayReporter());
  // The library's lines go to standard output, so the report keeps a stream of its own.
  std::ostream report(std::cout.rdbuf());
  reporter->SetOutputStream(&report);
  reporter->SetErrorStream(&std::cerr);
  benchmark::RunSpecifiedBenchmarks(reporter.get());
  return 0;
}
