#include <runsieve/core/inference/NoiseFloor.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace runsieve::test {

namespace {

/// p of a permutation test whose permutations had these maxima.
double pOf(std::vector<double> const& maxima, double statistic)
{
  const auto reached =
      std::count_if(maxima.begin(), maxima.end(), [statistic](double m) { return m >= statistic; });
  return (1.0 + static_cast<double>(reached)) / (1.0 + static_cast<double>(maxima.size()));
}

} // namespace

TEST(NoiseFloor, isExceededExactlyWherePIsAtMostTheLevel)
{
  for (std::size_t size : {19, 20, 39, 100, 199}) {
    std::vector<double> maxima;
    for (std::size_t b = 0; b < size; ++b) maxima.push_back(static_cast<double>(b * 7 % size)); // any order
    for (double const level : {0.05, 0.1, 0.2, 0.5})
      for (double statistic = -0.5; statistic < static_cast<double>(size) + 1.0; statistic += 0.5)
        EXPECT_EQ(statistic > noiseFloorOf(maxima, level), pOf(maxima, statistic) <= level + 1e-12)
            << size << ' ' << level << ' ' << statistic;
  }
}

TEST(NoiseFloor, isOneOfTiedMaxima)
{
  EXPECT_EQ(noiseFloorOf(std::vector<double>(99, 0.25), 0.05), 0.25);
}

TEST(NoiseFloor, isInfiniteIfNoPCanReachTheLevel)
{
  EXPECT_TRUE(std::isinf(noiseFloorOf(std::vector<double>(18, 1.0), 0.05)));
  EXPECT_TRUE(std::isinf(noiseFloorOf({}, 0.05)));
  EXPECT_GT(noiseFloorOf(std::vector<double>(1000, 1.0), 0.0), 0.0) << "p is above 0";
  EXPECT_FALSE(std::isinf(noiseFloorOf(std::vector<double>(19, 1.0), 0.05)));
}

TEST(NoiseFloor, isBelowEverythingAtALevelOf1)
{
  EXPECT_LT(noiseFloorOf({0.0, 0.0}, 1.0), -1e300);
}

} // namespace runsieve::test
