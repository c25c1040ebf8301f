#include <runsieve/core/inference/CategoryComparison.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace runsieve::test {

namespace {

using Categories = std::vector<std::int32_t>;
using Mask = std::vector<std::uint8_t>;

CategoryComparison compare(Categories const& categories, Mask const& passes, std::size_t count)
{
  return compareCategories(categories.data(), passes.data(), categories.size(), count);
}

} // namespace

TEST(CategoryComparison, findsTheCategoryWhoseSharesDifferMost)
{
  // Shares of the passing 0, 1/2, 1/2; of the others 3/4, 1/4, 0.
  CategoryComparison const found = compare({1, 2, 0, 0, 0, 1}, {1, 1, 0, 0, 0, 0}, 3);
  EXPECT_EQ(found.passing, 2u);
  EXPECT_EQ(found.others, 4u);
  EXPECT_EQ(found.category, 0);
  EXPECT_EQ(found.difference, -6);
  EXPECT_EQ(found.d, -0.75);
}

TEST(CategoryComparison, isPositiveWhereThePassingHaveTheLargerShare)
{
  CategoryComparison const found = compare({0, 1, 1, 2}, {0, 1, 1, 0}, 3);
  EXPECT_EQ(found.category, 1);
  EXPECT_EQ(found.d, 1.0);
}

TEST(CategoryComparison, namesTheFirstOfSeveral)
{
  CategoryComparison const found = compare({0, 1}, {0, 1}, 2);
  EXPECT_EQ(found.category, 0);
  EXPECT_EQ(found.d, -1.0);
}

TEST(CategoryComparison, leavesOutRunsWithoutACategory)
{
  CategoryComparison const found = compare({-1, 0, 1, 2, -2147483647 - 1}, {1, 1, 0, 1, 0}, 2);
  EXPECT_EQ(found.passing, 1u);
  EXPECT_EQ(found.others, 1u);
  EXPECT_EQ(found.d, 1.0);
}

TEST(CategoryComparison, ofEqualSharesIsZeroAndStandsNowhere)
{
  CategoryComparison const found = compare({0, 0, 1, 1, 0, 1}, {1, 0, 1, 0, 0, 0}, 2);
  EXPECT_EQ(found.d, 0.0);
  EXPECT_EQ(found.category, -1);
  EXPECT_EQ(compare({0, 0, 0}, {1, 0, 0}, 1).d, 0.0);
}

TEST(CategoryComparison, isUndefinedIfASideIsEmpty)
{
  for (Mask const& passes : {Mask{1, 1}, Mask{0, 0}}) {
    CategoryComparison const found = compare({0, 1}, passes, 2);
    EXPECT_TRUE(std::isnan(found.d));
    EXPECT_EQ(found.difference, 0);
    EXPECT_EQ(found.category, -1);
  }
  EXPECT_TRUE(std::isnan(compare({}, {}, 0).d));
  EXPECT_TRUE(std::isnan(compare({0}, {1}, 0).d));
}

} // namespace runsieve::test
