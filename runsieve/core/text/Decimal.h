#pragma once

#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

namespace runsieve {

/// Room that any number takes.
inline constexpr std::size_t longestDecimal = 32;

/// Writes the fewest digits that read back to the same value, whole numbers up to 2^53 without exponent.
/// \param to room for longestDecimal characters \return the end of the text
inline char* writeDecimal(char* to, double value)
{
  constexpr double exactIntegers = 9007199254740992.0;
  if (value < exactIntegers && value > -exactIntegers) {
    auto whole = static_cast<long long>(value);
    if (static_cast<double>(whole) == value && (whole != 0 || !std::signbit(value)))
      return std::to_chars(to, to + longestDecimal, whole).ptr;
  }
  return std::to_chars(to, to + longestDecimal, value).ptr;
}

[[nodiscard]] inline std::string decimal(double value)
{
  char text[longestDecimal];
  return {text, writeDecimal(text, value)};
}

} // namespace runsieve
