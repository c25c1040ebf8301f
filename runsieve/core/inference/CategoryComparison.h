#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace runsieve {

/// How a parameter whose values are names differs between the runs that pass and the others.
struct CategoryComparison
{
  std::uint32_t passing = 0; ///< passing runs that have a category
  std::uint32_t others = 0;  ///< other runs that have a category

  /// The largest difference between the shares of a category among the passing and among the others, exact:
  /// times passing * others. Positive where the passing have the larger share. 0 if a side is empty.
  std::int64_t difference = 0;
  /// difference / (passing * others), in [-1, 1]; NaN if a side is empty
  double d = std::numeric_limits<double>::quiet_NaN();
  std::int32_t category = -1; ///< where it stands; the first of several such categories; -1 if d is 0 or NaN
};

/// \param categories the category of each run, from 0; runs with a number outside of [0, count) have none
///                   and are left out
/// \param passes one per run: 0 for the others
/// \param count of categories; memory is taken for each
[[nodiscard]] CategoryComparison compareCategories(std::int32_t const* categories, std::uint8_t const* passes,
                                                   std::size_t runs, std::size_t count);

} // namespace runsieve
