#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

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
