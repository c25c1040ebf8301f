#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// A parameter of cells of a table: numbers, or the numbers of its different texts if any cell is a text.
/// \param column whose cells they are; its header names the parameter \param cells one per run of a scan
[[nodiscard]] ScanParameter parameterOf(CellTable const& table, std::size_t column,
                                        std::vector<double> cells);

} // namespace runsieve
