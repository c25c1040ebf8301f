#pragma once

#include <runsieve/core/inference/ComparedParameter.h>
#include <runsieve/core/inference/RandomStream.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve::test {

using Column = std::vector<double>;

inline double uniform(RandomStream& random)
{
  return (random.below(1u << 30) + 0.5) / static_cast<double>(1u << 30);
}

/// Columns of numbers from (0, 1), each drawn on its own.
inline std::vector<Column> uniformColumns(std::size_t columns, std::size_t runs, std::uint64_t seed)
{
  std::vector<Column> result(columns, Column(runs));
  for (std::size_t p = 0; p < columns; ++p) {
    RandomStream random(seed, 100000 + p);
    for (double& value : result[p]) value = uniform(random);
  }
  return result;
}

inline std::vector<OrderedValues> ordersOf(std::vector<Column> const& columns)
{
  std::vector<OrderedValues> orders;
  for (Column const& column : columns) orders.push_back(orderedValues(column.data(), column.size()));
  return orders;
}

/// Numbers, which differ by their cumulative shares.
inline std::vector<ComparedParameter> comparedNumbers(std::vector<Column> const& columns)
{
  std::vector<ComparedParameter> compared;
  for (Column const& column : columns) compared.push_back({orderedValues(column.data(), column.size())});
  return compared;
}

/// 1 for each run of which the condition holds.
template <class Condition> std::vector<unsigned char> runsWhere(std::size_t runs, Condition const& holds)
{
  std::vector<unsigned char> marks(runs);
  for (std::size_t run = 0; run < runs; ++run) marks[run] = holds(run) ? 1 : 0;
  return marks;
}

} // namespace runsieve::test
