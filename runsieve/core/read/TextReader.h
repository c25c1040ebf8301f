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
};

/// Reads delimited text in any of the layouts that are known. \throw ScanError
[[nodiscard]] ScanFile readText(ScanText const& text, ReadOptions const& options);

/// The same as a table with a row per run and time, for readers that join several files. Texts of it are in
/// `converted` if the encoding of the file had to be changed; it must outlive the table.
[[nodiscard]] CellTable readTextRows(ScanText const& text, ReadOptions const& options, std::string& converted,
                                     ReadReport& report);

} // namespace runsieve
