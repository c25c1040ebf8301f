#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>

namespace runsieve {

/// A host's threads: calls work(0) ... work(count - 1), each once, in any order, in one thread or several,
/// and returns when all calls have. The work throws nothing. It may be called anew from the thread that has
/// called it, never from within the work.
using BlockRunner =
    std::function<void(std::size_t count, std::function<void(std::size_t block)> const& work)>;

/// Does all blocks of a work by a runner; without one, one after the other in the calling thread. The first
/// exception of a block is thrown on in the calling thread, once the runner is done; blocks that have not
/// begun by then are left out.
template <class Work> void runBlocks(BlockRunner const& runner, std::size_t count, Work const& work)
{
  if (!runner || count < 2) {
    for (std::size_t block = 0; block < count; ++block) work(block);
    return;
  }
  std::atomic<bool> failed = false;
  std::atomic_flag kept = ATOMIC_FLAG_INIT;
  std::exception_ptr first;
  runner(count, [&](std::size_t block) {
    if (failed) return;
    try {
      work(block);
    } catch (...) {
      if (!kept.test_and_set()) first = std::current_exception();
      failed = true;
    }
  });
  if (first) std::rethrow_exception(first);
}

} // namespace runsieve
