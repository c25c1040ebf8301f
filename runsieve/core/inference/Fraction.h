#pragma once

#include <cstdint>

namespace runsieve {

/// A share of whole numbers, for comparisons that rounding must not decide.
struct Fraction
{
  std::uint64_t numerator = 0;
  std::uint64_t denominator = 1; ///< at least 1

  [[nodiscard]] double value() const
  {
    return static_cast<double>(numerator) / static_cast<double>(denominator);
  }
};

/// Exact for all numbers of 64 bits: where the whole parts are equal, the reciprocals of the rests decide the
/// other way round, as in Euclid's algorithm.
[[nodiscard]] inline bool operator<(Fraction a, Fraction b)
{
  if (a.denominator == b.denominator) return a.numerator < b.numerator;
  for (;;) {
    std::uint64_t const wholeA = a.numerator / a.denominator;
    std::uint64_t const wholeB = b.numerator / b.denominator;
    if (wholeA != wholeB) return wholeA < wholeB;
    std::uint64_t const restA = a.numerator % a.denominator;
    std::uint64_t const restB = b.numerator % b.denominator;
    if (restA == 0 || restB == 0) return restA == 0 && restB != 0;
    Fraction const reciprocalA{a.denominator, restA};
    a = {b.denominator, restB};
    b = reciprocalA;
  }
}

} // namespace runsieve
