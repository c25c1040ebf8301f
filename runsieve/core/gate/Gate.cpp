#include <runsieve/core/gate/Gate.h>

#include <tuple>

namespace runsieve {

namespace {

bool operator==(GateSpan const& a, GateSpan const& b)
{
  return a.first == b.first && a.last == b.last;
}

bool isSame(RunKey const& a, RunKey const& b)
{
  if (a.index() != b.index()) return false;
  if (auto const* key = std::get_if<std::string>(&a)) return *key == std::get<std::string>(b);
  auto const& [first, last] = std::get<RunNumbers>(a);
  return first == std::get<RunNumbers>(b).first && last == std::get<RunNumbers>(b).last;
}

bool areSame(std::vector<RunKey> const& a, std::vector<RunKey> const& b)
{
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!isSame(a[i], b[i])) return false;
  return true;
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
  return plainMembers(a) == plainMembers(b) && areSame(a.span, b.span) && areSame(a.runs, b.runs);
}

} // namespace runsieve
