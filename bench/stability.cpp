// Resampling the runs of a scan: how long it takes, and how often intervals hold the true distance.

#include <runsieve/core/inference/RandomStream.h>
#include <runsieve/core/inference/SizeCurve.h>
#include <runsieve/core/inference/Stability.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

using namespace runsieve;

namespace {

double uniform(RandomStream& random)
{
  return (random.below(1u << 30) + 0.5) / static_cast<double>(1u << 30);
}

/// Parameters whose passing runs, the first of all, reach up to 1 - distance, the others up to 1.
struct Runs
{
  std::vector<ComparedParameter> compared;
  std::vector<unsigned char> passing;
};

Runs cutRuns(std::size_t parameters, std::size_t passing, std::size_t runs, double distance,
             std::uint64_t seed)
{
  Runs result;
  result.passing.resize(runs);
  for (std::size_t run = 0; run < passing; ++run) result.passing[run] = 1;
  for (std::size_t p = 0; p < parameters; ++p) {
    RandomStream random(seed, 1000000 + p);
    std::vector<double> column(runs);
    for (std::size_t run = 0; run < runs; ++run)
      column[run] = uniform(random) * (run < passing ? 1.0 - distance : 1.0);
    result.compared.push_back({orderedValues(column.data(), runs)});
  }
  return result;
}

void resamplesOfRuns(benchmark::State& state)
{
  const auto runCount = static_cast<std::size_t>(state.range(1));
  const Runs runs = cutRuns(static_cast<std::size_t>(state.range(0)), runCount / 4, runCount, 0.1, 1);
  StabilitySettings settings;
  settings.threads = 1;
  for (auto _ : state) {
    Stability stability(runs.compared, runs.passing, settings);
    while (!stability.done()) stability.advance();
    benchmark::DoNotOptimize(stability.parameters());
  }
}

void curveOfRuns(benchmark::State& state)
{
  const auto runCount = static_cast<std::size_t>(state.range(1));
  const Runs runs = cutRuns(static_cast<std::size_t>(state.range(0)), runCount / 4, runCount, 0.1, 1);
  SizeCurveSettings settings;
  settings.threads = 1;
  for (auto _ : state) {
    SizeCurve curve(runs.compared, runs.passing, settings);
    while (!curve.done()) curve.advance();
    benchmark::DoNotOptimize(curve.points());
  }
}

/// Arguments: passing runs, others, true distance in percent.
void coverage(benchmark::State& state)
{
  const auto passing = static_cast<std::size_t>(state.range(0));
  const double distance = 0.01 * static_cast<double>(state.range(2));
  constexpr std::uint64_t scans = 1000;
  double below = 0.0;
  double above = 0.0;
  double width = 0.0;
  for (auto _ : state)
    for (std::uint64_t scan = 0; scan < scans; ++scan) {
      const Runs runs =
          cutRuns(1, passing, passing + static_cast<std::size_t>(state.range(1)), distance, scan);
      StabilitySettings settings;
      settings.resamples = 400;
      settings.seed = scan;
      settings.threads = 1;
      Stability stability(runs.compared, runs.passing, settings);
      while (!stability.done()) stability.advance();
      const DistanceStability found = stability.parameters()[0];
      below += found.upper < distance;
      above += found.lower > distance;
      width += found.upper - found.lower;
    }
  const double all = static_cast<double>(scans) * static_cast<double>(state.iterations());
  state.counters["covered"] = 1.0 - (below + above) / all;
  state.counters["tooLow"] = below / all;
  state.counters["tooHigh"] = above / all;
  state.counters["width"] = width / all;
}

} // namespace

BENCHMARK(resamplesOfRuns)->Args({20, 10000})->Args({20, 100000})->Unit(benchmark::kMillisecond);
BENCHMARK(curveOfRuns)->Args({20, 10000})->Unit(benchmark::kMillisecond);
BENCHMARK(coverage)
    ->ArgsProduct({{3, 5, 15, 50}, {30, 200}, {0, 10, 30, 60}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
