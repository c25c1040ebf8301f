#include <runsieve/core/parallel/BlockRunner.h>

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace runsieve::test {
namespace {

/// Each block in a thread of its own.
void inThreads(std::size_t count, std::function<void(std::size_t)> const& work)
{
  std::vector<std::thread> threads;
  for (std::size_t block = 0; block < count; ++block) threads.emplace_back(work, block);
  for (std::thread& thread : threads) thread.join();
}

void fromTheLast(std::size_t count, std::function<void(std::size_t)> const& work)
{
  while (count > 0) work(--count);
}

TEST(BlockRunnerTest, WithoutARunnerBlocksComeOneAfterTheOtherInTheCallingThread)
{
  std::vector<std::size_t> done;
  const auto caller = std::this_thread::get_id();
  runBlocks({}, 3, [&](std::size_t block) {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    done.push_back(block);
  });
  EXPECT_THAT(done, ElementsAre(0, 1, 2));
}

TEST(BlockRunnerTest, EachBlockIsDoneOnceInAnyOrderAndAnyThread)
{
  for (BlockRunner const& runner : {BlockRunner(inThreads), BlockRunner(fromTheLast)})
    for (std::size_t count : {1u, 2u, 7u}) {
      std::vector<int> done(count, 0);
      runBlocks(runner, count, [&](std::size_t block) { ++done[block]; });
      EXPECT_THAT(done, Each(1)) << count;
    }
}

TEST(BlockRunnerTest, WithoutBlocksNothingIsDone)
{
  std::vector<std::size_t> done;
  runBlocks(inThreads, 0, [&](std::size_t block) { done.push_back(block); });
  EXPECT_THAT(done, IsEmpty());
}

TEST(BlockRunnerTest, AnExceptionOfABlockReachesTheCallerNotTheRunner)
{
  for (BlockRunner const& runner : {BlockRunner(), BlockRunner(inThreads), BlockRunner(fromTheLast)}) {
    std::string caught;
    try {
      runBlocks(runner, 4, [](std::size_t block) {
        if (block == 2) throw std::runtime_error("block 2");
      });
    } catch (std::runtime_error const& error) {
      caught = error.what();
    }
    EXPECT_EQ(caught, "block 2");
  }
}

TEST(BlockRunnerTest, OfSeveralExceptionsOneReachesTheCaller)
{
  EXPECT_THROW(runBlocks(inThreads, 8, [](std::size_t) { throw std::runtime_error("each"); }),
               std::runtime_error);
}

TEST(BlockRunnerTest, AfterAnExceptionBlocksThatHaveNotBegunAreLeftOut)
{
  std::vector<std::size_t> begun;
  EXPECT_THROW(runBlocks(fromTheLast, 4,
                         [&](std::size_t block) {
                           begun.push_back(block);
                           if (block == 2) throw std::runtime_error("block 2");
                         }),
               std::runtime_error);
  EXPECT_THAT(begun, ElementsAre(3, 2));
}

} // namespace
} // namespace runsieve::test
