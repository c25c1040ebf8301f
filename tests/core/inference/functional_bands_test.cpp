#include <runsieve/core/inference/FunctionalBands.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <thread>

namespace runsieve::test {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

using Mask = std::vector<std::uint8_t>;

/// Curves that cross each other; the fifth has a peak.
const std::vector<double> crossing = {0.,   1.11, 0.37,  1.85,  1.48,  10.51, 13.47, 10.51, 13.84, 11.25, //
                                      7.52, 8.26, 11.22, 8.26,  7.52,  4.53,  7.12,  7.86,  6.75,  7.86,  //
                                      1.54, 1.91, 44.5,  5.24,  4.13,  12.05, 14.27, 14.64, 13.16, 13.9,  //
                                      9.06, 9.06, 11.28, 11.65, 10.17, 6.07,  7.92,  7.92,  6.07,  6.44};

/// The share of pairs that enclose a curve, pair by pair.
double depthByPairs(std::vector<double> const& values, std::size_t times, Mask const& mask, std::size_t curve)
{
  double shares = 0.0;
  double count = 0.0;
  for (std::size_t t = 0; t < times; ++t) {
    const double own = values[curve * times + t];
    double pairs = 0.0;
    double enclosing = 0.0;
    for (std::size_t a = 0; a < mask.size(); ++a)
      for (std::size_t b = a + 1; b < mask.size(); ++b) {
        const double low = std::min(values[a * times + t], values[b * times + t]);
        const double high = std::max(values[a * times + t], values[b * times + t]);
        if (mask[a] == 0 || mask[b] == 0 || std::isnan(values[a * times + t] + values[b * times + t]))
          continue;
        ++pairs;
        enclosing += low <= own && own <= high ? 1.0 : 0.0;
      }
    if (std::isnan(own) || pairs == 0.0) continue;
    shares += enclosing / pairs;
    ++count;
  }
  return shares / count;
}

/// Calls blocks from the last to the first, each in a thread.
void backwards(std::size_t count, std::function<void(std::size_t)> const& work)
{
  for (std::size_t block = count; block-- > 0;) std::thread(work, block).join();
}

/// Values of few different sizes, some missing.
std::vector<double> tiedValues(std::size_t count)
{
  std::mt19937 draw(3);
  std::vector<double> values(count);
  for (double& value : values) value = draw() % 10 == 0 ? NONE : static_cast<double>(draw() % 7);
  return values;
}

} // namespace

TEST(FunctionalBands, DepthsAreThoseOfStatsmodels)
{
  // Python, statsmodels 0.13.5: graphics.functional.fboxplot(curves, wfactor=1.5)
  const std::vector<double> expected = {0.25,
                                        0.4642857142857143,
                                        0.6785714285714286,
                                        0.6071428571428571,
                                        0.42142857142857143,
                                        0.33571428571428574,
                                        0.6071428571428571,
                                        0.63571428571428579};
  const auto bands = functionalBandsOf(crossing.data(), 5, Mask(8, 1));
  ASSERT_TRUE(bands);
  ASSERT_EQ(bands->depths.size(), 8U);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(bands->depths[i], expected[i], 1e-15) << i;
  EXPECT_EQ(bands->deepest, 2U);
}

TEST(FunctionalBands, ThePairsThatEncloseACurveAreCountedWithTiesAndWithoutMissingValues)
{
  constexpr std::size_t times = 40;
  const std::vector<double> values = tiedValues(12 * times);
  Mask mask(12, 1);
  mask[4] = 0;
  const auto bands = functionalBandsOf(values.data(), times, mask);
  ASSERT_TRUE(bands);
  for (std::size_t i = 0; i < mask.size(); ++i) {
    if (mask[i] == 0)
      EXPECT_TRUE(std::isnan(bands->depths[i]));
    else
      EXPECT_NEAR(bands->depths[i], depthByPairs(values, times, mask, i), 1e-14) << i;
  }
}

TEST(FunctionalBands, TheCentralHalfIsTheEnvelopeOfTheDeeperHalf)
{
  // The third, fourth, seventh and eighth curve.
  const auto bands = functionalBandsOf(crossing.data(), 5, Mask(8, 1));
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->centralLow, (std::vector<double>{4.53, 7.12, 7.86, 6.07, 6.44}));
  EXPECT_EQ(bands->centralHigh, (std::vector<double>{9.06, 9.06, 11.28, 11.65, 10.17}));
}

TEST(FunctionalBands, OfAnOddNumberTheLargerHalfIsCentral)
{
  const std::vector<double> values = {1, 2, 3};
  const auto bands = functionalBandsOf(values.data(), 1, Mask(3, 1));
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->deepest, 1U);
  EXPECT_EQ(bands->centralLow, (std::vector<double>{1}));
  EXPECT_EQ(bands->centralHigh, (std::vector<double>{2}));
}

TEST(FunctionalBands, CurvesThatLeaveTheFencesAreOutlyingAndTheLeastDeepIsTheFirst)
{
  // The central half is 11 to 15, the fences are at 5 and 21.
  const std::vector<double> values = {10, 60, 11, -30, 12, 13, 14, 15, 70};
  const auto bands = functionalBandsOf(values.data(), 1, Mask(9, 1));
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->outlying, (std::vector<std::size_t>{8, 3, 1}));
  EXPECT_EQ(bands->low[0], 10.0) << "the envelope is without outlying curves";
  EXPECT_EQ(bands->high[0], 15.0);
}

TEST(FunctionalBands, ACurveOnAFenceIsNotOutlying)
{
  // The two deepest are 4 and 5: fences are at 2.5 and 6.5.
  const std::vector<double> on = {4, 5, 2.5, 6.5};
  const auto bands = functionalBandsOf(on.data(), 1, Mask(4, 1));
  ASSERT_TRUE(bands);
  EXPECT_TRUE(bands->outlying.empty());
  EXPECT_EQ(bands->low.front(), 2.5);
  EXPECT_EQ(bands->high.front(), 6.5);
  const std::vector<double> outside = {4, 5, 2.4999, 6.5001};
  EXPECT_EQ(functionalBandsOf(outside.data(), 1, Mask(4, 1))->outlying, (std::vector<std::size_t>{3, 2}));
}

TEST(FunctionalBands, TimesWithoutValuesHaveNoBands)
{
  const std::vector<double> values = {1, NONE, 3, 2, NONE, 2, 3, NONE, 1};
  const auto bands = functionalBandsOf(values.data(), 3, Mask(3, 1));
  ASSERT_TRUE(bands);
  for (auto const* row : {&bands->low, &bands->high, &bands->centralLow, &bands->centralHigh}) {
    EXPECT_FALSE(std::isnan((*row)[0]));
    EXPECT_TRUE(std::isnan((*row)[1]));
    EXPECT_FALSE(std::isnan((*row)[2]));
  }
}

TEST(FunctionalBands, InfiniteValuesAreMissing)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> values = {1, infinity, 2, -infinity, 3, 5};
  const auto bands = functionalBandsOf(values.data(), 2, Mask(3, 1));
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->deepest, 1U);
  EXPECT_TRUE(bands->outlying.empty());
  EXPECT_EQ(bands->high[1], 5.0);
}

TEST(FunctionalBands, ASingleCurveIsTheDeepest)
{
  const std::vector<double> values = {NONE, NONE, 1, 2, NONE, NONE};
  const auto bands = functionalBandsOf(values.data(), 2, Mask{1, 1, 1});
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->deepest, 1U);
  EXPECT_EQ(bands->depths[1], 0.0);
  EXPECT_TRUE(std::isnan(bands->depths[0]));
  EXPECT_EQ(bands->centralLow, (std::vector<double>{1, 2}));
  EXPECT_EQ(bands->high, (std::vector<double>{1, 2}));
}

TEST(FunctionalBands, WithoutCurvesThereIsNoDeepest)
{
  const std::vector<double> values = {1, 2};
  const auto bands = functionalBandsOf(values.data(), 2, Mask{0});
  ASSERT_TRUE(bands);
  EXPECT_FALSE(bands->deepest);
  EXPECT_TRUE(std::isnan(bands->low[0]));
  EXPECT_TRUE(functionalBandsOf(nullptr, 0, {})->depths.empty());
}

TEST(FunctionalBands, DoNotDependOnThreads)
{
  constexpr std::size_t times = 100;
  std::mt19937 draw(5);
  std::vector<double> values(20 * times);
  for (double& value : values) value = std::uniform_real_distribution<double>()(draw);
  const auto one = functionalBandsOf(values.data(), times, Mask(20, 1));
  const auto many = functionalBandsOf(values.data(), times, Mask(20, 1), {}, backwards);
  ASSERT_TRUE(one && many);
  EXPECT_EQ(one->depths, many->depths);
}

TEST(FunctionalBands, EndWhenCancelled)
{
  int asked = 0;
  const auto bands = functionalBandsOf(crossing.data(), 5, Mask(8, 1), [&] { return ++asked == 3; });
  EXPECT_FALSE(bands);
  EXPECT_EQ(asked, 3);
}

} // namespace runsieve::test
