#pragma once

#include <runsieve/core/read/ReadScan.h>
#include <runsieve/records/LinePlotTable.h>

#include <boost/shared_ptr.hpp>

#include <string>

namespace runsieve::app {

/// Reads a scan as the plots take it. \throw ScanError
[[nodiscard]] boost::shared_ptr<LinePlotTable> readScanTable(std::string const& path,
                                                             ReadOptions const& options = {});

} // namespace runsieve::app
