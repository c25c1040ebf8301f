#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

namespace runsieve {

/// Cells of a table of text as numbers, so that a column is one array whatever it holds. A cell that is no
/// number is a NaN whose bits tell which text it is; such NaN come from no text and no computation.
namespace cell {

inline constexpr std::uint64_t textMark = 0xFFFC'0000'0000'0000;
inline constexpr std::uint64_t missingMark = 0xFFFA'0000'0000'0000;

[[nodiscard]] inline std::uint64_t bitsOf(double value)
{
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

[[nodiscard]] inline double fromBits(std::uint64_t bits)
{
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

/// \param number below 2^50
[[nodiscard]] inline double text(std::uint64_t number)
{
  return fromBits(textMark | number);
}

[[nodiscard]] inline bool isText(double value)
{
  return (bitsOf(value) & textMark) == textMark;
}

/// Number of the text of a cell that isText().
[[nodiscard]] inline std::uint64_t textNumber(double value)
{
  return bitsOf(value) & ~textMark;
}

/// An empty cell, or a word for "no value".
[[nodiscard]] inline double missing()
{
  return fromBits(missingMark);
}

[[nodiscard]] inline bool isMissing(double value)
{
  return bitsOf(value) == missingMark;
}

} // namespace cell

} // namespace runsieve
