// Any bytes are read as a scan: either a complaint, or a record whose runs are whole.
#include <runsieve/core/scan/ScanError.h>
#include "app/scan/ScanLayout.h"
#include "app/scan/ScanReader.h"

#include "MemoryFile.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
  if (!condition) std::abort();
}

void check(LinePlotTable const& scan)
{
  require(scan.rows() > 0 && scan.columnData.size() == scan.columnNames.size());
  const auto layout = runsieve::app::scanLayout(scan);
  double const* time = scan.columnData[layout.time];
  double const* run = scan.columnData[layout.run];
  double sum = 0.0;
  for (std::size_t row = 0; row < scan.rows(); ++row) {
    const bool startsRun = row % scan.trajectoryLength == 0;
    require(std::isfinite(time[row]) && (startsRun || time[row] > time[row - 1]));
    require(startsRun || run[row] == run[row - 1]);
    for (double const* column : scan.columnData) sum += column[row]; // every value can be read
  }
  volatile double seen = sum;
  (void)seen;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  const MemoryFile file(data, size);
  runsieve::app::ReadOptions options;
  options.threads = 1;
  try {
    check(*runsieve::app::readScan(file.path(), options));
  } catch (runsieve::ScanError const&) {
  }
  return 0;
}
