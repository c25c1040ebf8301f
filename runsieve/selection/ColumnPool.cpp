#include <runsieve/selection/ColumnPool.h>

#include <runsieve/core/kernels/HugePages.h>

#include <cstdlib>
#include <map>
#include <new>

namespace runsieve {

namespace {

/// In front of each block; as large as the strictest alignment, which so carries over to the block.
struct alignas(std::max_align_t) Header
{
  std::size_t bytes;
};

using Idle = std::multimap<std::size_t, Header*>; ///< by size

/// Never destroyed: arrays may give memory back while the program ends.
Idle& idle()
{
  static auto* instance = new Idle;
  return *instance;
}

Header* reuse(std::size_t bytes)
{
  auto found = idle().lower_bound(bytes);
  // A block far too large stays for a column that needs it.
  if (found == idle().end() || found->first > 2 * bytes + 4096) return nullptr;
  Header* header = found->second;
  idle().erase(found);
  return header;
}

} // namespace

void* ColumnPool::take(std::size_t bytes)
{
  Header* header = reuse(bytes);
  if (!header) {
    header = static_cast<Header*>(std::malloc(sizeof(Header) + bytes));
    if (!header) throw std::bad_alloc();
    preferHugePages(header, sizeof(Header) + bytes);
    header->bytes = bytes;
  }
  return header + 1;
}

void ColumnPool::release(void* block)
{
  if (!block) return;
  Header* header = static_cast<Header*>(block) - 1;
  idle().emplace(header->bytes, header);
}

void ColumnPool::trim()
{
  for (auto const& entry : idle()) std::free(entry.second);
  idle().clear();
}

std::size_t ColumnPool::idleBytes()
{
  std::size_t bytes = 0;
  for (auto const& entry : idle()) bytes += entry.first;
  return bytes;
}

} // namespace runsieve
