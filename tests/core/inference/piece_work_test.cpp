#include <runsieve/core/inference/PieceWork.h>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace runsieve::test {

TEST(PieceWork, doesEachPieceOnceWhateverTheSlices)
{
  for (unsigned const threads : {1u, 3u})
    for (std::size_t const slice : {0u, 1u, 4u, 100u}) {
      std::vector<std::atomic<int>> times(10);
      PieceWork work(times.size(), 1000, threads);
      while (!work.done()) work.advance(slice, [&](std::size_t piece) { ++times[piece]; });
      for (auto const& count : times) EXPECT_EQ(count, 1) << threads << ' ' << slice;
    }
}

TEST(PieceWork, ofNoPiecesIsDone)
{
  PieceWork work(0, 1000, 2);
  EXPECT_TRUE(work.done());
  work.advance(5, [](std::size_t) { FAIL(); });
}

TEST(PieceWork, doesAtLeastOnePieceHoweverLongItIs)
{
  PieceWork work(3, std::size_t(1) << 40U, 1);
  std::size_t made = 0;
  work.advance(0, [&](std::size_t) { ++made; });
  EXPECT_EQ(made, 1u);
  EXPECT_FALSE(work.done());
}

TEST(PieceWork, throwsOnWhatAPieceThrowsAndDoesNotCountTheSlice)
{
  for (unsigned const threads : {1u, 3u}) {
    PieceWork work(6, 1000, threads);
    EXPECT_THROW(work.advance(6,
                              [](std::size_t piece) {
                                if (piece == 4) throw std::runtime_error("no");
                              }),
                 std::runtime_error);
    EXPECT_FALSE(work.done());
  }
}

TEST(InParallel, throwsOnAnExceptionOfAnyThreadAfterAllHaveEnded)
{
  std::atomic<int> running = 0;
  auto const work = [&](std::size_t i) {
    ++running;
    if (i % 5 == 2) {
      --running;
      throw std::runtime_error("no");
    }
    --running;
  };
  EXPECT_THROW(inParallel(4, 50, work), std::runtime_error);
  EXPECT_EQ(running, 0);
}

TEST(InParallel, ofNothingDoesNothing)
{
  inParallel(4, 0, [](std::size_t) { FAIL(); });
}

} // namespace runsieve::test
