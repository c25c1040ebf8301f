#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <thread>
#include <vector>

namespace runsieve {

/// The threads to use when asked for `wanted`, 0 meaning as many as the machine has, at most 4.
inline unsigned threadCount(unsigned wanted)
{
  return wanted > 0 ? wanted : std::clamp(std::thread::hardware_concurrency(), 1u, 4u);
}

/// Calls work(0) ... work(count - 1) on several threads, in no fixed order. An exception of any call is
/// thrown on, after all threads have ended.
template <class Work> void inParallel(unsigned threads, std::size_t count, Work const& work)
{
  std::atomic<std::size_t> next = 0;
  auto drain = [&] {
    for (std::size_t i = next++; i < count; i = next++) work(i);
  };
  std::vector<std::future<void>> others; // a future of std::async waits in its destructor
  for (std::size_t i = 1; i < std::min<std::size_t>(threads, count); ++i)
    others.push_back(std::async(std::launch::async, drain));
  drain();
  for (auto& other : others) other.get();
}

} // namespace runsieve
