#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace runsieve::test {

/// How much the memory of this process has grown at its peak since the construction. Linux only.
class MemoryPeak
{
public:
  MemoryPeak()
  {
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak starts anew
    start = kibibytes("VmRSS:");
  }

  [[nodiscard]] std::int64_t bytes() const
  {
    const std::int64_t grown = 1024 * (kibibytes("VmHWM:") - start);
#if defined(__SANITIZE_ADDRESS__)
    return grown - grown / 8; // what the sanitizer keeps of each eight bytes, and around them
#else
    return grown;
#endif
  }

private:
  static std::int64_t kibibytes(std::string const& key)
  {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
      if (word == key) {
        std::int64_t value = 0;
        status >> value;
        return value;
      }
    return 0;
  }

  std::int64_t start = 0;
};

} // namespace runsieve::test
