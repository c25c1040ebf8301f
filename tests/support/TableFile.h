#pragma once

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/write/WriteScan.h>

#include <string>

namespace runsieve::test {

/// A scan from a file as the plots take it.
inline boost::shared_ptr<LinePlotTable> readScanTable(std::string const& path,
                                                      ReadOptions const& options = {})
{
  return linePlotTableOf(readScan(path, options).scan);
}

/// Writes a scan that the plots show as a file to be read again.
inline void writeTable(boost::shared_ptr<LinePlotTable> const& table, std::string const& path)
{
  writeScan(scanOf(table), path);
}

} // namespace runsieve::test
