#include "app/view/ThreadPool.h"

#include <gmock/gmock.h>

#include <numeric>
#include <stdexcept>
#include <vector>

using testing::Each;

namespace runsieve::app {
namespace {

TEST(ThreadPoolTest, EachBlockIsDoneOnceHoweverManyThereAre)
{
  for (unsigned threads : {0u, 1u, 2u, 5u}) {
    ThreadPool pool(threads);
    for (std::size_t count : {0u, 1u, 3u, 1000u}) {
      std::vector<int> done(count, 0);
      pool.run(count, [&](std::size_t block) { ++done[block]; });
      EXPECT_THAT(done, Each(1)) << count << " blocks, " << threads << " threads";
    }
  }
}

TEST(ThreadPoolTest, ManyWorksInARowAreAllDone)
{
  ThreadPool pool(4);
  for (int round = 0; round < 5000; ++round) {
    std::vector<int> done(1 + round % 6, 0);
    pool.run(done.size(), [&](std::size_t block) { done[block] += round; });
    ASSERT_THAT(done, Each(round));
  }
}

TEST(ThreadPoolTest, CallsFromSeveralThreadsWaitForOneAnother)
{
  ThreadPool pool(3);
  std::vector<long> sums(4, 0);
  std::vector<std::thread> callers;
  for (long& sum : sums)
    callers.emplace_back([&pool, &sum] {
      for (int round = 0; round < 200; ++round) {
        std::vector<long> values(10, 0);
        pool.run(values.size(), [&](std::size_t block) { values[block] = static_cast<long>(block); });
        sum += std::accumulate(values.begin(), values.end(), 0L);
      }
    });
  for (std::thread& caller : callers) caller.join();
  EXPECT_THAT(sums, Each(200 * 45));
}

TEST(ThreadPoolTest, AnExceptionOfABlockReachesTheCallerOfTheBlocks)
{
  ThreadPool pool(3);
  const BlockRunner runner = [&](std::size_t count, std::function<void(std::size_t)> const& work) {
    pool.run(count, work);
  };
  EXPECT_THROW(runBlocks(runner, 50,
                         [](std::size_t block) {
                           if (block == 30) throw std::runtime_error("block 30");
                         }),
               std::runtime_error);
  std::vector<int> done(50, 0);
  runBlocks(runner, done.size(), [&](std::size_t block) { ++done[block]; });
  EXPECT_THAT(done, Each(1)) << "the pool works on";
}

TEST(ThreadPoolTest, TheSharedThreadsAreNoneOnASingleCore)
{
  const BlockRunner runner = sharedThreads();
  EXPECT_EQ(static_cast<bool>(runner), std::thread::hardware_concurrency() > 1);
  std::vector<int> done(20, 0);
  runBlocks(runner, done.size(), [&](std::size_t block) { ++done[block]; });
  EXPECT_THAT(done, Each(1));
}

} // namespace
} // namespace runsieve::app
