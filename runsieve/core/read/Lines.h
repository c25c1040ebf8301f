#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace runsieve {

/// Longer lines are taken for a file of another kind.
inline constexpr std::size_t longestLine = std::size_t(16) << 20;

/// After the line that holds `at`, or `end`.
[[nodiscard]] inline char const* nextLine(char const* at, char const* end)
{
  auto found = static_cast<char const*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
  return found == nullptr ? end : found + 1;
}

[[nodiscard]] inline std::string_view between(char const* begin, char const* end)
{
  return {begin, static_cast<std::size_t>(end - begin)};
}

/// The line that begins at `at`, without its end.
[[nodiscard]] inline std::string_view lineAt(char const* at, char const* end)
{
  std::string_view line = between(at, nextLine(at, end));
  if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

/// What a line of a table is.
enum class LineKind
{
  Row,
  Blank,  ///< nothing but blanks, and fields without any content: a block of rows ends
  Comment ///< begins with '#', '%' or "//"
};

/// \param delimiter of fields, if it is known
[[nodiscard]] inline LineKind lineKind(char const* at, char const* end, char delimiter = ' ')
{
  bool isFirst = true;
  for (; at < end && *at != '\n'; ++at) {
    if (*at == ' ' || *at == '\t' || *at == '\r') continue;
    if (*at == delimiter) {
      isFirst = false;
      continue;
    }
    bool const slashes = *at == '/' && at + 1 < end && at[1] == '/';
    return isFirst && (*at == '#' || *at == '%' || slashes) ? LineKind::Comment : LineKind::Row;
  }
  return LineKind::Blank;
}

} // namespace runsieve
