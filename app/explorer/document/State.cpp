#include "app/explorer/document/State.h"

#include <algorithm>
#include <tuple>

namespace runsieve::app {

namespace {

auto partsOf(NamedGate const& gate)
{
  return std::tie(gate.name, gate.gate, gate.on);
}

auto partsOf(NamedSet const& set)
{
  return std::tie(set.name, set.runs, set.color, set.shown, set.origin, set.absent);
}

auto partsOf(ViewState const& view)
{
  return std::tie(view.outputs, view.logOutputs, view.outputRanges, view.timeRange, view.runsLook, view.focus,
                  view.parameterLook, view.logParameters);
}

template <class Named> bool sameList(std::vector<Named> const& a, std::vector<Named> const& b)
{
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](Named const& x, Named const& y) { return partsOf(x) == partsOf(y); });
}

} // namespace

std::size_t countOf(std::vector<RunKey> const& keys)
{
  std::size_t count = 0;
  for (RunKey const& key : keys) {
    auto const* range = std::get_if<RunNumbers>(&key);
    // Unsigned, since a range of a file that was written by hand may be of any length.
    count += range ? static_cast<std::size_t>(range->last) - static_cast<std::size_t>(range->first) + 1 : 1;
  }
  return count;
}

bool sameMethod(ComparisonMethod const& a, ComparisonMethod const& b)
{
  return a.thresholds.largestP == b.thresholds.largestP && a.thresholds.smallestD == b.thresholds.smallestD &&
         a.adjustment == b.adjustment && a.permutations == b.permutations &&
         a.mostPermutations == b.mostPermutations && a.seed == b.seed && a.gatesTried == b.gatesTried;
}

bool operator==(ViewState const& a, ViewState const& b)
{
  return partsOf(a) == partsOf(b);
}

bool operator==(State const& a, State const& b)
{
  return sameList(a.gates, b.gates) && a.join == b.join && sameList(a.sets, b.sets) &&
         sameMethod(a.method, b.method) && a.view == b.view;
}

} // namespace runsieve::app
