#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// What each column of a scan is, found by type and name as the plots find it.
struct ScanLayout
{
  std::vector<std::size_t> outputs;    ///< columns of every type but Unnamed and Parameter
  std::size_t time = 0;                ///< "Time [s]", else the first Unnamed column that is not "Run Index"
  std::size_t run = 0;                 ///< "Run Index"
  std::vector<std::size_t> parameters; ///< columns of type Parameter
};

/// \throw std::invalid_argument if the record has no time or no "Run Index" column.
[[nodiscard]] ScanLayout scanLayout(LinePlotTable const& scan);

} // namespace runsieve::app
