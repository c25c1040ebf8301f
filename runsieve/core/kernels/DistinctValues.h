#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Counts the distinct values of one sample after the other, and tells them apart as long as they are few.
/// -0.0 and 0.0 are one value. Samples hold no NaN.
class RUNSIEVE_CORE_EXPORT DistinctValues
{
public:
  struct Entry
  {
    double value; ///< of equal ones the first
    std::uint32_t count;
  };

  explicit DistinctValues(std::size_t mostEntries);

  /// How many distinct values a sample has. Their entries exist if these are not more than mostEntries.
  std::size_t count(double const* values, std::size_t size);

  /// Ascending by value.
  [[nodiscard]] std::vector<Entry> const& sortedEntries();

private:
  bool countFew(double value);
  std::size_t countMany(double const* values, std::size_t size);
  bool insert(std::uint64_t key);

  std::size_t most;
  std::vector<Entry> entries;
  std::vector<std::uint32_t> places; ///< hash table of positions in entries, counted from 1
  std::vector<std::uint64_t> keys;   ///< hash table of the values of a sample that has many
};

} // namespace runsieve
