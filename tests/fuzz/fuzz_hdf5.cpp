// Any bytes are read as an HDF5 file: either a complaint, or a scan that holds. The library itself works in
// another process, so that its faults are none of this one.
#include <runsieve/core/read/Hdf5Reader.h>
#include <runsieve/core/scan/ScanError.h>

#include "MemoryFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  const MemoryFile file(data, size);
  try {
    runsieve::readHdf5(file.path(), {}).scan.check();
  } catch (runsieve::ScanError const&) {
  }
  return 0;
}
