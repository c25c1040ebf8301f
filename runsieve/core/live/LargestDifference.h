#pragma once

#include <cstddef>
#include <cstdint>

namespace runsieve {

/// Where the shares of the passing runs and of the others are furthest apart.
struct LargestDifference
{
  std::uint32_t passing = 0; ///< passing runs that have a value
  std::uint32_t others = 0;  ///< other runs that have a value
  std::int64_t difference =
      0;                 ///< times passing * others; positive where the passing runs are the larger ones
  std::size_t place = 0; ///< of the first of several such differences; not used if it is 0
};

} // namespace runsieve
