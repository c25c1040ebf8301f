// From a scan file to the table in memory and to the first picture.

#include "BenchScan.h"

#include "app/render/OffscreenView.h"
#include "app/view/ScanPlot.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/write/WriteScan.h>

#include <vtkContextScene.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

/// A scan as a file with all digits, removed at the end.
class WrittenScan
{
public:
  explicit WrittenScan(std::string const& name)
      : path((std::filesystem::temp_directory_path() /
              ("runsieve_bench_" + std::to_string(::getpid()) + ".csv"))
                 .string())
  {
    writeScan(scanOf(benchScan(name).table), path);
  }
  ~WrittenScan() { std::filesystem::remove(path); }
  WrittenScan(WrittenScan const&) = delete;
  WrittenScan& operator=(WrittenScan const&) = delete;

  std::string const path;
  double megabytes() const { return static_cast<double>(std::filesystem::file_size(path)) * 1e-6; }
};

void readFile(benchmark::State& state, std::string const& name, unsigned threads)
{
  const WrittenScan file(name);
  ReadOptions options;
  options.threads = threads;
  for (auto _ : state) benchmark::DoNotOptimize(linePlotTableOf(readScan(file.path, options).scan));
  state.counters["MB"] = file.megabytes();
  state.counters["MB/s"] =
      benchmark::Counter(file.megabytes(), benchmark::Counter::kIsIterationInvariantRate);
}

/// All fields of a file below its header, in the order of the lines, read as plainly as it goes.
std::vector<double> plainlyRead(std::string const& path)
{
  std::vector<double> values;
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    char const* const end = line.data() + line.size();
    for (char const* field = line.data(); field < end; ++field) {
      double value = 0.0;
      field = std::from_chars(field, end, value).ptr;
      values.push_back(value);
    }
  }
  return values;
}

template <class Work> double secondsOf(Work const& work)
{
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Both in turn, so that a busy machine slows both.
void readBesidePlainLoop(benchmark::State& state, std::string const& name)
{
  const WrittenScan file(name);
  ReadOptions options;
  options.threads = 1;
  double plain = 0.0;
  double own = 0.0;
  for (auto _ : state) {
    plain += secondsOf([&] { benchmark::DoNotOptimize(plainlyRead(file.path).data()); });
    const double seconds =
        secondsOf([&] { benchmark::DoNotOptimize(linePlotTableOf(readScan(file.path, options).scan)); });
    state.SetIterationTime(seconds);
    own += seconds;
  }
  state.counters["plain loop ms"] = 1e3 * plain / static_cast<double>(state.iterations());
  state.counters["ratio"] = own / plain;
}

void writeFile(benchmark::State& state, std::string const& name)
{
  const WrittenScan file(name);
  for (auto _ : state) writeScan(scanOf(benchScan(name).table), file.path);
  state.counters["MB/s"] =
      benchmark::Counter(file.megabytes(), benchmark::Counter::kIsIterationInvariantRate);
}

void firstPicture(benchmark::State& state, std::string const& name)
{
  const WrittenScan file(name);
  app::OffscreenView view(1200, 900, 0);
  for (auto _ : state) {
    PlotContainer plot(nullptr);
    view.scene()->ClearItems();
    view.scene()->AddItem(plot.getItem());
    app::showScan(plot, linePlotTableOf(readScan(file.path).scan), app::ViewOptions());
    app::polish(plot);
    view.render();
    plot.setScene(nullptr);
  }
}

} // namespace

int main(int argc, char** argv)
{
  QCoreApplication application(argc, argv);
  for (std::string scan : {"W1", "W2"}) {
    for (unsigned threads : {1u, 2u})
      benchmark::RegisterBenchmark(("read/" + scan + "/threads:" + std::to_string(threads)).c_str(), readFile,
                                   scan, threads)
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime();
    benchmark::RegisterBenchmark(("read beside a plain loop/" + scan).c_str(), readBesidePlainLoop, scan)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    benchmark::RegisterBenchmark(("write/" + scan).c_str(), writeFile, scan)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark(("file to first picture/" + scan).c_str(), firstPicture, scan)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
