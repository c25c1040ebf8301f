#include <runsieve/core/inference/Quantile.h>

#include <gtest/gtest.h>

namespace runsieve::test {

TEST(Quantile, liesBetweenNeighboursInProportion)
{
  // R: quantile(c(1, 2, 4, 8), c(0, .25, .5, .6, .75, 1), type = 7)
  const std::vector<double> sample = {1, 2, 4, 8};
  EXPECT_DOUBLE_EQ(quantileOf(sample, 0.0), 1.0);
  EXPECT_DOUBLE_EQ(quantileOf(sample, 0.25), 1.75);
  EXPECT_DOUBLE_EQ(quantileOf(sample, 0.5), 3.0);
  EXPECT_DOUBLE_EQ(quantileOf(sample, 0.6), 3.6);
  EXPECT_DOUBLE_EQ(quantileOf(sample, 0.75), 5.0);
  EXPECT_DOUBLE_EQ(quantileOf(sample, 1.0), 8.0);
}

TEST(Quantile, ofOneValueIsThatValue)
{
  for (double const share : {0.0, 0.3, 1.0}) EXPECT_EQ(quantileOf({7.0}, share), 7.0);
}

TEST(Quantile, ofEqualValuesIsThatValue)
{
  for (double const share : {0.0, 0.3, 1.0}) EXPECT_EQ(quantileOf({0.1, 0.1, 0.1}, share), 0.1);
}

} // namespace runsieve::test
