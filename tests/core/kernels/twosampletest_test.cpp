#include <runsieve/core/kernels/KolmogorovSmirnov.h>
#include <runsieve/core/kernels/TwoSampleTest.h>

#include <gtest/gtest.h>

#include <vector>

namespace runsieve::test {
namespace {

using Ks = KolmogorovSmirnov<double*, double*>;
using Values = std::vector<double>;

TEST(TwoSampleTestTest, TheStatisticIsThatOfTheWalk)
{
  Values a = {1, 2, 3, 7};
  Values b = {2.5, 4, 5};
  EXPECT_EQ(sortedStatistic(a.data(), 4, b.data(), 3),
            Ks::statistic(a.data(), a.data() + 4, b.data(), b.data() + 3));
}

TEST(TwoSampleTestTest, AnEmptySampleDiffersFromNone)
{
  const Values a = {1, 2};
  EXPECT_EQ(sortedStatistic(a.data(), 2, nullptr, 0), 0.0);
  EXPECT_EQ(sortedStatistic(nullptr, 0, a.data(), 2), 0.0);
}

TEST(TwoSampleTestTest, ThePValueIsThatOfTheEffectiveSize)
{
  EXPECT_EQ(testOf(0.4, 30, 70).p, Ks::p(0.4, 21));
  EXPECT_EQ(testOf(0.4, 30, 73).p, Ks::p(0.4, 21)) << "21.3, rounded down";
  EXPECT_EQ(testOf(0.4, 30, 70).d, 0.4);
}

TEST(TwoSampleTestTest, ThePValueIsAtMostOne)
{
  EXPECT_LE(testOf(0.01, 20, 20).p, 1.0);
  EXPECT_LE(testOf(0.0, 0, 0).p, 1.0);
  EXPECT_LE(testOf(0.0, 5, 0).p, 1.0);
}

} // namespace
} // namespace runsieve::test
