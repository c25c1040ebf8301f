#pragma once

#include <runsieve/core/inference/BoxTable.h>
#include <runsieve/core/inference/RandomStream.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace runsieve::test {

constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

/// Parameters and outcome of a small scan.
struct BoxScan
{
  std::vector<std::vector<double>> columns;
  std::vector<std::size_t> categories; ///< of each column, 0 for numbers; missing ones are numbers
  std::vector<unsigned char> passing;

  /// The scan must outlive it.
  [[nodiscard]] BoxTable table() const
  {
    BoxTable table(passing.size());
    for (std::size_t j = 0; j < columns.size(); ++j) {
      if (j < categories.size() && categories[j] > 0)
        table.addCategories(columns[j].data(), categories[j]);
      else
        table.addNumbers(columns[j].data());
    }
    return table;
  }
  [[nodiscard]] BoxSample sample() const { return BoxSample(passing.data(), passing.size()); }
};

/// A number in [0, 1).
inline double uniform(RandomStream& random)
{
  return random.below(1u << 30) / static_cast<double>(1u << 30);
}

/// Columns of numbers in [0, 1), no run passing.
inline BoxScan uniformScan(std::size_t runs, std::size_t parameters, std::uint64_t seed)
{
  BoxScan scan;
  scan.passing.resize(runs);
  for (std::size_t j = 0; j < parameters; ++j) {
    RandomStream random(seed, j);
    scan.columns.emplace_back();
    for (std::size_t run = 0; run < runs; ++run) scan.columns.back().push_back(uniform(random));
  }
  return scan;
}

/// Lets the runs pass for which a condition holds.
template <class Condition> void letPass(BoxScan& scan, Condition const& condition)
{
  for (std::size_t run = 0; run < scan.passing.size(); ++run) scan.passing[run] = condition(run) ? 1 : 0;
}

/// A range of numbers.
inline BoxRange numbersIn(std::size_t parameter, double low, double high)
{
  BoxRange range;
  range.parameter = parameter;
  range.low = low;
  range.high = high;
  return range;
}

/// A range of categories.
inline BoxRange categoriesOf(std::size_t parameter, std::vector<unsigned char> kept)
{
  BoxRange range;
  range.parameter = parameter;
  range.kept = std::move(kept);
  return range;
}

} // namespace runsieve::test
