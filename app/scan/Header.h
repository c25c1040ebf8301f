#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve::app {

/// The first line of a scan file.
struct Header
{
  std::vector<std::string> names; ///< in file order, without quotes; only the first may be empty
  char delimiter = ',';
  char const* dataBegin = nullptr; ///< first byte after the line
};

/// Reads the header line and finds out the delimiter: of comma, semicolon and tab the one that divides the
/// header and the next line into equally many fields. \param text the whole file \throw ScanError if there is
/// no such line, or it is no list of different names.
[[nodiscard]] Header readHeader(std::string const& file, std::string_view text);

/// Longer lines are taken for a file of another kind.
inline constexpr std::size_t longestLine = std::size_t(16) << 20;

} // namespace runsieve::app
