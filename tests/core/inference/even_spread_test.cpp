#include <runsieve/core/inference/EvenSpread.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::test {

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();

/// One value in each of n strata, at places that are repeated.
std::vector<double> inStrata(std::vector<double> const& places, std::size_t n)
{
  std::vector<double> values;
  for (std::size_t k = 0; k < n; ++k) values.push_back(static_cast<double>(k) + places[k % places.size()]);
  return values;
}

} // namespace

TEST(Unevenness, isAtMostZeroForOneValueInEachStratum)
{
  EXPECT_LE(unevenness(inStrata({0.5}, 50)), 0.0);
  EXPECT_LE(unevenness(inStrata({0.1, 0.9, 0.4, 0.7, 0.2}, 50)), 0.0);
}

TEST(Unevenness, ofEqualStepsIsHalfAStratumBelow)
{
  EXPECT_NEAR(unevenness(inStrata({0.0}, 100)), -0.5, 1e-6);
}

TEST(Unevenness, doesNotDependOnStartAndUnit)
{
  std::vector<double> values = inStrata({0.1, 0.9, 0.4}, 40);
  const double plain = unevenness(values);
  for (double& value : values) value = 1e-3 * value - 7.0;
  EXPECT_NEAR(unevenness(values), plain, 1e-9);
}

TEST(Unevenness, growsByAsMuchAsOneValueLeavesItsStratum)
{
  std::vector<double> values = inStrata({0.5}, 101);
  for (std::size_t k = 50; k < values.size(); ++k) values[k] += 3.0; // half of them, three strata too far
  EXPECT_GT(unevenness(values), 0.0);
  EXPECT_LT(unevenness(values), 3.0);
}

TEST(Unevenness, ofDrawsIsAboutTheRootOfTheirNumber)
{
  double sum = 0.0;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    std::vector<double> drawn = uniformColumns(1, 400, seed)[0];
    std::sort(drawn.begin(), drawn.end());
    sum += unevenness(drawn) / std::sqrt(400.0);
  }
  EXPECT_GT(sum / 50.0, 0.4);
  EXPECT_LT(sum / 50.0, 1.2);
}

TEST(Unevenness, isInfiniteWithoutARange)
{
  EXPECT_EQ(unevenness({}), INFINITE);
  EXPECT_EQ(unevenness({1.0}), INFINITE);
  EXPECT_EQ(unevenness({2.0, 2.0, 2.0}), INFINITE);
  EXPECT_EQ(unevenness({-INFINITE, 0.0, 1.0}), INFINITE);
  EXPECT_EQ(unevenness({-1.7e308, 0.0, 1.7e308}), INFINITE) << "its width is no number";
}

} // namespace runsieve::test
