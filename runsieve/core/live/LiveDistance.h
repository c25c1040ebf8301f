#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace runsieve {

/// How far the passing runs and the others are apart in one parameter, each run counted once. The same
/// numbers as those of the members of equal names of ParameterComparison.
struct LiveDistance
{
  static constexpr double UNDEFINED = std::numeric_limits<double>::quiet_NaN();

  std::size_t parameter = 0; ///< position in Scan::parameters
  bool varies = false; ///< false if all its values are equal, missing ones aside: comparisons leave it out
  std::uint32_t passing = 0; ///< runs that pass and have a value
  std::uint32_t others = 0;  ///< other runs that have a value
  double d = UNDEFINED;      ///< in [-1, 1]; NaN if a side is empty
  double value = UNDEFINED;  ///< where the curves are furthest apart; NaN if d is 0 or NaN, and of texts
  std::int32_t text = -1;    ///< number of the text whose shares differ most; -1 likewise, and of numbers
};

} // namespace runsieve
