#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

namespace runsieve {

/// Makes a scan of a table with a row per run and time. Rows may stand in any order; runs may have times of
/// their own. \param table gives its columns away \param report told what each column was taken for
/// \throw ScanError
[[nodiscard]] Scan scanOfRows(CellTable&& table, ReadOptions const& options, ReadReport& report);

} // namespace runsieve
