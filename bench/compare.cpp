// Comparing the parameters of the runs that pass with those of all others, by the core alone.

#include <runsieve/core/compare/Comparison.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <string>

using namespace runsieve;

namespace {

constexpr int parameters = 20;
constexpr int latticeEvery = 4;   ///< of the parameters one stands on a lattice
constexpr double lattice = 100.0; ///< values of it

/// Runs without outputs, which a comparison does not read.
Scan scanOf(std::size_t runs)
{
  std::mt19937 random(1);
  Scan scan;
  scan.times = {0.0};
  scan.runs.resize(runs);
  for (int p = 0; p < parameters; ++p) {
    ScanParameter parameter;
    parameter.label.name = "k" + std::to_string(p + 1);
    for (std::size_t run = 0; run < runs; ++run) {
      const double value = static_cast<double>(random()) / 4294967296.0;
      parameter.values.push_back(p % latticeEvery == 0 ? std::floor(lattice * value) : value);
    }
    scan.parameters.push_back(parameter);
  }
  return scan;
}

/// About a quarter of the runs, by two of the parameters.
RunSet passingOf(Scan const& scan)
{
  RunSet passing(scan.runs.size());
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    passing.set(run, scan.parameters[1].values[run] < 0.5 && scan.parameters[2].values[run] < 0.5);
  return passing;
}

void parametersOfRuns(benchmark::State& state)
{
  const Scan scan = scanOf(static_cast<std::size_t>(state.range(0)));
  const RunSet passing = passingOf(scan);
  for (auto _ : state) benchmark::DoNotOptimize(compareParameters(scan, passing));
  state.counters["passing"] = static_cast<double>(passing.count());
}

} // namespace

BENCHMARK(parametersOfRuns)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
