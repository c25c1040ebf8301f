#include <runsieve/core/kernels/HugePages.h>

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace runsieve {

void preferHugePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes)
{
#ifdef __linux__
  constexpr std::uintptr_t hugePage = std::uintptr_t{2} << 20;
  const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(memory) + hugePage - 1) & ~(hugePage - 1);
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(memory) + bytes) & ~(hugePage - 1);
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

} // namespace runsieve
