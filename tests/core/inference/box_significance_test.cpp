#include <runsieve/core/inference/BinomialTail.h>
#include <runsieve/core/inference/BoxSignificance.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {

TEST(QuasiP, isTheTailAtTheDensityWithoutTheLimit)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4, 5, 6, 7, 8, 9, MISSING}};
  scan.passing = {0, 0, 0, 1, 1, 0, 0, 1, 0, 1};
  auto const p = quasiP(scan.table(), scan.sample(), Box{{numbersIn(0, 3.5, 6.5)}});
  ASSERT_EQ(p.size(), 1u);
  EXPECT_DOUBLE_EQ(p[0].low, binomialUpperTail(2, 3, 2.0 / 6.0));
  EXPECT_DOUBLE_EQ(p[0].high, binomialUpperTail(2, 3, 3.0 / 6.0));
  EXPECT_DOUBLE_EQ(p[0].range, binomialUpperTail(2, 3, 4.0 / 10.0)); // with the run that has no value
}

TEST(QuasiP, ofTheOnlyLimitIsThatOfTheRange)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, MISSING}};
  scan.passing = {0, 1, 1, 0};
  auto const p = quasiP(scan.table(), scan.sample(), Box{{numbersIn(0, 1.5, INFINITE)}});
  EXPECT_EQ(p[0].low, 0.25);
  EXPECT_EQ(p[0].range, 0.25);
  EXPECT_TRUE(std::isnan(p[0].high));
}

TEST(QuasiP, ofCategoriesIsThatOfTheRange)
{
  BoxScan scan;
  scan.columns = {{0, 1, 1, 0}};
  scan.categories = {2};
  scan.passing = {0, 1, 1, 0};
  auto const p = quasiP(scan.table(), scan.sample(), Box{{categoriesOf(0, {0, 1})}});
  EXPECT_EQ(p[0].range, 0.25);
  EXPECT_TRUE(std::isnan(p[0].low) && std::isnan(p[0].high));
}

TEST(QuasiP, ofAnEmptyBoxIsOne)
{
  BoxScan scan;
  scan.columns = {{1, 2}};
  scan.passing = {0, 1};
  auto const p = quasiP(scan.table(), scan.sample(), Box{{numbersIn(0, 5.0, INFINITE)}});
  EXPECT_EQ(p[0].low, 1.0);
  EXPECT_TRUE(quasiP(scan.table(), scan.sample(), Box{}).empty());
}

TEST(SignificantLimits, dropOneOfChanceAndKeepThoseThatMatter)
{
  BoxScan scan = uniformScan(1000, 3, 4);
  letPass(scan, [&](std::size_t run) { return scan.columns[0][run] < 0.5 && scan.columns[1][run] > 0.5; });
  Box const good{{numbersIn(0, -INFINITE, 0.5), numbersIn(1, 0.5, INFINITE)}};
  Box const box{{numbersIn(0, 0.01, 0.5), numbersIn(1, 0.5, INFINITE), numbersIn(2, -INFINITE, 0.95)}};
  EXPECT_EQ(significantLimits(scan.table(), scan.sample(), box), good);
}

TEST(SignificantLimits, dropOneThatKeepsNoRunOutWhateverTheCut)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4}};
  scan.passing = {0, 0, 1, 1};
  Box const box{{numbersIn(0, 2.5, 9.0)}};
  EXPECT_EQ(significantLimits(scan.table(), scan.sample(), box, 1.0), (Box{{numbersIn(0, 2.5, INFINITE)}}));
}

TEST(SignificantLimits, keepAllThatKeepRunsOutAtACutOfOne)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4}};
  scan.passing = {1, 1, 0, 0};
  Box const box{{numbersIn(0, 2.5, INFINITE)}};
  EXPECT_EQ(significantLimits(scan.table(), scan.sample(), box, 1.0), box);
  EXPECT_EQ(significantLimits(scan.table(), scan.sample(), box), Box{});
}

TEST(SignificantLimits, ofTwoLimitsThatKeepTheSameRunsOutLeaveOne)
{
  BoxScan scan = uniformScan(400, 1, 6);
  scan.columns.push_back(scan.columns[0]);
  letPass(scan, [&](std::size_t run) { return scan.columns[0][run] < 0.3; });
  Box const box{{numbersIn(0, -INFINITE, 0.3), numbersIn(1, -INFINITE, 0.3)}};
  EXPECT_EQ(significantLimits(scan.table(), scan.sample(), box), (Box{{numbersIn(1, -INFINITE, 0.3)}}));
}

} // namespace runsieve::test
