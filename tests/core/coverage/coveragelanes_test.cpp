#include <runsieve/core/coverage/CoverageLanes.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace runsieve::test {
namespace {

constexpr std::size_t stride = 20;
constexpr std::size_t many = 4000; ///< runs, enough for threads

using Coats = std::vector<std::uint8_t>;

/// Runs that rise and fall, leave the picture, have gaps and sometimes turn back.
std::vector<float> anyRuns(std::size_t runs)
{
  std::mt19937 random(7);
  std::vector<float> points;
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t i = 0; i < stride; ++i) {
      const bool isGap = random() % 50 == 0;
      const bool turns = run % 11 == 0;
      points.push_back(static_cast<float>(turns ? random() % 90 : 5 * i));
      points.push_back(isGap ? std::numeric_limits<float>::quiet_NaN()
                             : static_cast<float>(random() % 900) / 10 - 10);
    }
  return points;
}

Coats anyCoats(std::size_t runs, unsigned seed)
{
  std::mt19937 random(seed);
  Coats coats(runs);
  for (auto& own : coats) own = static_cast<std::uint8_t>(random() % 3);
  return coats;
}

RunCoverage emptyPicture(int width = 90, int height = 70)
{
  return RunCoverage({width, height, 2, 1.5, {}});
}

/// Runs all blocks at the same time, as many as there are, and counts how often it is called.
struct Threads
{
  int calls = 0;
  std::size_t blocks = 0;

  BlockRunner runner()
  {
    return [this](std::size_t count, std::function<void(std::size_t)> const& work) {
      ++calls;
      blocks = count;
      std::vector<std::thread> threads;
      for (std::size_t block = 0; block < count; ++block) threads.emplace_back(work, block);
      for (std::thread& thread : threads) thread.join();
    };
  }
};

void inTheCallingThread(std::size_t count, std::function<void(std::size_t)> const& work)
{
  for (std::size_t block = 0; block < count; ++block) work(block);
}

void fromTheLast(std::size_t count, std::function<void(std::size_t)> const& work)
{
  while (count > 0) work(--count);
}

TEST(CoverageLanesTest, CountsAreTheSameWithAnyThreadsBitForBit)
{
  const std::vector<float> points = anyRuns(many);
  const RunBlock runs = {points.data(), stride, many};
  const Coats before = anyCoats(many, 1);
  const Coats after = anyCoats(many, 2);
  RunCoverage once = emptyPicture();
  RunCoverage wanted = emptyPicture();
  ASSERT_TRUE(once.add(runs));
  ASSERT_TRUE(wanted.add(runs, after.data()));
  Threads threads;
  for (BlockRunner const& runner :
       {BlockRunner(), BlockRunner(inTheCallingThread), BlockRunner(fromTheLast), threads.runner()}) {
    RunCoverage plain = emptyPicture();
    EXPECT_TRUE(CoverageLanes::add(plain, runs, nullptr, runner));
    EXPECT_EQ(plain.differences(), once.differences());
    EXPECT_EQ(plain.coats(), once.coats());
    RunCoverage changed = emptyPicture();
    EXPECT_TRUE(CoverageLanes::add(changed, runs, before.data(), runner));
    EXPECT_TRUE(CoverageLanes::change(changed, runs, before.data(), after.data(), runner));
    EXPECT_EQ(changed.differences(), wanted.differences());
    EXPECT_EQ(changed.coats(), wanted.coats());
  }
  EXPECT_EQ(threads.calls, 3);
  EXPECT_GT(threads.blocks, 1u);
}

TEST(CoverageLanesTest, WhatIsInStays)
{
  const std::vector<float> points = anyRuns(many);
  const RunBlock runs = {points.data(), stride, many};
  RunCoverage twice = emptyPicture();
  twice.add(runs);
  twice.add(runs);
  RunCoverage found = emptyPicture();
  found.add(runs);
  Threads threads;
  CoverageLanes::add(found, runs, nullptr, threads.runner());
  EXPECT_EQ(found.differences(), twice.differences());
}

TEST(CoverageLanesTest, ThreadsHelpOnlyWhereThereIsEnoughToDo)
{
  const std::vector<float> points = anyRuns(many);
  Threads threads;
  RunCoverage few = emptyPicture();
  CoverageLanes::add(few, {points.data(), stride, 100}, nullptr, threads.runner());
  Coats coats(many, 0);
  coats[17] = 1;
  RunCoverage one = emptyPicture();
  CoverageLanes::add(one, {points.data(), stride, many}, coats.data(), threads.runner());
  CoverageLanes::change(one, {points.data(), stride, many}, coats.data(), Coats(many, 0).data(),
                        threads.runner());
  EXPECT_EQ(threads.calls, 0);
}

TEST(CoverageLanesTest, LargePicturesGetFewerThreads)
{
  const std::vector<float> points = anyRuns(many);
  Threads threads;
  RunCoverage large = emptyPicture(1000, 1000); // 8 MB
  CoverageLanes::add(large, {points.data(), stride, many}, nullptr, threads.runner());
  EXPECT_EQ(threads.blocks, 2u);
  threads.calls = 0;
  RunCoverage huge = emptyPicture(2000, 1000);
  CoverageLanes::add(huge, {points.data(), stride, many}, nullptr, threads.runner());
  EXPECT_EQ(threads.calls, 0);
}

/// So that no thread decides what still fits.
TEST(CoverageLanesTest, NearTheLimitTheCallingThreadCounts)
{
  const std::vector<float> points = anyRuns(many);
  const RunBlock runs = {points.data(), stride, many};
  Threads threads;
  RunCoverage serial = emptyPicture();
  RunCoverage found = emptyPicture();
  const Coats coats(many, 255);
  EXPECT_EQ(CoverageLanes::add(found, runs, coats.data(), threads.runner()), serial.add(runs, coats.data()));
  EXPECT_EQ(found.differences(), serial.differences());
  EXPECT_EQ(threads.calls, 0);
}

TEST(CoverageLanesTest, AnExceptionOfTheRunnerReachesTheCaller)
{
  const std::vector<float> points = anyRuns(many);
  RunCoverage counts = emptyPicture();
  const BlockRunner failing = [](std::size_t, std::function<void(std::size_t)> const&) {
    throw std::runtime_error("no threads");
  };
  EXPECT_THROW(CoverageLanes::add(counts, {points.data(), stride, many}, nullptr, failing),
               std::runtime_error);
}

} // namespace
} // namespace runsieve::test
