#include <runsieve/core/inference/BoxTable.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace runsieve {

namespace {

// Counts of runs are multiplied in 64 bits.
constexpr std::size_t mostRuns = std::numeric_limits<std::int32_t>::max();

void checkCategories(double const* values, std::size_t runs, std::size_t categories)
{
  if (categories == 0) throw std::invalid_argument("a text parameter has no categories");
  if (categories > BoxTable::MOST_CATEGORIES)
    throw std::invalid_argument("a text parameter has " + std::to_string(categories) +
                                " categories; a box can have at most " +
                                std::to_string(BoxTable::MOST_CATEGORIES));
  for (std::size_t run = 0; run < runs; ++run) {
    double const value = values[run];
    bool const isCategory =
        value >= 0.0 && value < static_cast<double>(categories) && std::floor(value) == value;
    if (!isCategory && !std::isnan(value))
      throw std::invalid_argument("run " + std::to_string(run) +
                                  " of a text parameter has none of its categories");
  }
}

} // namespace

BoxTable::BoxTable(std::size_t runs) : count(runs)
{
  if (runs > mostRuns) throw std::invalid_argument("too many runs to look for a box");
}

void BoxTable::addNumbers(double const* values)
{
  add(values, 0);
}

void BoxTable::addCategories(double const* values, std::size_t categories)
{
  checkCategories(values, count, categories);
  add(values, categories);
}

void BoxTable::add(double const* values, std::size_t categories)
{
  BoxColumn column{values, categories, orderedValues(values, count), {}};
  column.missing.reserve(count - column.ordered.order.size());
  for (std::size_t run = 0; run < count; ++run)
    if (std::isnan(values[run])) column.missing.push_back(static_cast<std::uint32_t>(run));
  parameters.push_back(std::move(column));
}

bool BoxTable::holds(Box const& box, std::size_t run) const
{
  return std::all_of(box.ranges.begin(), box.ranges.end(), [&](BoxRange const& range) {
    return range.holds(parameters[range.parameter].values[run]);
  });
}

BoxSample::BoxSample(unsigned char const* passing, std::size_t runs, unsigned char const* eligible)
    : runMarks(runs)
{
  for (std::size_t run = 0; run < runs; ++run) {
    if (eligible && eligible[run] == 0) continue;
    runMarks[run] = passing[run] != 0 ? PASSING : OTHER;
    total += tallyOf(runMarks[run]);
  }
}

void checkSizes(BoxTable const& table, BoxSample const& sample)
{
  if (sample.marks().size() != table.runs())
    throw std::invalid_argument("a sample of " + std::to_string(sample.marks().size()) +
                                " runs for parameters of " + std::to_string(table.runs()));
}

} // namespace runsieve
