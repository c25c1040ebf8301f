#include <runsieve/core/kernels/RunGrid.h>

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

using Times = std::vector<double>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

RunGrid gridOf(Times const& times, long long stride)
{
  return {times.data(), static_cast<long long>(times.size()), stride};
}

TEST(RunGridTest, RunsWithTheTimesOfTheFirstAreOnIt)
{
  const RunGrid grid = gridOf({0, 1, 2, 0, 1, 3, 0, 1, 2}, 3);
  EXPECT_THAT(grid.times(), ElementsAre(0, 1, 2));
  EXPECT_TRUE(grid.holds(0));
  EXPECT_FALSE(grid.holds(1));
  EXPECT_TRUE(grid.holds(2));
  EXPECT_FALSE(grid.holdsAll());
}

TEST(RunGridTest, AShortLastRunIsOnItByTheTimesThatItHas)
{
  EXPECT_TRUE(gridOf({0, 1, 2, 0, 1}, 3).holdsAll());
  EXPECT_FALSE(gridOf({0, 1, 2, 0, 2}, 3).holds(1));
  EXPECT_TRUE(gridOf({0, 1}, 3).holdsAll()) << "the only run";
}

TEST(RunGridTest, NoRunIsOnAGridWithATimeThatIsNone)
{
  const RunGrid grid = gridOf({0, nan, 0, nan}, 2);
  EXPECT_FALSE(grid.holds(0));
  EXPECT_FALSE(grid.holds(1));
  EXPECT_FALSE(grid.holdsAll());
}

TEST(RunGridTest, GivesTheTimesOfRows)
{
  RowSpans rows;
  for (long long row : {1, 2, 3, 4, 6}) rows.append(row);
  Times out(5);
  gridOf({5, 6, 7, 5, 6, 7, 5}, 3).gather(runParts(rows, 3), out.data());
  EXPECT_THAT(out, ElementsAre(6, 7, 5, 6, 5));
}

} // namespace
} // namespace runsieve::test
