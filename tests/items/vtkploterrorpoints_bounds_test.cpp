#include "support/OpenErrorPoints.h"

#include <gmock/gmock.h>
#include <vtkTable.h>

#include <array>
#include <limits>

using testing::Each;
using testing::ElementsAre;

namespace runsieve::test {
namespace {

const double largest = std::numeric_limits<float>::max();
const double smallestPositive = std::numeric_limits<float>::min();
const double untouched = -77;

/// The bounds of the good points. Points and bad points are set by hand, so that bad ones can have values
/// that would show.
struct ErrorPointsBoundsTest : testing::Test
{
  vtkNew<OpenErrorPoints> plot;
  vtkNew<vtkTable> table;
  std::array<double, 4> bounds{untouched, untouched, untouched, untouched};

  void haveErrors()
  {
    table->AddColumn(makeFloats("error", {100}));
    table->AddColumn(makeFloats("x", {1}));
    plot->SetInputData(table, "x", "x");
    plot->SelectErrorArray("error");
    plot->UpdateErrorCache(table);
  }

  void calculate() { plot->CalculateBounds(bounds.data()); }

  /// With `count` points at (1, 1), (2, 2), ...; those in `outliers` are at (1000, 1000) times their row.
  void calculate(int count, std::vector<vtkIdType> const& bad, std::vector<vtkIdType> const& outliers)
  {
    haveErrors();
    std::vector<std::pair<float, float>> points;
    for (int i = 1; i <= count; ++i) points.emplace_back(i, i);
    for (vtkIdType row : outliers) points[row] = {1000.0f * row, 1000.0f * row};
    plot->setPoints(points);
    plot->setBadPoints(bad);
    calculate();
  }
};

TEST_F(ErrorPointsBoundsTest, StayAsTheyAreWithoutPoints)
{
  haveErrors();
  plot->setBadPoints({1});
  calculate();
  EXPECT_THAT(bounds, Each(untouched));
}

TEST_F(ErrorPointsBoundsTest, StayAsTheyAreWithoutAListOfBadPoints)
{
  haveErrors();
  plot->setPoints({{1, 2}, {3, 4}});
  calculate();
  EXPECT_THAT(bounds, Each(untouched));
}

TEST_F(ErrorPointsBoundsTest, StayAsTheyAreWithoutErrors)
{
  plot->setPoints({{1, 2}, {3, 4}});
  plot->setBadPoints({});
  calculate();
  EXPECT_THAT(bounds, Each(untouched));
}

TEST_F(ErrorPointsBoundsTest, AnEmptyListOfBadPointsLetsAllPointsIn)
{
  calculate(4, {}, {});
  EXPECT_THAT(bounds, ElementsAre(1, 4, 1, 4));
}

TEST_F(ErrorPointsBoundsTest, ErrorsDoNotWidenThem)
{
  haveErrors();
  plot->setPoints({{1, 10}, {2, 20}});
  plot->setBadPoints({});
  calculate();
  EXPECT_THAT(bounds, ElementsAre(1, 2, 10, 20));
}

TEST_F(ErrorPointsBoundsTest, NoPointAtAllGivesTheStartingValues)
{
  haveErrors();
  plot->setPoints({});
  plot->setBadPoints({});
  calculate();
  EXPECT_THAT(bounds, ElementsAre(largest, smallestPositive, largest, smallestPositive));
}

TEST_F(ErrorPointsBoundsTest, BadPointsAtTheBeginningAreLeftOut)
{
  calculate(5, {0, 1}, {1});
  EXPECT_THAT(bounds, ElementsAre(3, 5, 3, 5));
}

TEST_F(ErrorPointsBoundsTest, ABadPointInTheMiddleIsLeftOut)
{
  calculate(6, {3}, {3});
  EXPECT_THAT(bounds, ElementsAre(1, 6, 1, 6));
}

TEST_F(ErrorPointsBoundsTest, ABadPointAtTheEndIsLeftOut)
{
  calculate(5, {4}, {4});
  EXPECT_THAT(bounds, ElementsAre(1, 4, 1, 4));
}

TEST_F(ErrorPointsBoundsTest, BadPointsSideBySideAreLeftOut)
{
  calculate(7, {2, 3, 4}, {2, 3, 4});
  EXPECT_THAT(bounds, ElementsAre(1, 7, 1, 7));
}

TEST_F(ErrorPointsBoundsTest, ABadPointAfterOneAtTheBeginningIsLeftOut)
{
  calculate(5, {0, 3}, {3});
  EXPECT_THAT(bounds, ElementsAre(2, 5, 2, 5));
}

TEST_F(ErrorPointsBoundsTest, StayAsTheyAreWhenAllPointsAreBad)
{
  calculate(3, {0, 1, 2}, {});
  EXPECT_THAT(bounds, Each(untouched));
}

// After each stretch of good points one entry of the list is passed over.
TEST_F(ErrorPointsBoundsTest, OfTwoBadPointsApartTheSecondCounts)
{
  calculate(10, {3, 7}, {3, 7});
  EXPECT_THAT(bounds, ElementsAre(1, 7000, 1, 7000));
}

TEST_F(ErrorPointsBoundsTest, OfThreeBadPointsApartTheThirdIsLeftOutAgain)
{
  calculate(11, {2, 5, 8}, {2, 5, 8});
  EXPECT_THAT(bounds, ElementsAre(1, 5000, 1, 5000));
}

TEST_F(ErrorPointsBoundsTest, TheMaximumOfNegativeValuesIsTheSmallestPositiveFloat)
{
  haveErrors();
  plot->setPoints({{-3, -30}, {-2, -20}, {-1, -10}});
  plot->setBadPoints({});
  calculate();
  EXPECT_THAT(bounds, ElementsAre(-3, smallestPositive, -30, smallestPositive));
}

TEST_F(ErrorPointsBoundsTest, AValueThatLowersTheMinimumIsNotComparedWithTheMaximum)
{
  haveErrors();
  plot->setPoints({{3, 10}, {2, 30}, {1, 20}});
  plot->setBadPoints({});
  calculate();
  EXPECT_THAT(bounds, ElementsAre(1, smallestPositive, 10, 30));
}

} // namespace
} // namespace runsieve::test
