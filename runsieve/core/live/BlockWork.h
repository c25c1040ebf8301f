#pragma once

#include <runsieve/core/live/LiveWork.h>

#include <atomic>
#include <cstddef>

namespace runsieve {

/// Does all blocks, or ends between two of them when it is interrupted.
/// \return false if interrupted: some blocks were not done
template <class Work> bool inBlocks(LiveWork const& how, std::size_t count, Work const& work)
{
  std::atomic<bool> ended = false;
  auto const unlessEnded = [&](std::size_t block) {
    if (ended) return;
    if (how.interrupted && how.interrupted())
      ended = true;
    else
      work(block);
  };
  runBlocks(how.runner, count, unlessEnded);
  return !ended;
}

} // namespace runsieve
