#include <runsieve/core/compare/BoxTableOfRuns.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace runsieve {

namespace {

/// The texts that some run has, ascending. Values are positions of texts, or NaN.
std::vector<std::size_t> usedTexts(std::vector<double> const& values, std::size_t texts)
{
  std::vector<unsigned char> isUsed(texts);
  for (double const value : values)
    if (!std::isnan(value)) isUsed[static_cast<std::size_t>(value)] = 1;
  std::vector<std::size_t> used;
  for (std::size_t text = 0; text < texts; ++text)
    if (isUsed[text] != 0) used.push_back(text);
  return used;
}

std::vector<double> renumbered(std::vector<double> const& values, std::vector<std::size_t> const& texts)
{
  std::vector<double> numbers(texts.back() + 1);
  for (std::size_t category = 0; category < texts.size(); ++category)
    numbers[texts[category]] = static_cast<double>(category);
  std::vector<double> result;
  result.reserve(values.size());
  for (double const value : values)
    result.push_back(std::isnan(value) ? value : numbers[static_cast<std::size_t>(value)]);
  return result;
}

} // namespace

BoxTableOfRuns::BoxTableOfRuns(ComparedRuns const& runs)
    : runs(runs), columns(runs.members().size()), left(runs.leftOut())
{
  for (std::size_t index = 0; index < runs.parameters().size(); ++index) {
    if (runs.parameterOf(index).isText()) {
      addTexts(index);
      continue;
    }
    columns.addNumbers(runs.valuesOf(index).data());
    add(index, {});
  }
  std::stable_sort(left.begin(), left.end(),
                   [](auto const& a, auto const& b) { return a.parameter < b.parameter; });
}

void BoxTableOfRuns::addTexts(std::size_t index)
{
  ScanParameter const& parameter = runs.parameterOf(index);
  std::vector<std::size_t> used = usedTexts(runs.valuesOf(index), parameter.texts.size());
  if (used.size() > BoxTable::MOST_CATEGORIES) {
    left.push_back({parameter.label.name,
                    "has " + std::to_string(used.size()) + " texts; a box takes at most " +
                        std::to_string(BoxTable::MOST_CATEGORIES),
                    runs.positionOf(index)});
    return;
  }
  categories.push_back(renumbered(runs.valuesOf(index), used));
  columns.addCategories(categories.back().data(), used.size());
  add(index, std::move(used));
}

void BoxTableOfRuns::add(std::size_t index, std::vector<std::size_t> texts)
{
  indices.push_back(index);
  textsOf.push_back(std::move(texts));
}

std::string const& BoxTableOfRuns::textOf(std::size_t column, std::size_t category) const
{
  return runs.parameterOf(indices[column]).texts[textsOf[column][category]];
}

} // namespace runsieve
