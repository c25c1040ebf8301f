#include <runsieve/core/inference/BoxPasting.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

namespace runsieve::test {

TEST(Pasting, widensABoxUpToTheRunsThatDoNotPass)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4, 5, 6, 7, 8}};
  scan.passing = {0, 1, 1, 1, 1, 1, 0, 1};
  Box const box{{numbersIn(0, 3.5, 4.5)}};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), box), (Box{{numbersIn(0, 1.5, 6.5)}}));
}

TEST(Pasting, opensALimitWithNothingBehindIt)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4}};
  scan.passing = {1, 1, 0, 0};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), Box{{numbersIn(0, 1.5, 2.5)}}),
            (Box{{numbersIn(0, -INFINITE, 2.5)}}));
}

TEST(Pasting, takesBackACategory)
{
  BoxScan scan;
  scan.columns = {{0, 0, 1, 1, 2, 2}};
  scan.categories = {3};
  scan.passing = {1, 1, 1, 1, 0, 1};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), Box{{categoriesOf(0, {0, 1, 0})}}),
            (Box{{categoriesOf(0, {1, 1, 0})}}));
}

TEST(Pasting, countsRunsWithoutAValueWhenAParameterBecomesFree)
{
  BoxScan scan;
  scan.columns = {{1, 2, MISSING, MISSING}};
  scan.passing = {1, 1, 0, 0};
  Box const box{{numbersIn(0, 1.5, INFINITE)}};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), box), box);
  scan.passing = {1, 1, 1, 1};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), box), Box{});
}

TEST(Pasting, takesTiesWhole)
{
  BoxScan scan;
  scan.columns = {{1, 2, 2, 2, 3, 4}};
  scan.passing = {1, 1, 0, 0, 1, 1};
  Box const box{{numbersIn(0, 2.5, INFINITE)}};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), box), box);
}

TEST(Pasting, neverMakesABoxSmallerOrLessDense)
{
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    BoxScan scan = uniformScan(300, 4, seed);
    RandomStream random(seed, 50);
    letPass(scan, [&](std::size_t run) {
      return (scan.columns[0][run] < 0.5 && scan.columns[1][run] > 0.4) != (random.below(8) == 0);
    });
    BoxTable const table = scan.table();
    BoxPath const path = *findBoxPath(table, scan.sample());
    for (std::size_t step = 0; step < path.steps.size(); step += 5) {
      Box const box = *pasted(table, scan.sample(), path.box(step));
      BoxMeasures const measures = measure(table, scan.sample(), box);
      EXPECT_GE(measures.density(), path.measures(step).density());
      EXPECT_GE(measures.coverage(), path.measures(step).coverage());
      for (std::size_t run = 0; run < 300; ++run)
        EXPECT_LE(table.holds(path.box(step), run), table.holds(box, run));
    }
  }
}

TEST(Pasting, leavesAnEmptyBoxAndABoxWithoutPassingRunsAsTheyAre)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3}};
  scan.passing = {0, 0, 0};
  Box const box{{numbersIn(0, 1.5, 2.5)}};
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), box), box);
  EXPECT_EQ(*pasted(scan.table(), scan.sample(), {}), Box{});
}

TEST(Pasting, stopsWhenAsked)
{
  BoxScan scan = uniformScan(10, 1, 1);
  EXPECT_FALSE(pasted(scan.table(), scan.sample(), {}, {}, [] { return true; }));
}

} // namespace runsieve::test
