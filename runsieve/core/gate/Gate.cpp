#include <runsieve/core/gate/Gate.h>

#include <tuple>

namespace runsieve {

namespace {

bool operator==(GateSpan const& a, GateSpan const& b)
{
  return a.first == b.first && a.last == b.last;
}

bool areSame(std::optional<GateSpan> const& a, std::optional<GateSpan> const& b)
{
  return a.has_value() == b.has_value() && (!a || *a == *b);
}

auto plainMembers(Gate const& gate)
{
  return std::tie(gate.kind, gate.negated, gate.column, gate.range.low, gate.range.high, gate.texts,
                  gate.statuses, gate.cluster, gate.clusters, gate.mode);
}

} // namespace

bool operator==(Gate const& a, Gate const& b)
{
  return plainMembers(a) == plainMembers(b) && areSame(a.span, b.span) && a.runs == b.runs;
}

} // namespace runsieve
