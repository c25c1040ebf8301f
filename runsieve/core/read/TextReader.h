#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <string>
#include <string_view>

namespace runsieve {

/// Text that a scan is read from.
struct ScanText
{
  std::string file;       ///< for messages
  std::string_view bytes; ///< must outlive the reading
  bool mapped = false;    ///< whether pages can be given back to the system as they are read
  bool hasNames = false;  ///< whether its table is known to begin with names, though they may be numbers
};

/// Reads delimited text in any of the layouts that are known. \throw ScanError
[[nodiscard]] ScanFile readText(ScanText const& text, ReadOptions const& options);

/// The cells of delimited text as they stand, whatever its rows mean. Texts of it are in `converted` if the
/// encoding had to be changed; it must outlive the table's lineOf. \param dialect told how the table stands
/// in the text \throw ScanError
[[nodiscard]] CellTable readTextCells(ScanText const& text, ReadOptions const& options,
                                      std::string& converted, ReadReport& report, Dialect& dialect);

/// A scan as a table with a row per run and time, for readers that join several files. `converted`
/// as above.
[[nodiscard]] CellTable readTextRows(ScanText const& text, ReadOptions const& options, std::string& converted,
                                     ReadReport& report);

} // namespace runsieve
