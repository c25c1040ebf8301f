#include <runsieve/core/inference/Box.h>
#include <runsieve/core/inference/BoxSurroundings.h>
#include <runsieve/core/inference/BoxTable.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace runsieve::test {

TEST(BoxLimit, isTheMiddleOfTheValuesOnItsSides)
{
  EXPECT_EQ(limitBetween(2.0, 3.0), 2.5);
  EXPECT_EQ(limitBetween(3.0, 2.0), 2.5);
  EXPECT_EQ(limitBetween(-1e308, 1.5e308), 0.25e308);
  EXPECT_EQ(limitBetween(1.7e308, 1.5e308), 1.6e308);
}

TEST(BoxLimit, isTheValueInsideWhereNothingLiesBetween)
{
  double const next = std::nextafter(1.0, 2.0);
  EXPECT_EQ(limitBetween(1.0, next), 1.0);
  EXPECT_EQ(limitBetween(next, 1.0), next);
  double const smallest = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(limitBetween(0.0, smallest), 0.0);
  EXPECT_EQ(limitBetween(smallest, 0.0), smallest);
}

TEST(BoxLimit, isTheValueInsideBesideAnInfiniteOne)
{
  EXPECT_EQ(limitBetween(5.0, INFINITE), 5.0);
  EXPECT_EQ(limitBetween(INFINITE, 5.0), INFINITE);
  EXPECT_EQ(limitBetween(-INFINITE, 5.0), -INFINITE);
  EXPECT_EQ(limitBetween(5.0, -INFINITE), 5.0);
  EXPECT_EQ(limitBetween(INFINITE, -INFINITE), INFINITE);
  EXPECT_EQ(limitBetween(-INFINITE, INFINITE), -INFINITE);
}

TEST(Box, holdsRunsInAllOfItsRanges)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 2, MISSING}, {0, 1, 2, MISSING, 1}};
  scan.categories = {0, 3};
  scan.passing = {1, 1, 1, 0, 0};
  BoxTable const table = scan.table();
  Box const box{{numbersIn(0, 1.5, 3.0), categoriesOf(1, {0, 1, 1})}};
  EXPECT_FALSE(table.holds(box, 0));
  EXPECT_TRUE(table.holds(box, 1));
  EXPECT_TRUE(table.holds(box, 2));
  EXPECT_FALSE(table.holds(box, 3)); // no value of a restricted parameter
  EXPECT_FALSE(table.holds(box, 4));
  EXPECT_TRUE(table.holds({}, 4));
  BoxMeasures const measures = measure(table, scan.sample(), box);
  EXPECT_EQ(measures.coverage(), 2.0 / 3.0);
  EXPECT_EQ(measures.density(), 1.0);
  EXPECT_EQ(measures.mass(), 0.4);
}

TEST(Box, knowsTheRunsThatOneRangeAloneKeepsOut)
{
  BoxScan scan;
  scan.columns = {{0, 1, 1, 0}, {1, 0, 1, 0}};
  scan.passing = {1, 0, 1, 1};
  BoxSurroundings const around =
      surroundingsOf(scan.table(), scan.sample(), Box{{numbersIn(0, 0.5, 2.0), numbersIn(1, 0.5, 2.0)}});
  EXPECT_EQ(around.inside, (BoxTally{1, 1}));
  EXPECT_EQ(around.near, (std::vector<unsigned char>{BoxSample::PASSING, BoxSample::OTHER, 0, 0}));
}

TEST(Box, keepsItsRangesInTheOrderOfParametersAndDropsFreeOnes)
{
  Box box;
  box.range(4, 0).low = 1.0;
  box.range(2, 3).kept[1] = 0;
  box.range(3, 0);
  EXPECT_EQ(box.range(4, 0).low, 1.0);
  box.dropFreeRanges();
  EXPECT_EQ(box, (Box{{categoriesOf(2, {1, 0, 1}), numbersIn(4, 1.0, INFINITE)}}));
}

TEST(Box, hasNoMeasuresWhereThereIsNothingToMeasure)
{
  BoxMeasures const none;
  EXPECT_TRUE(std::isnan(none.coverage()));
  EXPECT_TRUE(std::isnan(none.density()));
  EXPECT_TRUE(std::isnan(none.mass()));
}

TEST(BoxSample, countsOnlyRunsThatTakePart)
{
  unsigned char const passing[] = {1, 0, 7, 1};
  unsigned char const eligible[] = {1, 1, 1, 0};
  EXPECT_EQ(BoxSample(passing, 4).all(), (BoxTally{4, 3}));
  EXPECT_EQ(BoxSample(passing, 4, eligible).all(), (BoxTally{3, 2}));
}

TEST(BoxSample, mustBeOfTheRunsOfTheTable)
{
  unsigned char const passing[] = {1, 0};
  EXPECT_THROW(checkSizes(BoxTable(3), BoxSample(passing, 2)), std::invalid_argument);
}

TEST(BoxTable, refusesValuesThatAreNoCategories)
{
  for (double const wrong : {-1.0, 0.5, 3.0, 1e300, INFINITE, -INFINITE}) {
    double const values[] = {0.0, wrong};
    BoxTable table(2);
    EXPECT_THROW(table.addCategories(values, 3), std::invalid_argument) << wrong;
  }
}

TEST(BoxTable, refusesATextParameterOfNoOrOfTooManyCategories)
{
  double const values[] = {0.0, MISSING};
  BoxTable table(2);
  EXPECT_THROW(table.addCategories(values, 0), std::invalid_argument);
  EXPECT_THROW(table.addCategories(values, BoxTable::MOST_CATEGORIES + 1), std::invalid_argument);
  table.addCategories(values, BoxTable::MOST_CATEGORIES);
  EXPECT_EQ(table.columns().size(), 1u);
}

TEST(BoxTable, refusesMoreRunsThanCanBeCounted)
{
  EXPECT_THROW(BoxTable(std::size_t{1} << 31), std::invalid_argument);
}

} // namespace runsieve::test
