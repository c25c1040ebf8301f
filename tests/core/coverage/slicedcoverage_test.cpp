#include <runsieve/core/coverage/SlicedCoverage.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace runsieve::test {
namespace {

constexpr std::size_t stride = 12;
constexpr std::size_t runs = 500;

using Coats = SlicedCoverage::Coats;
using Progress = SlicedCoverage::Progress;

struct SlicedCoverageTest : testing::Test
{
  SlicedCoverageTest()
  {
    std::mt19937 random(3);
    for (std::size_t run = 0; run < runs; ++run)
      for (std::size_t i = 0; i < stride; ++i) {
        points.push_back(static_cast<float>(8 * i));
        points.push_back(static_cast<float>(random() % 800) / 10);
      }
  }

  [[nodiscard]] RunBlock block() const { return {points.data(), stride, runs}; }
  static RunCoverage::Frame frame() { return {90, 80, 2, 1.5, {}}; }

  [[nodiscard]] RunCoverage atOnce(Coats const& coats) const
  {
    RunCoverage counts(frame());
    EXPECT_TRUE(counts.add(block(), coats.data()));
    return counts;
  }

  static Coats anyCoats(unsigned seed)
  {
    std::mt19937 random(seed);
    Coats coats(runs);
    for (auto& own : coats) own = static_cast<std::uint8_t>(random() % 4);
    return coats;
  }

  std::vector<float> points;
};

TEST_F(SlicedCoverageTest, SlicesOfAnySizeGiveTheCountsOfAllAtOnceBitForBit)
{
  const Coats wanted = anyCoats(1);
  const RunCoverage expected = atOnce(wanted);
  for (std::size_t most : {1UL, 7UL, 100UL, 499UL, 500UL, 9999UL}) {
    SlicedCoverage sliced(frame(), runs);
    int slices = 1;
    while (sliced.advance(block(), wanted, most, nullptr) == Progress::more) ++slices;
    EXPECT_EQ(sliced.coats(), wanted) << most;
    EXPECT_EQ(sliced.counts().differences(), expected.differences()) << most;
    EXPECT_EQ(sliced.counts().coats(), expected.coats()) << most;
    EXPECT_LE(slices, static_cast<int>(runs / most) + 2) << most;
  }
}

TEST_F(SlicedCoverageTest, CountsThatWereBegunAreFinishedAtOnce)
{
  const Coats wanted = anyCoats(1);
  SlicedCoverage sliced(frame(), runs);
  EXPECT_EQ(sliced.advance(block(), wanted, 40, nullptr), Progress::more);
  EXPECT_EQ(sliced.finish(block(), wanted, nullptr), Progress::done);
  EXPECT_EQ(sliced.counts().differences(), atOnce(wanted).differences());
  EXPECT_EQ(sliced.advance(block(), wanted, 40, nullptr), Progress::done);
}

TEST_F(SlicedCoverageTest, OtherCoatsMayBeWantedMeanwhile)
{
  SlicedCoverage sliced(frame(), runs);
  for (unsigned seed = 0; seed < 20; ++seed)
    EXPECT_EQ(sliced.advance(block(), anyCoats(seed), 30, nullptr), Progress::more);
  const Coats last = anyCoats(99);
  while (sliced.advance(block(), last, 30, nullptr) == Progress::more) {
  }
  EXPECT_EQ(sliced.counts().differences(), atOnce(last).differences());
}

TEST_F(SlicedCoverageTest, ASliceDrawsAsManyRunsAsItMayOfThoseThatChange)
{
  Coats wanted(runs, 1);
  SlicedCoverage sliced(frame(), runs);
  ASSERT_EQ(sliced.finish(block(), wanted, nullptr), Progress::done);
  for (std::size_t i = 0; i < runs; i += 50) wanted[i] = 2;
  EXPECT_EQ(sliced.advance(block(), wanted, 9, nullptr), Progress::more);
  EXPECT_EQ(std::count(sliced.coats().begin(), sliced.coats().end(), 2), 9);
  EXPECT_EQ(sliced.advance(block(), wanted, 9, nullptr), Progress::done);
  EXPECT_EQ(sliced.coats(), wanted);
}

TEST_F(SlicedCoverageTest, TheShareIsThatOfTheWantedCoats)
{
  Coats wanted(runs, 0);
  SlicedCoverage sliced(frame(), runs);
  EXPECT_EQ(sliced.share(wanted), 1.0);
  std::fill(wanted.begin(), wanted.end(), 2);
  EXPECT_EQ(sliced.share(wanted), 0.0);
  static_cast<void>(sliced.advance(block(), wanted, runs / 4, nullptr));
  EXPECT_EQ(sliced.share(wanted), 0.25);
  EXPECT_EQ(sliced.share(Coats(runs, 1)), 0.25);
  static_cast<void>(sliced.finish(block(), wanted, nullptr));
  EXPECT_EQ(sliced.share(wanted), 1.0);
}

// Whatever the order of the runs: neither stretches of them nor every second, tenth or hundredth are left
// out.
TEST_F(SlicedCoverageTest, AFewRunsAreSpreadOverAllOfThem)
{
  for (std::size_t all : {100UL, 1000UL, 1024UL, 9973UL, 10000UL}) {
    SlicedCoverage sliced(frame(), all);
    const std::vector<float> flat(2 * stride * all, 1.0F);
    const std::size_t few = all / 20;
    static_cast<void>(sliced.advance({flat.data(), stride, all}, Coats(all, 1), few, nullptr));
    std::size_t last = 0;
    std::size_t largestGap = 0;
    std::vector<std::size_t> ofTen(10);
    for (std::size_t i = 0; i < all; ++i) {
      if (sliced.coats()[i] == 0) continue;
      largestGap = std::max(largestGap, i - last);
      last = i;
      ++ofTen[i % 10];
    }
    largestGap = std::max(largestGap, all - last);
    EXPECT_LE(largestGap, 3 * all / few) << all;
    if (few >= 50) {
      EXPECT_GT(*std::min_element(ofTen.begin(), ofTen.end()), few / 20) << all;
    }
  }
}

TEST_F(SlicedCoverageTest, AnyNumberOfRunsIsReached)
{
  for (std::size_t all : {0UL, 1UL, 2UL, 3UL, 4UL, 6UL, 10UL, 60UL, 61UL}) {
    SlicedCoverage sliced(frame(), all);
    const Coats wanted(all, 3);
    RunBlock some = block();
    some.count = all;
    for (std::size_t i = 0; i <= all; ++i) static_cast<void>(sliced.advance(some, wanted, 1, nullptr));
    EXPECT_EQ(sliced.coats(), wanted) << all;
  }
}

TEST_F(SlicedCoverageTest, ThreadsMakeNoDifference)
{
  const std::size_t many = 20 * runs; // enough for threads
  std::vector<float> longer;
  for (int i = 0; i < 20; ++i) longer.insert(longer.end(), points.begin(), points.end());
  const RunBlock all = {longer.data(), stride, many};
  const Coats wanted(many, 1);
  bool wereUsed = false;
  const BlockRunner backwards = [&](std::size_t count, std::function<void(std::size_t)> const& work) {
    wereUsed = true;
    while (count > 0) work(--count);
  };
  SlicedCoverage one(frame(), many);
  SlicedCoverage other(frame(), many);
  while (one.advance(all, wanted, 6000, nullptr) == Progress::more) {
  }
  while (other.advance(all, wanted, 6000, backwards) == Progress::more) {
  }
  EXPECT_TRUE(wereUsed);
  EXPECT_EQ(one.counts().differences(), other.counts().differences());
}

TEST_F(SlicedCoverageTest, MoreThanCanBeCountedIsTold)
{
  const std::size_t many = 70'000; // of 255 coats
  std::vector<float> flat;
  for (std::size_t run = 0; run < many; ++run) flat.insert(flat.end(), {0, 5, 9, 5});
  const RunBlock all = {flat.data(), 2, many};
  SlicedCoverage sliced(frame(), many);
  EXPECT_EQ(sliced.finish(all, Coats(many, 255), nullptr), Progress::tooMany);
  SlicedCoverage other(frame(), many);
  Progress progress = Progress::more;
  while (progress == Progress::more) progress = other.advance(all, Coats(many, 255), 1000, nullptr);
  EXPECT_EQ(progress, Progress::tooMany);
}

TEST_F(SlicedCoverageTest, ALineOfItsOwnIsNoneOfTheRuns)
{
  SlicedCoverage sliced(frame(), runs);
  ASSERT_TRUE(sliced.addLine(points.data(), stride));
  EXPECT_EQ(sliced.coats(), Coats(runs, 0));
  EXPECT_EQ(sliced.counts().coats(), 1);
}

} // namespace
} // namespace runsieve::test
