#pragma once

#include "app/explorer/document/Document.h"

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::app {

/// How a set is made of two, or of one.
enum class SetOperation
{
  And,   ///< runs of both
  Or,    ///< runs of either
  Minus, ///< runs of the first that are not of the second
  Not    ///< all runs but those of the first
};

[[nodiscard]] RunSet combined(RunSet const& a, RunSet const& b, SetOperation operation);
/// What a set made so is called: "early and late".
[[nodiscard]] std::string combinedName(std::string const& a, std::string const& b, SetOperation operation);

/// A name that no set of the list has: the wanted one, or that with a number behind.
[[nodiscard]] std::string freeSetName(std::vector<NamedSet> const& sets, std::string const& wanted);
/// The colour that the fewest sets have, the first of several.
[[nodiscard]] std::size_t freeSetColor(std::vector<NamedSet> const& sets);

/// A set as it would be added; its name and colour are chosen then.
struct NewSet
{
  std::string name;
  RunSet runs;
  std::string origin;
};

/// Changes of the list of sets, each a step that can be undone. Positions are those of sets that exist.
void addSets(Document& document, QString const& step, std::vector<NewSet> const& sets);
/// An empty name leaves the former; one that another set has gets a number.
void renameSet(Document& document, std::size_t set, std::string const& name);
void showSet(Document& document, std::size_t set, bool shown);
void colorSet(Document& document, std::size_t set, std::size_t color);
void deleteSets(Document& document, std::vector<std::size_t> const& sets);

} // namespace runsieve::app
