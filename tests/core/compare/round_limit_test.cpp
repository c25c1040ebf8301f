#include <runsieve/core/compare/RoundLimit.h>

#include <runsieve/core/inference/RandomStream.h>
#include <runsieve/core/text/Decimal.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(RoundLimit, HasAsFewDigitsAsTellTheValuesApart)
{
  EXPECT_EQ(roundLimit({0.1234, 0.4567}, 0.29005, true), 0.3);
  EXPECT_EQ(roundLimit({0.2911, 0.2899}, 0.2905, true), 0.29) << "0.3 would lie above both";
  EXPECT_EQ(roundLimit({123456.0, 123458.0}, 123457.0, false), 123457.0);
  EXPECT_EQ(roundLimit({-5.4e-8, 7.1e-8}, 8.5e-9, true), 9e-9);
}

TEST(RoundLimit, StaysOnTheSideOfAValueThatIsALimitItself)
{
  EXPECT_EQ(roundLimit({1.0, 1.25, 2.0}, 1.25, true), 1.2);
  EXPECT_EQ(roundLimit({1.0, 1.24, 2.0}, 1.24, false), 1.24) << "1.2 would leave it out";
  EXPECT_EQ(roundLimit({1.0, 1.26, 2.0}, 1.26, false), 1.3);
  double const next = std::nextafter(1.0, 2.0);
  EXPECT_EQ(roundLimit({1.0, next}, next, true), next);
  EXPECT_EQ(roundLimit({1.0, next}, 1.0, false), 1.0);
}

TEST(RoundLimit, MissingAndInfiniteValuesDoNotMatter)
{
  EXPECT_EQ(roundLimit({nan, -infinity, 2.0, infinity}, 1.9, true), 2.0);
  EXPECT_EQ(roundLimit({}, 1.26, true), 1.0);
}

TEST(RoundLimit, IsNoMinusZero)
{
  EXPECT_FALSE(std::signbit(roundLimit({-1.0, 1.0}, -0.0, true)));
}

TEST(RoundLimit, SurvivesTheLargestNumbers)
{
  constexpr double most = std::numeric_limits<double>::max();
  EXPECT_EQ(roundLimit({most, 0.9 * most}, most, true), most);
  double const high = roundLimit({0.5 * most, most}, 0.75 * most, false);
  EXPECT_TRUE(high >= 0.5 * most && high < most) << high;
}

TEST(RoundLimit, SeparatesTheSameValues)
{
  RandomStream random(3, 0);
  for (int round = 0; round < 2000; ++round) {
    std::vector<double> values(1 + random.below(20));
    double const scale = std::pow(10.0, static_cast<double>(random.below(60)) - 30.0);
    for (double& value : values) value = scale * (static_cast<double>(random.below(1000)) - 500.0) / 7.0;
    double const limit = scale * (static_cast<double>(random.below(7000)) - 3500.0) / 49.0;
    for (bool const isLow : {true, false}) {
      double const rounded = roundLimit(values, limit, isLow);
      EXPECT_LE(decimal(rounded).size(), std::max<std::size_t>(decimal(limit).size(), 5));
      for (double const value : values)
        EXPECT_EQ(isLow ? value >= rounded : value <= rounded, isLow ? value >= limit : value <= limit)
            << value << ' ' << limit << ' ' << rounded;
    }
  }
}

} // namespace
} // namespace runsieve::test
