#include "app/scan/ScanReader.h"

#include <runsieve/adapters/ScanTable.h>

namespace runsieve::app {

boost::shared_ptr<LinePlotTable> readScanTable(std::string const& path, ReadOptions const& options)
{
  return linePlotTableOf(runsieve::readScan(path, options).scan);
}

} // namespace runsieve::app
