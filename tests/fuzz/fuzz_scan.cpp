// Any bytes are read as a scan: either a complaint, or a scan that keeps the rules of one.
#include <runsieve/core/read/ReadScan.h>
#include <runsieve/core/scan/ScanError.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file in memory, reachable by a path.
class MemoryFile
{
public:
  MemoryFile(void const* data, std::size_t size) : descriptor(::memfd_create("scan", 0))
  {
    if (descriptor < 0 || ::write(descriptor, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~MemoryFile() { ::close(descriptor); }
  MemoryFile(MemoryFile const&) = delete;
  MemoryFile& operator=(MemoryFile const&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

private:
  int descriptor;
};

// A reader that keeps what Scan.h says, and values that can all be read.
void check(runsieve::Scan const& scan)
{
  scan.check();
  double sum = 0.0;
  for (std::size_t output = 0; output < scan.outputs.size(); ++output)
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      for (std::size_t i = 0; i < scan.times.size(); ++i) sum += scan.valuesOf(output, run)[i];
  volatile double seen = sum;
  (void)seen;
}

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
