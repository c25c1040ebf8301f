#include <runsieve/core/inference/OrderedValues.h>

#include <gtest/gtest.h>

#include <limits>

namespace runsieve::test {

namespace {

using Places = std::vector<std::uint32_t>;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

} // namespace

TEST(OrderedValues, areAscendingWithEqualOnesInAGroup)
{
  double const values[] = {3, 1, 3, 2, 1};
  OrderedValues const ordered = orderedValues(values, 5);
  EXPECT_EQ(ordered.order, (Places{1, 4, 3, 0, 2}));
  EXPECT_EQ(ordered.groupEnds, (Places{2, 3, 5}));
  EXPECT_TRUE(ordered.tied());
}

TEST(OrderedValues, leaveOutRunsWithoutAValue)
{
  double const values[] = {NOT_A_NUMBER, 5, NOT_A_NUMBER, -INFINITE, INFINITE};
  OrderedValues const ordered = orderedValues(values, 5);
  EXPECT_EQ(ordered.order, (Places{3, 1, 4}));
  EXPECT_EQ(ordered.groupEnds, (Places{1, 2, 3}));
  EXPECT_FALSE(ordered.tied());
}

TEST(OrderedValues, ofBothZerosAreOneGroup)
{
  double const values[] = {0.0, -0.0, 1.0};
  EXPECT_EQ(orderedValues(values, 3).groupEnds, (Places{2, 3}));
}

TEST(OrderedValues, ofNoRunsAreEmpty)
{
  EXPECT_TRUE(orderedValues(nullptr, 0).order.empty());
  EXPECT_TRUE(orderedValues(nullptr, 0).groupEnds.empty());
}

} // namespace runsieve::test
