#pragma once

#include <runsieve/core/parallel/BlockRunner.h>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace runsieve::app {

/// Threads that wait for work.
class ThreadPool
{
public:
  /// \param threads that do the work, the one that calls run() among them. Fewer if the system gives no more.
  explicit ThreadPool(unsigned threads);
  ~ThreadPool();
  ThreadPool(ThreadPool const&) = delete;
  ThreadPool& operator=(ThreadPool const&) = delete;

  /// Calls work(0) ... work(count - 1) and returns when all calls have. The work throws nothing and does not
  /// come back here. Calls from several threads wait for one another.
  void run(std::size_t count, std::function<void(std::size_t block)> const& work);

private:
  void serve();
  void drain(std::function<void(std::size_t block)> const& work);

  std::mutex callers; ///< held by the one whose work is done
  std::mutex mutex;   ///< guards what follows
  std::condition_variable begun;
  std::condition_variable ended;
  std::function<void(std::size_t)> const* current = nullptr; ///< null: nothing to join in
  std::size_t blocks = 0;
  std::atomic<std::size_t> next = 0;
  unsigned long round = 0;
  unsigned active = 0; ///< other threads at work
  bool stopping = false;
  std::vector<std::thread> others;
};

/// As many threads as the machine has cores, made at the first call and kept; none with a single core.
BlockRunner sharedThreads();

} // namespace runsieve::app
