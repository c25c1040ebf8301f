#include <runsieve/core/kernels/KolmogorovSmirnov.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

/// The merge walk that gives the two-sample statistic.
namespace {

double statistic(std::vector<double> a, std::vector<double> b)
{
  return KolmogorovSmirnov<double*, double*>::statistic(a.data(), a.data() + a.size(), b.data(),
                                                        b.data() + b.size());
}

TEST(KsStatisticTest, UntiedSamplesGiveTheUsualStatistic)
{
  // scipy.stats.ks_2samp(a, b).statistic, SciPy 1.10.1
  EXPECT_NEAR(statistic({0.2, 0.9, 1.4, 2.2, 3.1, 3.3, 4.8, 5.5},
                        {1.1, 2.5, 2.9, 3.7, 4.1, 5.0, 6.2, 7.7, 8.1, 8.8, 9.4}),
              0.4772727272727273, 1e-14);
}

TEST(KsStatisticTest, LargerUntiedSamples)
{
  // i = np.arange(60); a = np.sort(np.sin(1.7*i)); j = np.arange(85); b = np.sort(0.3 + 1.2*np.cos(0.9*j))
  // scipy.stats.ks_2samp(a, b).statistic
  std::vector<double> a, b;
  for (int i = 0; i < 60; ++i) a.push_back(std::sin(1.7 * i));
  for (int j = 0; j < 85; ++j) b.push_back(0.3 + 1.2 * std::cos(0.9 * j));
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  EXPECT_NEAR(statistic(a, b), 0.32941176470588235, 1e-14);
}

TEST(KsStatisticTest, IdenticalSamplesDifferByOneStep)
{
  EXPECT_DOUBLE_EQ(statistic({1, 2, 3, 4}, {1, 2, 3, 4}), 0.25);
  EXPECT_DOUBLE_EQ(statistic({1}, {1}), 1.0);
}

TEST(KsStatisticTest, TiedValuesAreSteppedOneAtATimeInTheSecondSampleFirst)
{
  // three ties: the second sample falls by 3/4 before the first one moves
  EXPECT_DOUBLE_EQ(statistic({5, 5, 5, 9}, {5, 5, 5, 9}), 0.75);
  EXPECT_DOUBLE_EQ(statistic({5, 5}, {5, 7}), 0.5);
}

TEST(KsStatisticTest, DisjointSamplesAreOneApartAndNeverMore)
{
  // ten steps of 0.1 add up to less or more than 1 by rounding, which must not show
  std::vector<double> low, high;
  for (int i = 0; i < 10; ++i) low.push_back(i);
  for (int i = 0; i < 7; ++i) high.push_back(100 + i);
  EXPECT_NEAR(statistic(low, high), 1.0, 1e-15);
  EXPECT_LE(statistic(low, high), 1.0);
  EXPECT_NEAR(statistic(high, low), 1.0, 1e-15);
  EXPECT_LE(statistic(high, low), 1.0);
}

TEST(KsStatisticTest, NoSampleSizePassesOne)
{
  for (std::size_t n = 1; n < 300; ++n) {
    const std::vector<double> low(n, 0.0), high(n + 3, 1.0);
    ASSERT_LE(statistic(low, high), 1.0) << n;
    ASSERT_LE(statistic(high, low), 1.0) << n;
  }
}

TEST(KsStatisticTest, TheWalkEndsWithTheShorterReach)
{
  // the second sample ends at 2; what the first one holds beyond is not looked at
  EXPECT_DOUBLE_EQ(statistic({1, 50, 60, 70}, {2}), 0.75);
}

TEST(KsStatisticTest, AnEmptySampleIsNoDistance)
{
  EXPECT_EQ(statistic({}, {1, 2}), 0.0);
  EXPECT_EQ(statistic({1, 2}, {}), 0.0);
  EXPECT_EQ(statistic({}, {}), 0.0);
}

} // namespace
