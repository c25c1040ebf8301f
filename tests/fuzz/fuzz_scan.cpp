// Any bytes are read as a scan: either a complaint, or a scan that keeps the rules of one.
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include "MemoryFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// A reader keeps what Scan.h says, and all values can be read.
void check(runsieve::Scan const& scan)
{
  scan.check();
  double sum = 0.0;
  for (std::size_t output = 0; output < scan.outputs.size(); ++output)
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      for (std::size_t i = 0; i < scan.times.size(); ++i) sum += scan.valuesOf(output, run)[i];
  volatile double seen = sum;
  (void)seen;
} // namespace

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  const MemoryFile file(data, size);
  runsieve::ReadOptions options;
  options.threads = 1;
  try {
    check(runsieve::readScan(file.path(), options).scan);
  } catch (runsieve::ScanError const&) {
  }
  return 0;
}
