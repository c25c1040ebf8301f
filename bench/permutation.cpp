// Which parameters differ between passing and other runs, by permutations: how long it takes, and how often
// it finds a difference where there is none.

#include <runsieve/core/inference/PermutationTest.h>
#include <runsieve/core/inference/RandomStream.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace runsieve;

namespace {

constexpr std::size_t parameterCount = 20;

double uniform(RandomStream& random)
{
  return static_cast<double>(random.below(1u << 31)) / 2147483648.0;
}

/// What the values of parameters look like.
enum Values : std::int64_t
{
  INDEPENDENT,
  CORRELATED,
  LEVELS,
  MIXED
};

char const* const nameOf[] = {"independent", "correlated", "levels", "mixed"};

/// Parameters that know nothing of which runs pass.
class NullScan
{
public:
  NullScan(std::size_t runCount, std::uint64_t seed) : runs(runCount), random(seed, 0), shared(runCount)
  {
    for (double& value : shared) value = uniform(random);
  }

  /// \param missing share of the runs that have no value, others for each parameter
  std::vector<ComparedParameter> parameters(Values kind, double missing = 0.0)
  {
    missingShare = missing;
    std::vector<ComparedParameter> result;
    for (std::size_t p = 0; p < parameterCount; ++p)
      result.push_back(parameter(kind == MIXED ? static_cast<Values>(p % 4) : kind));
    return result;
  }

  std::vector<unsigned char> passing(std::size_t count)
  {
    std::vector<unsigned char> mask(runs);
    while (count > 0)
      if (unsigned char& mark = mask[random.below(static_cast<std::uint32_t>(runs))]; mark == 0) {
        mark = 1;
        --count;
      }
    return mask;
  }

private:
  /// \param kind a mix has categories as its fourth
  ComparedParameter parameter(Values kind)
  {
    std::vector<double> values(runs);
    for (std::size_t run = 0; run < runs; ++run) {
      double const own = uniform(random);
      if (kind == INDEPENDENT) values[run] = own;
      // Correlation 0.9 of any two: the shared part has 9 times the variance of the own.
      if (kind == CORRELATED) values[run] = 3.0 * shared[run] + own;
      if (kind == LEVELS || kind == MIXED) values[run] = static_cast<double>(static_cast<int>(5.0 * own));
      if (missingShare > 0.0 && uniform(random) < missingShare) values[run] = std::nan("");
    }
    return {orderedValues(values.data(), runs), kind == MIXED ? Steps::EACH_GROUP : Steps::CUMULATIVE};
  }

  std::size_t runs;
  RandomStream random;
  std::vector<double> shared;
  double missingShare = 0.0;
};

/// One batch on one thread.
PermutationOptions oneBatch()
{
  PermutationOptions options;
  options.mostPermutations = options.permutations;
  options.threads = 1;
  return options;
}

template <class Labels>
void timeBatch(benchmark::State& state, std::vector<ComparedParameter> const& parameters,
               Labels const& labels)
{
  for (auto _ : state) {
    PermutationTest test(parameters, labels, oneBatch());
    test.run();
    benchmark::DoNotOptimize(test.result());
  }
  state.counters["permutations"] = benchmark::Counter(static_cast<double>(oneBatch().permutations),
                                                      benchmark::Counter::kIsIterationInvariantRate);
}

void thousandPermutations(benchmark::State& state)
{
  auto const runs = static_cast<std::size_t>(state.range(0));
  auto const kind = static_cast<Values>(state.range(1));
  NullScan scan(runs, 1);
  timeBatch(state, scan.parameters(kind), scan.passing(runs / static_cast<std::size_t>(state.range(2))));
  state.SetLabel(nameOf[kind]);
}

void thousandPermutationsWithMissingRuns(benchmark::State& state)
{
  auto const runs = static_cast<std::size_t>(state.range(0));
  NullScan scan(runs, 1);
  std::vector<ComparedParameter> const parameters = scan.parameters(INDEPENDENT, 0.01);
  timeBatch(state, parameters, scan.passing(runs / 4));
}

void thousandPermutationsOfClasses(benchmark::State& state)
{
  auto const runs = static_cast<std::size_t>(state.range(0));
  auto const classCount = static_cast<std::size_t>(state.range(1));
  NullScan scan(runs, 1);
  std::vector<std::uint32_t> classes(runs);
  for (std::size_t run = 0; run < runs; ++run) classes[run] = static_cast<std::uint32_t>(run % classCount);
  timeBatch(state, scan.parameters(INDEPENDENT), classes);
}

/// The share of scans without any difference in which some parameter has a p of at most 0.05, which is to be
/// at most 0.05; the standard error at 2,000 scans is 0.005.
void falsePositives(benchmark::State& state)
{
  constexpr std::uint64_t scans = 2000;
  // Sizes without a common divisor: otherwise d takes few values, and the share stays well below 0.05.
  constexpr std::size_t runs = 200;
  constexpr std::size_t passing = 49;
  auto const kind = static_cast<Values>(state.range(0));
  double positive = 0.0;
  for (auto _ : state)
    for (std::uint64_t i = 0; i < scans; ++i) {
      std::uint64_t const number = static_cast<std::uint64_t>(kind) * scans + i;
      NullScan scan(runs, 2 * number);
      std::vector<ComparedParameter> const parameters = scan.parameters(kind);
      PermutationOptions options;
      options.seed = 2 * number + 1; // shares no random numbers with the scan
      PermutationTest test(parameters, scan.passing(passing), options);
      test.run();
      for (double const p : test.result().p)
        if (p <= options.cut) {
          ++positive;
          break;
        }
    }
  state.counters["fwer"] = positive / static_cast<double>(scans);
  state.SetLabel(nameOf[kind]);
}

} // namespace

BENCHMARK(thousandPermutations)
    ->ArgNames({"runs", "values", "passing_one_in"})
    ->ArgsProduct({{1000, 10000, 100000}, {INDEPENDENT}, {2, 4, 100}})
    ->Args({10000, LEVELS, 4})
    ->Args({100000, LEVELS, 4})
    ->Args({10000, MIXED, 4})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(thousandPermutationsWithMissingRuns)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(thousandPermutationsOfClasses)
    ->ArgNames({"runs", "classes"})
    ->Args({10000, 3})
    ->Args({10000, 10})
    ->Args({100000, 10})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(falsePositives)->DenseRange(INDEPENDENT, MIXED)->Iterations(1)->Unit(benchmark::kSecond);

BENCHMARK_MAIN();
