#include "support/TableBuilder.h"

#include <runsieve/selection/RunIndex.h>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

/// Orders of runs, kept by the columns that they are made of.
struct RunIndexTest : testing::Test
{
  RunIndex index;
  vtkSmartPointer<vtkDoubleArray> column = makeColumn("k1", std::vector<double>{3, 3, 1, 1, 2, 2});
};

TEST_F(RunIndexTest, AnOrderIsMadeOnce)
{
  auto const* first = index.order(column, 2);
  ASSERT_TRUE(first);
  EXPECT_THAT(first->sorted(), ElementsAre(1, 2, 3));
  double const* kept = first->sorted().data();
  EXPECT_EQ(index.order(column, 2)->sorted().data(), kept);
}

TEST_F(RunIndexTest, ValuesAndGridOfAColumnAreFoundOnce)
{
  EXPECT_THAT(index.values(column, 2)->values(), ElementsAre(3, 1, 2));
  EXPECT_TRUE(index.values(column, 2)->constantWithinRuns());
  EXPECT_FALSE(index.values(column, 3)->constantWithinRuns());
  EXPECT_THAT(index.grid(column, 2)->times(), ElementsAre(3, 3));
  double const* kept = index.values(column, 2)->values().data();
  EXPECT_TRUE(index.grid(column, 2));
  EXPECT_TRUE(index.order(column, 2));
  EXPECT_EQ(index.values(column, 2)->values().data(), kept);
}

TEST_F(RunIndexTest, AColumnWrittenInPlaceIsTheSameUntilItSaysSo)
{
  index.order(column, 2);
  column->SetValue(0, 9.0);
  EXPECT_THAT(index.values(column, 2)->values(), ElementsAre(3, 1, 2));
  column->Modified();
  EXPECT_THAT(index.values(column, 2)->values(), ElementsAre(9, 1, 2));
  EXPECT_FALSE(index.values(column, 2)->constantWithinRuns());
  EXPECT_THAT(index.grid(column, 2)->times(), ElementsAre(9, 3));
}

TEST_F(RunIndexTest, AModifiedColumnIsReadAnew)
{
  index.order(column, 2);
  column->SetValue(0, 9.0);
  column->Modified();
  EXPECT_THAT(index.order(column, 2)->sorted(), ElementsAre(1, 2, 9));
}

TEST_F(RunIndexTest, AColumnOfOtherRowsOrRunsIsReadAnew)
{
  index.order(column, 2);
  EXPECT_THAT(index.order(column, 3)->sorted(), ElementsAre(1, 3));
  column->SetNumberOfTuples(4); // VTK does not count this as a modification
  EXPECT_THAT(index.order(column, 2)->sorted(), ElementsAre(1, 3));
}

TEST_F(RunIndexTest, AColumnWithOtherMemoryIsReadAnew)
{
  index.order(column, 2);
  std::vector<double> other{5, 5, 4, 4, 6, 6};
  column->SetArray(other.data(), 6, 1);
  EXPECT_THAT(index.order(column, 2)->sorted(), ElementsAre(4, 5, 6));
}

TEST_F(RunIndexTest, AColumnWithoutRowsHasNoOrder)
{
  const auto empty = vtkSmartPointer<vtkDoubleArray>::New();
  EXPECT_FALSE(index.order(empty, 2));
  EXPECT_FALSE(index.values(empty, 2));
  EXPECT_FALSE(index.grid(empty, 2));
}

TEST_F(RunIndexTest, TheOrderByADeletedColumnGoes)
{
  index.order(column, 2);
  for (int round = 0; round < 5; ++round) index.order(makeColumn("k2", std::vector<double>{1, 2}), 1);
  index.order(column, 2);
  EXPECT_EQ(index.size(), 1u);
}

TEST_F(RunIndexTest, TheOrderByAColumnThatTheTableHasDroppedGoes)
{
  auto table = makeTable({{"k1", {1, 2}}, {"k2", {2, 1}}});
  for (const char* name : {"k1", "k2"})
    index.order(vtkDoubleArray::SafeDownCast(table->GetColumnByName(name)), 1);
  table->RemoveColumnByName("k1");
  EXPECT_THAT(index.order(vtkDoubleArray::SafeDownCast(table->GetColumn(0)), 1)->sorted(), ElementsAre(1, 2));
  EXPECT_EQ(index.size(), 1u);
}

TEST_F(RunIndexTest, ClearedItHoldsNothing)
{
  index.order(column, 2);
  index.clear();
  EXPECT_EQ(index.size(), 0u);
}

} // namespace
} // namespace runsieve::test
