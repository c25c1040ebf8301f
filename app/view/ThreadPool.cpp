#include "app/view/ThreadPool.h"

#include <system_error>

namespace runsieve::app {

ThreadPool::ThreadPool(unsigned threads)
{
  try {
    while (others.size() + 1 < threads) others.emplace_back(&ThreadPool::serve, this);
  } catch (std::system_error const&) {
    // Those that there are do.
  }
}

ThreadPool::~ThreadPool()
{
  {
    const std::lock_guard<std::mutex> lock(mutex);
    stopping = true;
  }
  begun.notify_all();
  for (std::thread& other : others) other.join();
}

void ThreadPool::run(std::size_t count, std::function<void(std::size_t)> const& work)
{
  const std::lock_guard<std::mutex> alone(callers);
  {
    const std::lock_guard<std::mutex> lock(mutex);
    current = &work;
    blocks = count;
    next = 0;
    ++round;
  }
  begun.notify_all();
  drain(work);
  std::unique_lock<std::mutex> lock(mutex);
  current = nullptr; // who wakes up only now has missed it
  ended.wait(lock, [this] { return active == 0; });
}

void ThreadPool::drain(std::function<void(std::size_t)> const& work)
{
  for (std::size_t block = next++; block < blocks; block = next++) work(block);
}

void ThreadPool::serve()
{
  unsigned long seen = 0;
  std::unique_lock<std::mutex> lock(mutex);
  for (;;) {
    begun.wait(lock, [&] { return stopping || (current && round != seen); });
    if (stopping) return;
    seen = round;
    ++active;
    std::function<void(std::size_t)> const& work = *current;
    lock.unlock();
    drain(work);
    lock.lock();
    if (--active == 0) ended.notify_all();
  }
}

BlockRunner sharedThreads()
{
  const unsigned cores = std::thread::hardware_concurrency();
  if (cores < 2) return {};
  // Never destroyed: a process that was forked off would wait for threads that it doesn't have.
  static auto* const pool = new ThreadPool(cores);
  return [](std::size_t count, std::function<void(std::size_t)> const& work) { pool->run(count, work); };
}

} // namespace runsieve::app
