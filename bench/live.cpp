// From a rectangle over the runs to the distances of all parameters: released anywhere, moved on, and for the
// first time, by the sieve for gates that are being moved; as gates and comparisons take it; and with all
// that is shown of a parameter, p-values and curves.

#include "BenchColumns.h"

#include <runsieve/core/compare/ParameterComparer.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/inference/KolmogorovLimit.h>
#include <runsieve/core/inference/SampleComparison.h>
#include <runsieve/core/kernels/SampleDensity.h>
#include <runsieve/core/live/LiveSieve.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace runsieve;
using namespace runsieve::bench;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int times = BenchColumns::times;
constexpr int output = BenchColumns::species - 1;

/// What the benchmarks of one scan share.
struct LiveScan
{
  Scan scan;
  Gate brush; ///< a tenth of the times, the middle half of the values
  Gate wide;  ///< below a threshold at all times
};

ColumnLabel named(std::string const& name)
{
  ColumnLabel label;
  label.name = name;
  return label;
}

/// The smallest rectangle around rows of the last output; no other row lies in it.
Gate rectangleOf(std::vector<long long> const& rows, Scan const& scan)
{
  double const* const values = scan.outputs[output].values.get();
  GateSpan span{scan.times.back(), scan.times.front()};
  GateRange range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
  for (long long const row : rows) {
    double const time = scan.times[static_cast<std::size_t>(row % times)];
    span.first = std::min(*span.first, time);
    span.last = std::max(*span.last, time);
    range.low = std::min(range.low, values[row]);
    range.high = std::max(range.high, values[row]);
  }
  Gate gate;
  gate.column = scan.outputs[output].label.fullName();
  gate.span = span;
  gate.range = range;
  return gate;
}

/// \param values of all rows, the same within a run
void addParameter(Scan& scan, std::string const& name, double const* values)
{
  ScanParameter parameter;
  parameter.label = named(name);
  parameter.values.reserve(scan.runs.size());
  for (std::size_t row = 0; row < scan.rows(); row += scan.times.size())
    parameter.values.push_back(values[row]);
  scan.parameters.push_back(parameter);
}

void makeScan(LiveScan& live, std::string const& name)
{
  Scan& scan = live.scan;
  auto const runs = static_cast<std::size_t>(runsOf(name));
  scan.runs.resize(runs);
  for (std::size_t run = 0; run < runs; ++run) scan.runs[run].key = std::to_string(run);
  scan.times.resize(times);
  std::vector<std::vector<double>> others(BenchColumns::count - BenchColumns::species,
                                          std::vector<double>(scan.rows()));
  std::vector<double*> columns;
  columns.reserve(BenchColumns::count);
  for (int s = 0; s < BenchColumns::species; ++s)
    columns.push_back(scan.addOutput(named(std::string(1, static_cast<char>('A' + s)))));
  for (std::vector<double>& column : others) columns.push_back(column.data());
  BenchColumns const filled = fillColumns(name, columns);
  std::copy_n(columns[BenchColumns::timeColumn], times, scan.times.begin());
  for (int p = 0; p < BenchColumns::parameters; ++p)
    addParameter(scan, "k" + std::to_string(p + 1), columns[BenchColumns::firstParameter + p]);
  scan.findStatus();
  live.brush = rectangleOf(filled.brush, scan);
  live.wide = rectangleOf(filled.wide, scan);
}

LiveScan const& liveScan(std::string const& name)
{
  // One at a time: the largest takes gigabytes.
  static std::map<std::string, LiveScan> scans;
  if (auto const found = scans.find(name); found != scans.end()) return found->second;
  scans.clear();
  makeScan(scans[name], name);
  return scans[name];
}

struct Case
{
  std::string scan;
  bool brush;
  GateKind kind;

  [[nodiscard]] ResolvedGate gate() const
  {
    LiveScan const& live = liveScan(scan);
    Gate gate = brush ? live.brush : live.wide;
    gate.kind = kind;
    return resolveGate(gate, live.scan);
  }
};

void count(benchmark::State& state, std::size_t passing, std::vector<double> const& distances)
{
  double sum = 0.0;
  for (double const d : distances) sum += std::fabs(d);
  state.counters["passing"] = static_cast<double>(passing);
  state.counters["sum of d"] = sum;
}

void count(benchmark::State& state, std::size_t passing, std::vector<LiveDistance> const& distances)
{
  std::vector<double> values(distances.size());
  std::transform(distances.begin(), distances.end(), values.begin(),
                 [](LiveDistance const& distance) { return distance.d; });
  count(state, passing, values);
}

/// Where no rectangle is yet: all runs pass, and nothing of a span is known.
void forget(LiveSieve& sieve, Scan const& scan)
{
  Gate elsewhere;
  elsewhere.column = scan.outputs[output].label.fullName();
  elsewhere.span = GateSpan{scan.times.front(), scan.times.front()};
  sieve.update(resolveGate(elsewhere, scan));
  sieve.setFixed(RunSet(scan.runs.size(), true));
  (void)sieve.distances();
}

void released(benchmark::State& state, Case const& what)
{
  Scan const& scan = liveScan(what.scan).scan;
  ResolvedGate const gate = what.gate();
  LiveSieve sieve(scan);
  sieve.prepare(output);
  std::size_t passing = 0;
  std::vector<LiveDistance> distances;
  for (auto _ : state) {
    forget(sieve, scan);
    auto const start = Clock::now();
    passing = *sieve.update(gate);
    distances = *sieve.distances();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
  count(state, passing, distances);
}

void updateAlone(benchmark::State& state, Case const& what)
{
  Scan const& scan = liveScan(what.scan).scan;
  ResolvedGate const gate = what.gate();
  LiveSieve sieve(scan);
  sieve.prepare(output);
  for (auto _ : state) {
    forget(sieve, scan);
    auto const start = Clock::now();
    benchmark::DoNotOptimize(sieve.update(gate));
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}

/// The rectangle on its way: up by some hundredths of its height and to the right by a time, and back.
std::vector<ResolvedGate> wayOf(ResolvedGate const& from)
{
  constexpr int steps = 8;
  std::vector<ResolvedGate> way(1, from);
  double const step = 0.01 * (from.range.high - from.range.low);
  for (int i = 1; i < steps; ++i) {
    ResolvedGate gate = way.back();
    gate.range.low += step;
    gate.range.high += step;
    if (gate.last + 1 < times) ++gate.last;
    way.push_back(gate);
  }
  for (int i = steps - 2; i > 0; --i) way.push_back(way[static_cast<std::size_t>(i)]);
  return way;
}

void moved(benchmark::State& state, Case const& what)
{
  LiveSieve sieve(liveScan(what.scan).scan);
  sieve.prepare(output);
  std::vector<ResolvedGate> const way = wayOf(what.gate());
  std::size_t step = 0;
  std::size_t changed = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(sieve.update(way[step]));
    benchmark::DoNotOptimize(sieve.distances());
    changed += sieve.changed().size();
    step = (step + 1) % way.size();
  }
  state.counters["changed"] =
      benchmark::Counter(static_cast<double>(changed), benchmark::Counter::kAvgIterations);
}

void first(benchmark::State& state, Case const& what)
{
  Scan const& scan = liveScan(what.scan).scan;
  ResolvedGate const gate = what.gate();
  for (auto _ : state) {
    LiveSieve sieve(scan);
    benchmark::DoNotOptimize(sieve.update(gate));
    benchmark::DoNotOptimize(sieve.distances());
  }
}

/// Whole curves of an output and all parameters.
void preparation(benchmark::State& state, Case const& what)
{
  Scan const& scan = liveScan(what.scan).scan;
  for (auto _ : state) {
    LiveSieve sieve(scan);
    sieve.prepare(output);
  }
}

/// By gates and walks along orders that are there before.
void byComparison(benchmark::State& state, Case const& what)
{
  Scan const& scan = liveScan(what.scan).scan;
  ResolvedGate const gate = what.gate();
  std::vector<OrderedValues> orders;
  for (ScanParameter const& parameter : scan.parameters)
    orders.push_back(orderedValues(parameter.values.data(), scan.runs.size()));
  std::vector<double> distances(orders.size());
  std::size_t passing = 0;
  for (auto _ : state) {
    RunSet const runs = runsThrough(gate, scan);
    for (std::size_t i = 0; i < orders.size(); ++i)
      distances[i] = compareSamples(orders[i], scan.parameters[i].values.data(), runs.mask().data()).d;
    passing = runs.count();
  }
  count(state, passing, distances);
}

RunSet setOf(std::vector<std::uint8_t> const& mask)
{
  RunSet runs(mask.size());
  for (std::size_t run = 0; run < mask.size(); ++run) runs.set(run, mask[run] != 0);
  return runs;
}

double asymptoticP(LiveDistance const& distance)
{
  double const passing = distance.passing;
  double const others = distance.others;
  return kolmogorovTail(std::fabs(distance.d) * std::sqrt(passing * others / (passing + others)));
}

/// The distribution function of a parameter and its density, as the charts of the library draw it.
void drawn(ParameterComparer const& comparer, std::size_t parameter, RunSet const& runs)
{
  std::vector<std::pair<double, double>> const curve = comparer.distribution(parameter, runs);
  std::vector<double> values(curve.size());
  std::transform(curve.begin(), curve.end(), values.begin(), [](auto const& step) { return step.first; });
  double locations[densityPoints];
  double density[densityPoints];
  sampleDensity(values, rangeOf(values, nullptr), locations, density);
  benchmark::DoNotOptimize(density);
}

/// All that is shown of the parameters: distances, p-values, distribution functions and densities of the
/// passing runs and of the others. \param exact p-values as comparisons take them, exact where that is cheap
void shown(benchmark::State& state, Case const& what, bool exact)
{
  Scan const& scan = liveScan(what.scan).scan;
  ResolvedGate const gate = what.gate();
  LiveSieve sieve(scan);
  sieve.prepare(output);
  ParameterComparer const comparer(scan, RunSet(scan.runs.size(), true));
  ComparisonMethod method;
  method.adjustment = Adjustment::Holm;
  method.permutations = 0;
  std::size_t passing = 0;
  std::vector<LiveDistance> distances;
  for (auto _ : state) {
    forget(sieve, scan);
    auto const start = Clock::now();
    passing = *sieve.update(gate);
    distances = *sieve.distances();
    RunSet const runs = setOf(sieve.mask());
    RunSet const others = runs.complement();
    if (exact)
      benchmark::DoNotOptimize(comparer.compare(runs, method, {1, {}}));
    else
      for (LiveDistance const& distance : distances) benchmark::DoNotOptimize(asymptoticP(distance));
    for (std::size_t i = 0; i < scan.parameters.size(); ++i) {
      drawn(comparer, i, runs);
      drawn(comparer, i, others);
    }
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
  count(state, passing, distances);
}

void withCurves(benchmark::State& state, Case const& what)
{
  shown(state, what, false);
}

void withCurvesAndExactP(benchmark::State& state, Case const& what)
{
  shown(state, what, true);
}

using Journey = void (*)(benchmark::State&, Case const&);

benchmark::internal::Benchmark* add(std::string const& title, Journey journey, Case const& what)
{
  std::string const name = title + "/" + what.scan + (what.brush ? "/brush" : "/wide");
  return benchmark::RegisterBenchmark(name.c_str(), journey, what)->Unit(benchmark::kMillisecond);
}

void addAll(Case const& what, std::string const& kind)
{
  add("runs alone, " + kind, updateAlone, what)->UseManualTime();
  if (!what.brush && what.kind == GateKind::Ever) return; // all runs pass
  add("released, " + kind, released, what)->UseManualTime();
  add("moved, " + kind, moved, what);
  add("gate and comparison, " + kind, byComparison, what);
}

} // namespace

int main(int argc, char** argv)
{
  for (std::string const scan : {"W1", "W2", "W3"}) {
    for (bool const brush : {true, false}) {
      addAll({scan, brush, GateKind::Inside}, "inside");
      addAll({scan, brush, GateKind::Ever}, "ever");
      add("first, unprepared", first, {scan, brush, GateKind::Inside});
      add("with curves", withCurves, {scan, brush, GateKind::Inside})->UseManualTime();
      add("with curves, exact p", withCurvesAndExactP, {scan, brush, GateKind::Inside})->UseManualTime();
    }
    add("preparation", preparation, {scan, true, GateKind::Inside});
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
