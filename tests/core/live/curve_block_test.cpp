#include <runsieve/core/live/CurveBlock.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace runsieve::test {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Marks = std::vector<std::uint8_t>;

/// Three runs of ten times, the second rises from 0 to 9.
class CurvesOfThreeRuns : public testing::Test
{
protected:
  CurvesOfThreeRuns()
  {
    for (int t = 0; t < 10; ++t) {
      values[t] = 5.0;
      values[10 + t] = t;
      values[20 + t] = -1.0;
    }
  }

  Marks inside(GridSpan span, ValueRange range)
  {
    Marks marks(3, 7);
    block.inside(span, range, marks.data());
    return marks;
  }

  Marks ever(GridSpan span, ValueRange range)
  {
    Marks marks(3, 7);
    block.ever(span, range, marks.data());
    return marks;
  }

  std::vector<double> values = std::vector<double>(30);
  CurveBlock block{values.data(), 3, 10};
};

TEST_F(CurvesOfThreeRuns, AreInsideIfEveryValueOfTheSpanLiesInTheRange)
{
  EXPECT_THAT(inside({4, 6}, {4.0, 6.0}), ElementsAre(1, 1, 0));
  EXPECT_THAT(inside({4, 7}, {4.0, 6.0}), ElementsAre(1, 0, 0));
  EXPECT_THAT(inside({3, 6}, {4.0, 6.0}), ElementsAre(1, 0, 0));
  EXPECT_THAT(inside({0, 9}, {-infinity, infinity}), Each(1));
}

TEST_F(CurvesOfThreeRuns, AreEverInsideIfSomeValueOfTheSpanLiesInTheRange)
{
  EXPECT_THAT(ever({7, 9}, {4.0, 7.0}), ElementsAre(1, 1, 0));
  EXPECT_THAT(ever({8, 9}, {4.0, 7.0}), ElementsAre(1, 0, 0));
  EXPECT_THAT(ever({0, 9}, {-2.0, 0.0}), ElementsAre(0, 1, 1));
}

TEST_F(CurvesOfThreeRuns, BothEndsBelongToARange)
{
  EXPECT_THAT(inside({5, 5}, {5.0, 5.0}), ElementsAre(1, 1, 0));
  EXPECT_THAT(ever({5, 5}, {5.0, 5.0}), ElementsAre(1, 1, 0));
}

TEST_F(CurvesOfThreeRuns, MissingValueInTheSpanLiesInNoRangeHoweverTheSpanGrowsAndShrinks)
{
  values[4] = nan;
  ValueRange const all{-infinity, infinity};
  EXPECT_THAT(inside({2, 3}, all), ElementsAre(1, 1, 1));
  EXPECT_THAT(inside({2, 4}, all), ElementsAre(0, 1, 1));
  EXPECT_THAT(inside({1, 8}, all), ElementsAre(0, 1, 1));
  EXPECT_THAT(inside({5, 8}, all), ElementsAre(1, 1, 1));
  EXPECT_THAT(inside({0, 9}, all), ElementsAre(0, 1, 1));
}

TEST_F(CurvesOfThreeRuns, MissingValuesAreLeftOutOfEver)
{
  values[4] = nan;
  EXPECT_THAT(ever({4, 4}, {-infinity, infinity}), ElementsAre(0, 1, 1));
  EXPECT_THAT(ever({4, 5}, {-infinity, infinity}), ElementsAre(1, 1, 1));
}

TEST_F(CurvesOfThreeRuns, InfiniteValuesLieInOpenRanges)
{
  values[4] = infinity;
  EXPECT_THAT(inside({0, 9}, {5.0, infinity}), ElementsAre(1, 0, 0));
  EXPECT_THAT(inside({0, 9}, {5.0, 1e300}), ElementsAre(0, 0, 0));
}

TEST_F(CurvesOfThreeRuns, RememberedSpanTakesAnotherRange)
{
  EXPECT_THAT(inside({0, 9}, {0.0, 9.0}), ElementsAre(1, 1, 0));
  EXPECT_THAT(inside({0, 9}, {0.5, 9.0}), ElementsAre(1, 0, 0));
  EXPECT_THAT(inside({0, 9}, {-1.0, 9.0}), Each(1));
}

TEST(CurveBlockTest, FullBlockMarksTheLastRun)
{
  std::vector<double> values(CurveBlock::mostRuns, 1.0);
  values.back() = 2.0;
  CurveBlock block(values.data(), CurveBlock::mostRuns, 1);
  Marks marks(CurveBlock::mostRuns);
  block.inside({0, 0}, {2.0, 2.0}, marks.data());
  Marks expected(CurveBlock::mostRuns, 0);
  expected.back() = 1;
  EXPECT_EQ(marks, expected);
}

} // namespace
} // namespace runsieve::test
