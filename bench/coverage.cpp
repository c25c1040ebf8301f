// The picture of all runs of a scan: counting, per pixel, how many of its lines cover it, and making an image
// of the counts.

#include <runsieve/core/coverage/CoverageImage.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

using namespace runsieve;

namespace {

constexpr std::size_t times = 101;
constexpr int width = 1100;
constexpr int height = 420;

/// A number from 0 to 1 that follows from the seed (SplitMix64).
double nextNumber(std::uint64_t& seed)
{
  std::uint64_t z = seed += 0x9E3779B97F4A7C15U;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
}

/// Makes up a value from 0 to 1 of one run at a time from 0 to 1.
using Curve = double (*)(std::array<double, 4> const& parameters, double t);

/// A rise, and a slower decay, as the scans of the other benchmarks have them.
double gentle(std::array<double, 4> const& parameters, double t)
{
  const auto spread = [](double p) { return std::exp((p - 0.5) * 2.2); };
  return spread(parameters[0]) / 3.1 * (1 - std::exp(-3 * spread(parameters[1]) * t)) *
         std::exp(-spread(parameters[2]) * t);
}

/// Three to ten oscillations that grow or die away.
double steep(std::array<double, 4> const& parameters, double t)
{
  const double cycles = 3 + 7 * parameters[0];
  const double size = 0.1 + 0.35 * parameters[2];
  return 0.5 +
         size * std::exp((0.5 - 3 * parameters[3]) * t) * std::sin(6.2832 * (cycles * t + parameters[1]));
}

RunBlock blockOf(std::size_t runs, Curve curve = gentle)
{
  static std::map<std::pair<std::size_t, Curve>, std::vector<float>> made;
  std::vector<float>& points = made[{runs, curve}];
  std::uint64_t seed = runs;
  while (points.size() < 2 * times * runs) {
    std::array<double, 4> parameters;
    for (double& value : parameters) value = nextNumber(seed);
    for (std::size_t i = 0; i < times; ++i) {
      const double t = static_cast<double>(i) / (times - 1);
      points.push_back(static_cast<float>(t));
      points.push_back(static_cast<float>(curve(parameters, t)));
    }
  }
  return {points.data(), times, runs};
}

RunCoverage::Frame frame(double lineWidth, int subRows)
{
  return {width, height, subRows, lineWidth / 2, {width, 0, height, 0}};
}

RunCoverage::Frame thin()
{
  return frame(1.01, 1);
}

RunCoverage::Frame thick()
{
  return frame(3.71, 4);
}

/// Every so many runs get `coats`, the others none.
std::vector<std::uint8_t> everyNth(std::size_t runs, std::size_t n, std::uint8_t coats)
{
  std::vector<std::uint8_t> all(runs);
  for (std::size_t i = 0; i < runs; i += n) all[i] = coats;
  return all;
}

void allRuns(benchmark::State& state, RunCoverage::Frame const& shape, Curve curve)
{
  const RunBlock runs = blockOf(static_cast<std::size_t>(state.range(0)), curve);
  RunCoverage coverage(shape);
  for (auto _ : state) {
    coverage.clear();
    benchmark::DoNotOptimize(coverage.add(runs));
  }
}

void someRuns(benchmark::State& state)
{
  const RunBlock runs = blockOf(static_cast<std::size_t>(state.range(0)));
  const auto coats = everyNth(runs.count, 3, 10);
  RunCoverage coverage(thick());
  for (auto _ : state) {
    coverage.clear();
    benchmark::DoNotOptimize(coverage.add(runs, coats.data()));
  }
}

/// Every tenth run is lit or put out.
void changedRuns(benchmark::State& state)
{
  const RunBlock runs = blockOf(static_cast<std::size_t>(state.range(0)));
  auto before = everyNth(runs.count, 3, 10);
  auto after = before;
  for (std::size_t i = 0; i < runs.count; i += 10) after[i] = static_cast<std::uint8_t>(10 - after[i]);
  RunCoverage coverage(thick());
  coverage.add(runs, before.data());
  for (auto _ : state) {
    benchmark::DoNotOptimize(coverage.change(runs, before.data(), after.data()));
    std::swap(before, after);
  }
}

void linesOutside(benchmark::State& state)
{
  const RunBlock runs = blockOf(static_cast<std::size_t>(state.range(0)));
  RunCoverage::Frame shape = thin();
  shape.map.yOffset = 10 * height;
  RunCoverage coverage(shape);
  for (auto _ : state) benchmark::DoNotOptimize(coverage.add(runs));
}

void merging(benchmark::State& state)
{
  RunCoverage sum(thick());
  const RunCoverage part(thick());
  for (auto _ : state) benchmark::DoNotOptimize(sum.merge(part));
}

void image(benchmark::State& state, CoverageImage::Look below, CoverageImage::Look above)
{
  const RunBlock runs = blockOf(static_cast<std::size_t>(state.range(0)));
  const auto coats = everyNth(runs.count, 3, 10);
  RunCoverage all(thin());
  RunCoverage some(thick());
  all.add(runs);
  some.add(runs, coats.data());
  CoverageImage picture;
  std::vector<std::uint8_t> pixels(4UL * width * height);
  for (auto _ : state) {
    picture.resolve({{&all, below}, {&some, above}}, pixels.data());
    benchmark::DoNotOptimize(pixels.data());
  }
}

const CoverageImage::Look blended{{40, 70, 120}, 14 / 255.0, CoverageImage::Shades::opacity};
const CoverageImage::Look blendedRed{{255, 0, 0}, 150 / 255.0, CoverageImage::Shades::opacity};
const CoverageImage::Look logarithmic{{40, 70, 120}, 1, CoverageImage::Shades::logarithmic};
const CoverageImage::Look equalArea{{40, 70, 120}, 1, CoverageImage::Shades::equalArea};

} // namespace

// Runs of W1, W2 and W3.
#define FOR_ALL_SCANS ->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)

BENCHMARK_CAPTURE(allRuns, thin, thin(), gentle) FOR_ALL_SCANS;
BENCHMARK_CAPTURE(allRuns, thickInSubRows, thick(), gentle) FOR_ALL_SCANS;
BENCHMARK_CAPTURE(allRuns, steepThin, thin(), steep) FOR_ALL_SCANS;
BENCHMARK_CAPTURE(allRuns, steepThickInSubRows, thick(), steep) FOR_ALL_SCANS;
BENCHMARK(someRuns) FOR_ALL_SCANS;
BENCHMARK(changedRuns) FOR_ALL_SCANS;
BENCHMARK(linesOutside) FOR_ALL_SCANS;
BENCHMARK(merging)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(image, opacity, blended, blendedRed) FOR_ALL_SCANS;
BENCHMARK_CAPTURE(image, logarithmic, logarithmic, blendedRed) FOR_ALL_SCANS;
BENCHMARK_CAPTURE(image, equalArea, equalArea, blendedRed) FOR_ALL_SCANS;

BENCHMARK_MAIN();
