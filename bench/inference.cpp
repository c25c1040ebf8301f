// Numbers for one parameter of a scan: how the runs that pass differ from the others, and how likely that is.

#include <runsieve/core/inference/SampleComparison.h>
#include <runsieve/core/inference/TwoSampleP.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

using namespace runsieve;

namespace {

/// Sizes of the samples, and their statistic in thousandths.
void exactP(benchmark::State& state)
{
  auto const passing = static_cast<std::uint32_t>(state.range(0));
  auto const others = static_cast<std::uint32_t>(state.range(1));
  std::vector<std::uint32_t> ends(passing + others);
  std::iota(ends.begin(), ends.end(), 1u);
  std::int64_t const difference = std::int64_t{passing} * others * state.range(2) / 1000;
  for (auto _ : state) {
    TwoSampleP const found = twoSampleP(ends, passing, others, difference);
    if (found.method != PMethod::Exact) state.SkipWithError("not exact");
    benchmark::DoNotOptimize(found);
  }
}

void comparisonOfRuns(benchmark::State& state)
{
  std::mt19937 random(1);
  std::vector<double> values(static_cast<std::size_t>(state.range(0)));
  std::vector<std::uint8_t> passes(values.size());
  for (double& value : values) value = static_cast<double>(random());
  for (std::uint8_t& run : passes) run = random() % 4 == 0 ? 1 : 0;
  OrderedValues const ordered = orderedValues(values.data(), values.size());
  for (auto _ : state) benchmark::DoNotOptimize(compareSamples(ordered, values.data(), passes.data()));
}

} // namespace

// About as many cells as are visited at most: near balance, unequal, few runs, far apart, below 1e-300.
BENCHMARK(exactP)
    ->Args({20000, 20000, 10})
    ->Args({5000, 5000, 190})
    ->Args({1000, 9000, 500})
    ->Args({100, 90000, 500})
    ->Args({3, 2400000, 1000})
    ->Args({1500, 1500, 450})
    ->Args({2500, 2500, 700})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(exactP)->Args({28, 73, 1000})->Args({300, 300, 200})->Unit(benchmark::kMicrosecond);
BENCHMARK(comparisonOfRuns)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
