#include <runsieve/core/gate/GateRuns.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve {

namespace {

bool holds(GateRange const& range, double value)
{
  return value >= range.low && value <= range.high;
}

bool allInside(double const* values, std::size_t count, GateRange const& range)
{
  // Without a branch, so that several are compared at once.
  unsigned outside = 0;
  for (std::size_t i = 0; i < count; ++i)
    outside |= static_cast<unsigned>(!((values[i] >= range.low) & (values[i] <= range.high)));
  return outside == 0;
}

bool anyInside(double const* values, std::size_t count, GateRange const& range)
{
  unsigned inside = 0;
  for (std::size_t i = 0; i < count; ++i)
    inside |= static_cast<unsigned>((values[i] >= range.low) & (values[i] <= range.high));
  return inside != 0;
}

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// Position of the extreme sample, the first of several; count without a sample.
template <class Better> std::size_t extreme(double const* values, std::size_t count, Better const& better)
{
  std::size_t best = count;
  for (std::size_t i = 0; i < count; ++i)
    if (best == count ? !std::isnan(values[i]) : better(values[i], values[best])) best = i;
  return best;
}

double meanOf(double const* values, std::size_t count)
{
  double sum = 0.0;
  std::size_t samples = 0;
  bool isFinite = true;
  for (std::size_t i = 0; i < count; ++i) {
    if (std::isnan(values[i])) continue;
    sum += values[i];
    ++samples;
    isFinite = isFinite && std::isfinite(values[i]);
  }
  if (samples == 0) return missing;
  auto const size = static_cast<double>(samples);
  if (std::isfinite(sum) || !isFinite) return sum / size;
  double mean = 0.0; // the sum is too large for a number, the mean is not
  for (std::size_t i = 0; i < count; ++i)
    if (!std::isnan(values[i])) mean += values[i] / size;
  return mean;
}

double lastOf(double const* values, std::size_t count)
{
  while (count > 0 && std::isnan(values[count - 1])) --count;
  return count > 0 ? values[count - 1] : missing;
}

/// The number of a run that max, min, mean, last and the times of extremes look at; NaN if there is none.
double numberOf(GateKind kind, double const* values, std::size_t count, double const* times)
{
  std::size_t position = count;
  switch (kind) {
  case GateKind::Mean:
    return meanOf(values, count);
  case GateKind::Last:
    return lastOf(values, count);
  case GateKind::Max:
  case GateKind::TimeOfMax:
    position = extreme(values, count, std::greater<>());
    break;
  default:
    position = extreme(values, count, std::less<>());
  }
  if (position == count) return missing;
  return kind == GateKind::Max || kind == GateKind::Min ? values[position] : times[position];
}

/// Whether the line from one sample to the next, between two shares of the way, has a point in the range.
bool stepCrosses(double from, double to, double firstShare, double lastShare, GateRange const& range)
{
  if (!std::isfinite(from) || !std::isfinite(to))
    return (firstShare == 0.0 && holds(range, from)) || (lastShare == 1.0 && holds(range, to));
  auto const at = [&](double share) {
    return share == 0.0 ? from : share == 1.0 ? to : from * (1.0 - share) + to * share;
  };
  auto const [low, high] = std::minmax({at(firstShare), at(lastShare)});
  return low <= range.high && high >= range.low;
}

bool lineCrosses(ResolvedGate const& gate, double const* values)
{
  if (gate.first == gate.last) return holds(gate.range, values[gate.first]);
  for (std::size_t t = gate.first; t < gate.last; ++t)
    if (stepCrosses(values[t], values[t + 1], t == gate.first ? gate.firstShare : 0.0,
                    t + 1 == gate.last ? gate.lastShare : 1.0, gate.range))
      return true;
  return false;
}

bool outputPasses(ResolvedGate const& gate, double const* values, double const* times)
{
  double const* const samples = values + gate.first;
  std::size_t const count = gate.last - gate.first + 1;
  switch (gate.gate.kind) {
  case GateKind::Inside:
    return allInside(samples, count, gate.range);
  case GateKind::Ever:
    return anyInside(samples, count, gate.range);
  case GateKind::Never:
    return !anyInside(samples, count, gate.range);
  case GateKind::Crosses:
    return lineCrosses(gate, values);
  default:
    return holds(gate.range, numberOf(gate.gate.kind, samples, count, times + gate.first));
  }
}

template <class Passes> RunSet runsThat(Scan const& scan, Passes const& passes)
{
  RunSet runs(scan.runs.size());
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    if (passes(run)) runs.set(run);
  return runs;
}

RunSet runsOfCluster(ResolvedGate const& gate, Scan const& scan, GateContext const& context)
{
  if (!context.clusters) throw GateError("gate \"" + gate.text() + "\": clusters are not available here");
  std::vector<int> const labels = context.clusters(scan, gate.column, gate.gate.mode, gate.gate.clusters);
  if (labels.size() != scan.runs.size())
    throw GateError("gate \"" + gate.text() + "\": the runs cannot be grouped");
  return runsThat(scan, [&](std::size_t run) { return labels[run] == gate.gate.cluster; });
}

RunSet runsOfParameter(ResolvedGate const& gate, Scan const& scan)
{
  std::vector<double> const& values = scan.parameters[gate.column].values;
  if (gate.gate.kind != GateKind::Is)
    return runsThat(scan, [&](std::size_t run) { return holds(gate.range, values[run]); });
  return runsThat(scan, [&](std::size_t run) {
    return !std::isnan(values[run]) &&
           std::binary_search(gate.wanted.begin(), gate.wanted.end(), values[run]);
  });
}

RunSet runsItself(ResolvedGate const& gate, Scan const& scan)
{
  std::vector<RunStatus> const& statuses = gate.gate.statuses;
  if (gate.gate.kind == GateKind::Status)
    return runsThat(scan, [&](std::size_t run) {
      return std::find(statuses.begin(), statuses.end(), scan.runs[run].status) != statuses.end();
    });
  RunSet runs(scan.runs.size());
  for (std::size_t run : gate.runs) runs.set(run);
  return runs;
}

RunSet positiveRuns(ResolvedGate const& gate, Scan const& scan, GateContext const& context)
{
  if (gate.gate.kind == GateKind::Cluster) return runsOfCluster(gate, scan, context);
  if (gate.target == GateTarget::Parameter) return runsOfParameter(gate, scan);
  if (gate.target == GateTarget::Run) return runsItself(gate, scan);
  return runsThat(scan, [&](std::size_t run) {
    return outputPasses(gate, scan.valuesOf(gate.column, run), scan.times.data());
  });
}

} // namespace

std::vector<ResolvedGate> GateResult::resolved() const
{
  std::vector<ResolvedGate> all;
  all.reserve(gates.size());
  for (AppliedGate const& applied : gates) all.push_back(applied.gate);
  return all;
}

RunSet runsThrough(ResolvedGate const& gate, Scan const& scan, GateContext const& context)
{
  RunSet runs = positiveRuns(gate, scan, context);
  return gate.gate.negated ? runs.complement() : runs;
}

GateResult applyGates(std::vector<Gate> const& gates, Scan const& scan, GateJoin join,
                      GateContext const& context)
{
  GateResult result;
  result.runs = RunSet(scan.runs.size(), gates.empty() || join == GateJoin::All);
  for (Gate const& gate : gates) {
    ResolvedGate resolved = resolveGate(gate, scan);
    RunSet const passing = runsThrough(resolved, scan, context);
    if (join == GateJoin::All)
      result.runs &= passing;
    else
      result.runs |= passing;
    result.gates.push_back({std::move(resolved), passing.count(), result.runs.count()});
  }
  return result;
}

} // namespace runsieve
