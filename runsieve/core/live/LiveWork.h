#pragma once

#include <runsieve/core/parallel/BlockRunner.h>

#include <functional>

namespace runsieve {

/// How the work of a LiveSieve is done; no effect on what comes out.
struct LiveWork
{
  BlockRunner runner; ///< none: one block after the other, in the calling thread
  /// Asked before each block, if set, in the thread of that block; true ends the work. What is prepared until
  /// then stays so.
  std::function<bool()> interrupted;
};

} // namespace runsieve
