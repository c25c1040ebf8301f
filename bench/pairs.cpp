// Interactions between parameters: how long their permutations take, and how often pairs are beyond the noise
// floor although nothing but each parameter on its own decides whether a run passes.

#include <runsieve/core/inference/PairComparison.h>
#include <runsieve/core/inference/RandomStream.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

using namespace runsieve;

namespace {

using Column = std::vector<double>;

double uniform(RandomStream& random)
{
  return (random.below(1u << 30) + 0.5) / static_cast<double>(1u << 30);
}

struct Runs
{
  std::vector<Column> parameters;
  std::vector<unsigned char> passing;

  [[nodiscard]] double value(std::size_t parameter, std::size_t run) const
  {
    return parameters[parameter][run];
  }
};

/// Parameters drawn from (0, 1) on their own.
Runs independentRuns(std::size_t parameters, std::size_t runs, std::uint64_t seed)
{
  Runs result;
  for (std::size_t p = 0; p < parameters; ++p) {
    RandomStream random(seed, p);
    Column column(runs);
    for (double& value : column) value = uniform(random);
    result.parameters.push_back(column);
  }
  result.passing.resize(runs);
  return result;
}

/// Makes parameter 1 follow parameter 0, with a rank correlation of about 0.6.
void correlate(Runs& runs)
{
  for (std::size_t run = 0; run < runs.passing.size(); ++run)
    runs.parameters[1][run] = 0.45 * runs.parameters[0][run] + 0.55 * runs.parameters[1][run];
}

/// Strata in another order for each parameter, a draw in each stratum.
void makeLatinHypercube(Runs& runs, std::uint64_t seed)
{
  const auto count = static_cast<std::uint32_t>(runs.passing.size());
  for (std::size_t p = 0; p < runs.parameters.size(); ++p) {
    RandomStream random(seed, 1000 + p);
    std::vector<std::uint32_t> strata(count);
    for (std::uint32_t i = 0; i < count; ++i) strata[i] = i;
    for (std::uint32_t i = count; i > 1; --i) std::swap(strata[i - 1], strata[random.below(i)]);
    for (std::uint32_t i = 0; i < count; ++i)
      runs.parameters[p][i] = (strata[i] + runs.parameters[p][i]) / count;
  }
}

enum Gate
{
  CUTS,
  SMOOTH,
  RANDOM,
  SUM,
  EXCLUSIVE
};

/// Whether runs pass; smooth and random gates draw.
void pass(Runs& runs, Gate gate, std::uint64_t seed)
{
  RandomStream random(seed, 999);
  for (std::size_t run = 0; run < runs.passing.size(); ++run) {
    const double x = runs.value(0, run);
    const double y = runs.value(1, run);
    const bool low = x < 0.5;
    switch (gate) {
    case CUTS:
      runs.passing[run] = low && y < 0.5;
      break;
    case SMOOTH:
      runs.passing[run] = uniform(random) < x * (1.0 - y * y) && runs.value(2, run) > 0.3;
      break;
    case RANDOM:
      runs.passing[run] = uniform(random) < 0.25;
      break;
    case SUM:
      runs.passing[run] = x + y < 0.7;
      break;
    case EXCLUSIVE:
      runs.passing[run] = low != (y < 0.5);
      break;
    }
  }
}

PairComparison compared(std::vector<OrderedValues>& orders, Runs const& runs, std::size_t permutations,
                        std::uint64_t seed)
{
  orders.clear();
  for (Column const& column : runs.parameters) orders.push_back(orderedValues(column.data(), column.size()));
  PairSettings settings;
  settings.permutations = permutations;
  settings.seed = seed;
  settings.threads = 1;
  PairComparison comparison(orders, runs.passing, settings);
  while (!comparison.done()) comparison.advance();
  return comparison;
}

void permutationsOfPairs(benchmark::State& state)
{
  Runs runs =
      independentRuns(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)), 1);
  RandomStream random(5, 5);
  for (unsigned char& mark : runs.passing) mark = random.below(100) < state.range(2);
  std::vector<OrderedValues> orders;
  for (auto _ : state) benchmark::DoNotOptimize(compared(orders, runs, 1000, 1).noiseFloor());
}

/// Share of scans of 500 runs and 6 parameters in which some pair is beyond the noise floor, and in which the
/// pair (0, 1) is.
void pairsBeyondTheFloor(benchmark::State& state, Gate gate, bool correlated, bool hypercube)
{
  constexpr std::size_t parameters = 6;
  constexpr std::size_t runCount = 500;
  constexpr std::size_t permutations = 199;
  const auto scans = static_cast<std::uint64_t>(state.range(0));
  double any = 0.0;
  double first = 0.0;
  for (auto _ : state)
    for (std::uint64_t scan = 0; scan < scans; ++scan) {
      Runs runs = independentRuns(parameters, runCount, scan);
      if (hypercube) makeLatinHypercube(runs, scan);
      if (correlated) correlate(runs);
      pass(runs, gate, scan);
      std::vector<OrderedValues> orders;
      const std::vector<PairResult> pairs = compared(orders, runs, permutations, scan).pairs();
      any += std::any_of(pairs.begin(), pairs.end(), [](PairResult const& pair) { return pair.beyondFloor; });
      first += pairs.front().beyondFloor;
    }
  const double all = static_cast<double>(scans) * static_cast<double>(state.iterations());
  state.counters["any"] = any / all;
  state.counters["first"] = first / all;
}

} // namespace

BENCHMARK(permutationsOfPairs)
    ->Args({20, 10000, 25})
    ->Args({20, 10000, 90})
    ->Args({200, 2000, 25})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
#define RUNSIEVE_ERROR_RATE(name, ...)                                                                       \
  BENCHMARK_CAPTURE(pairsBeyondTheFloor, name, __VA_ARGS__)                                                  \
      ->Arg(2000)                                                                                            \
      ->Iterations(1)                                                                                        \
      ->Unit(benchmark::kMillisecond)
RUNSIEVE_ERROR_RATE(randomGate, RANDOM, false, false);
RUNSIEVE_ERROR_RATE(separateCuts, CUTS, false, false);
RUNSIEVE_ERROR_RATE(separateChances, SMOOTH, false, false);
RUNSIEVE_ERROR_RATE(separateCutsOfHypercube, CUTS, false, true);
RUNSIEVE_ERROR_RATE(correlatedRandomGate, RANDOM, true, false);
RUNSIEVE_ERROR_RATE(correlatedSeparateCuts, CUTS, true, false);
RUNSIEVE_ERROR_RATE(correlatedSeparateChances, SMOOTH, true, false);
RUNSIEVE_ERROR_RATE(gateOfSum, SUM, false, false);
RUNSIEVE_ERROR_RATE(exclusiveGate, EXCLUSIVE, false, false);
RUNSIEVE_ERROR_RATE(correlatedGateOfSum, SUM, true, false);
RUNSIEVE_ERROR_RATE(correlatedExclusiveGate, EXCLUSIVE, true, false);

BENCHMARK_MAIN();
