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
  return std::tie(set.name, set.runs, set.color, set.shown, set.origin);
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
