#include <runsieve/core/kernels/RunValues.h>

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

using Values = std::vector<double>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

RunValues valuesOf(Values const& column, long long stride)
{
  return {column.data(), static_cast<long long>(column.size()), stride};
}

TEST(RunValuesTest, AreThoseOfTheFirstRows)
{
  EXPECT_THAT(valuesOf({4, 5, 2, 2, 4, 4, 1}, 2).values(), ElementsAre(4, 2, 4, 1));
}

TEST(RunValuesTest, TellWhetherEveryRunHasOneValue)
{
  EXPECT_TRUE(valuesOf({4, 4, 2, 2, nan, nan, 1}, 2).constantWithinRuns());
  EXPECT_FALSE(valuesOf({4, 4, 2, 3}, 2).constantWithinRuns());
  EXPECT_FALSE(valuesOf({4, 4, 2, 2, 1, 1, 1, 0}, 4).constantWithinRuns());
  EXPECT_FALSE(valuesOf({0.0, -0.0}, 2).constantWithinRuns()) << "by bits";
}

TEST(RunValuesTest, GiveTheRowsOfTheColumn)
{
  RowSpans rows;
  for (long long row : {1, 2, 3, 4, 6}) rows.append(row);
  Values out(5);
  valuesOf({4, 4, 2, 2, 7, 7, 9}, 2).gather(runParts(rows, 2), out.data());
  EXPECT_THAT(out, ElementsAre(4, 2, 2, 7, 9));
}

} // namespace
} // namespace runsieve::test
