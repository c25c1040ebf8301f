// Any bytes are read as a NumPy array or archive, or unpacked as gzip: either a complaint, or a scan that
// holds.
#include <runsieve/core/files/Gzip.h>
#include <runsieve/core/read/NpzReader.h>
#include <runsieve/core/scan/ScanError.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  const std::string_view bytes(reinterpret_cast<char const*>(data), size);
  try {
    if (runsieve::isGzip(bytes))
      (void)runsieve::inflated("fuzz", bytes);
    else if (runsieve::isNpy(bytes))
      runsieve::readNpy("fuzz", bytes, {}).scan.check();
    else
      runsieve::readNpz("fuzz", bytes, {}).scan.check();
  } catch (runsieve::ScanError const&) {
  }
  return 0;
}
