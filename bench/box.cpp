// Boxes of few parameters that hold most of the passing runs, and their stability in halves of the runs.

#include <runsieve/core/inference/BoxStability.h>
#include <runsieve/core/inference/RandomStream.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <vector>

using namespace runsieve;

namespace {

constexpr std::size_t parameters = 20;
constexpr std::size_t latticeEvery = 4; ///< of the parameters one stands on a lattice
constexpr double lattice = 10.0;        ///< values of it
constexpr std::uint32_t noiseEvery = 20;

struct Runs
{
  explicit Runs(std::size_t runs) : columns(parameters), passing(runs)
  {
    for (std::size_t j = 0; j < parameters; ++j) {
      RandomStream random(1, j);
      for (std::size_t run = 0; run < runs; ++run) {
        double const value = random.below(1u << 31) / static_cast<double>(1u << 31);
        columns[j].push_back(j % latticeEvery == 0 ? std::floor(lattice * value) : value);
      }
    }
    RandomStream noise(1, parameters);
    for (std::size_t run = 0; run < runs; ++run) {
      bool const inBox = columns[1][run] < 0.6 && columns[2][run] > 0.5 && columns[4][run] < 7.0;
      passing[run] = inBox != (noise.below(noiseEvery) == 0) ? 1 : 0;
    }
  }

  [[nodiscard]] BoxTable table() const
  {
    BoxTable result(passing.size());
    for (auto const& column : columns) result.addNumbers(column.data());
    return result;
  }
  [[nodiscard]] BoxSample sample() const { return BoxSample(passing.data(), passing.size()); }

  std::vector<std::vector<double>> columns;
  std::vector<unsigned char> passing;
};

void orderOfRuns(benchmark::State& state)
{
  Runs const runs(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(runs.table());
}

void pathOfBoxes(benchmark::State& state)
{
  Runs const runs(static_cast<std::size_t>(state.range(0)));
  BoxTable const table = runs.table();
  BoxSample const sample = runs.sample();
  for (auto _ : state) benchmark::DoNotOptimize(findBoxPath(table, sample));
  state.counters["boxes"] = static_cast<double>(findBoxPath(table, sample)->steps.size());
}

void chosenBoxOfPath(benchmark::State& state)
{
  Runs const runs(static_cast<std::size_t>(state.range(0)));
  BoxTable const table = runs.table();
  BoxSample const sample = runs.sample();
  BoxPath const path = *findBoxPath(table, sample);
  BoxRule rule;
  rule.largestQuasiP = 0.05;
  for (auto _ : state) benchmark::DoNotOptimize(chosenBox(table, sample, path, {}, rule));
}

void stabilityOfBox(benchmark::State& state)
{
  Runs const runs(static_cast<std::size_t>(state.range(0)));
  BoxTable const table = runs.table();
  BoxSample const sample = runs.sample();
  HalfSamples halves;
  halves.threads = static_cast<unsigned>(state.range(1));
  BoxRule rule;
  rule.largestQuasiP = 0.05;
  for (auto _ : state) benchmark::DoNotOptimize(boxStability(table, sample, {}, rule, halves));
}

} // namespace

BENCHMARK(orderOfRuns)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(pathOfBoxes)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(chosenBoxOfPath)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(stabilityOfBox)->Args({10000, 1})->Args({10000, 2})->UseRealTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
