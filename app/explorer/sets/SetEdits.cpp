#include "app/explorer/sets/SetEdits.h"

#include "app/explorer/charts/Theme.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace runsieve::app {

RunSet combined(RunSet const& a, RunSet const& b, SetOperation operation)
{
  RunSet runs = a;
  switch (operation) {
  case SetOperation::And:
    runs &= b;
    break;
  case SetOperation::Or:
    runs |= b;
    break;
  case SetOperation::Minus:
    runs -= b;
    break;
  case SetOperation::Not:
    return a.complement();
  }
  return runs;
}

std::string combinedName(std::string const& a, std::string const& b, SetOperation operation)
{
  switch (operation) {
  case SetOperation::And:
    return a + " and " + b;
  case SetOperation::Or:
    return a + " or " + b;
  case SetOperation::Minus:
    return a + " minus " + b;
  default:
    return "not " + a;
  }
}

std::string freeSetName(std::vector<NamedSet> const& sets, std::string const& wanted)
{
  auto const isTaken = [&](std::string const& name) {
    return std::any_of(sets.begin(), sets.end(), [&](NamedSet const& set) { return set.name == name; });
  };
  std::string name = wanted;
  for (int number = 2; isTaken(name); ++number) name = wanted + " (" + std::to_string(number) + ")";
  return name;
}

std::size_t freeSetColor(std::vector<NamedSet> const& sets)
{
  std::array<std::size_t, std::tuple_size<decltype(Theme::sets)>::value> used{};
  for (NamedSet const& set : sets) ++used.at(set.color % used.size());
  return static_cast<std::size_t>(std::min_element(used.begin(), used.end()) - used.begin());
}

void addSets(Document& document, QString const& step, std::vector<NewSet> const& sets)
{
  document.change(step, [&](State& state) {
    for (NewSet const& set : sets)
      state.sets.push_back(
          {freeSetName(state.sets, set.name), set.runs, freeSetColor(state.sets), true, set.origin});
  });
}

void renameSet(Document& document, std::size_t set, std::string const& name)
{
  if (name.empty() || name == document.state().sets[set].name) return;
  document.change("Rename set", [&](State& state) {
    std::vector<NamedSet> others = state.sets;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(set));
    state.sets[set].name = freeSetName(others, name);
  });
}

void showSet(Document& document, std::size_t set, bool shown)
{
  document.change(shown ? "Show set" : "Hide set", [&](State& state) { state.sets[set].shown = shown; });
}

void colorSet(Document& document, std::size_t set, std::size_t color)
{
  if (color == document.state().sets[set].color) return;
  document.change("Colour set", [&](State& state) { state.sets[set].color = color; });
}

void deleteSets(Document& document, std::vector<std::size_t> const& sets)
{
  if (sets.empty()) return;
  document.change(sets.size() == 1 ? "Delete set" : "Delete sets", [&](State& state) {
    std::vector<NamedSet> left;
    for (std::size_t i = 0; i < state.sets.size(); ++i)
      if (std::find(sets.begin(), sets.end(), i) == sets.end()) left.push_back(std::move(state.sets[i]));
    state.sets = std::move(left);
  });
}

} // namespace runsieve::app
