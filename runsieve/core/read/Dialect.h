#pragma once

#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// How a table stands in a text, found out from its first lines.
struct Dialect
{
  FieldFormat fields;
  std::vector<std::string> names;  ///< of the columns, in file order; an empty one is no column of the scan
  std::vector<std::string> units;  ///< likewise; empty without a row of units
  std::size_t headerLine = 0;      ///< 1-based; 0 if the names are not from the file
  std::string_view header;         ///< the line as it stands, to know it again; empty if it is a comment
  std::size_t firstLine = 1;       ///< 1-based, of dataBegin
  char const* dataBegin = nullptr; ///< first byte behind header and units
  bool commentHeader = false;      ///< the names stand in a comment
  bool hasBareNumbers = false;     ///< numbers stand without quotes, so that quotes may tell texts from them
};

/// Finds delimiter, decimal sign, header and units. \param text the whole text, in UTF-8 or Latin-1, without
/// byte order mark \param findings told what was skipped or guessed \param hasNames whether the first line of
/// the table holds names even if some of them are numbers \throw ScanError if there is no table
[[nodiscard]] Dialect findDialect(std::string const& file, std::string_view text, ReadOptions const& options,
                                  std::vector<Finding>& findings, bool hasNames = false);

/// "tab", "comma", ...
[[nodiscard]] std::string delimiterName(char delimiter);

} // namespace runsieve
