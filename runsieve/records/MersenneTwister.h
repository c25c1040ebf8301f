#pragma once

#include <runsieve/runsieve_export.h>

#include <cstdint>
#include <random>

namespace Kestrane {

/// The suite's generator: the standard 32-bit Mersenne twister MT19937 (Matsumoto and Nishimura 1998).
/// It is seeded from the current time when the library is loaded. Not for use from several threads.
class RUNSIEVE_EXPORT MersenneTwister
{
public:
  using result_type = std::mt19937::result_type;

  /// Starts the common sequence anew.
  static void seed(std::uint32_t value);
  /// Next 32-bit number of the common sequence.
  static result_type next();
  /// Next number of the common sequence in [0, 1), with 53 random bits.
  static double nextDouble();
};

} // namespace Kestrane
