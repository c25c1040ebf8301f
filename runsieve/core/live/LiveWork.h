#pragma once

#include <cstddef>
#include <functional>

namespace runsieve {

/// Calls work(0) ... work(count - 1), each once, in any order, in one thread or several, and returns when all
/// calls have.
using BlockRunner =
    std::function<void(std::size_t count, std::function<void(std::size_t block)> const& work)>;

/// How the work of a LiveSieve is done; no effect on what comes out.
struct LiveWork
{
  BlockRunner runner; ///< none: one block after the other, in the calling thread
  /// Asked before each block, if set, in the thread of that block; true ends the work. What is prepared until
  /// then stays so.
  std::function<bool()> interrupted;
};

} // namespace runsieve
