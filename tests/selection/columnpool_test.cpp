#include <runsieve/selection/ColumnPool.h>

#include <gtest/gtest.h>

#include <cstring>

namespace runsieve {
namespace {

TEST(ColumnPool, ServesAgainWhatWasGivenBack)
{
  ColumnPool::trim();
  void* block = ColumnPool::take(100000);
  std::memset(block, 1, 100000);
  ColumnPool::release(block);
  EXPECT_GE(ColumnPool::idleBytes(), 100000u);
  EXPECT_EQ(ColumnPool::take(90000), block);
  EXPECT_EQ(ColumnPool::idleBytes(), 0u);
  ColumnPool::release(block);
  ColumnPool::trim();
  EXPECT_EQ(ColumnPool::idleBytes(), 0u);
}

TEST(ColumnPool, KeepsALargeBlockForALargeColumn)
{
  ColumnPool::trim();
  void* large = ColumnPool::take(1000000);
  ColumnPool::release(large);
  void* small = ColumnPool::take(1000);
  EXPECT_NE(small, large);
  EXPECT_GE(ColumnPool::idleBytes(), 1000000u);
  ColumnPool::release(small);
  ColumnPool::trim();
}

TEST(ColumnPool, TakesNothingForNothing)
{
  ColumnPool::release(nullptr);
  void* empty = ColumnPool::take(0);
  EXPECT_NE(empty, nullptr);
  ColumnPool::release(empty);
  ColumnPool::trim();
}

} // namespace
} // namespace runsieve
