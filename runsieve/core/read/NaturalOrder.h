#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

namespace runsieve {

/// Digits at a position of a text; empty if there are none.
[[nodiscard]] inline std::string_view digitsAt(std::string_view text, std::size_t at)
{
  std::size_t end = at;
  while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0) ++end;
  return text.substr(at, end - at);
}

/// Digits as a whole number is written.
[[nodiscard]] inline std::string_view withoutLeadingZeros(std::string_view digits)
{
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
  return digits;
}

/// Whether a text comes before another if digits count as numbers: "run 2" before "run 10". Texts that differ
/// by leading zeros only are in the order of their characters.
[[nodiscard]] inline bool naturallyBefore(std::string_view a, std::string_view b)
{
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    std::string_view const left = digitsAt(a, i);
    std::string_view const right = digitsAt(b, j);
    if (left.empty() || right.empty()) {
      if (a[i] != b[j]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
      ++i;
      ++j;
      continue;
    }
    std::string_view const first = withoutLeadingZeros(left);
    std::string_view const second = withoutLeadingZeros(right);
    if (first.size() != second.size()) return first.size() < second.size();
    if (first != second) return first < second;
    i += left.size();
    j += right.size();
  }
  if (i < a.size() || j < b.size()) return i == a.size();
  return a < b;
}

} // namespace runsieve
