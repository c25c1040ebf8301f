#include "support/PlotParts.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/PlotMetaData.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Six parameters, of which 1 and 4 differ.
struct ShownParameters : testing::Test
{
  PlotContainer plot{nullptr};

  ShownParameters()
  {
    plot.metaData->parameterColumns = {10, 11, 12, 13, 14, 15};
    plot.ksStatistics = {{1, 0.1}, {0.01, 0.3}, {1, 0.1}, {1, 0.1}, {0.001, 0.6}, {1, 0.1}};
  }
};

TEST_F(ShownParameters, AreThoseThatDifferAndFillersInTheOrderOfTheColumns)
{
  EXPECT_THAT(plot.shownParameters(), ElementsAre(1, 4, 0, 2));
}

TEST_F(ShownParameters, TakeTheOrderOfAHost)
{
  plot.parameterOrder = {5, 4, 3, 2, 1, 0};
  EXPECT_THAT(plot.shownParameters(), ElementsAre(5, 4, 3, 1));
}

TEST_F(ShownParameters, ThatAHostLeavesOutFollow)
{
  plot.parameterOrder = {4, 3};
  EXPECT_THAT(plot.shownParameters(), ElementsAre(4, 3, 0, 1));
}

TEST_F(ShownParameters, PassOverWhatIsNoPosition)
{
  plot.parameterOrder = {-1, 6, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 4, 4};
  EXPECT_THAT(plot.shownParameters(), ElementsAre(4, 0, 1, 2));
}

TEST_F(ShownParameters, WithoutStatisticsFillARowInTheOrder)
{
  plot.ksStatistics.clear();
  EXPECT_THAT(plot.shownParameters(), ElementsAre(0, 1, 2, 3));
  plot.parameterOrder = {3, 5};
  EXPECT_THAT(plot.shownParameters(), ElementsAre(3, 5, 0, 1));
}

TEST_F(ShownParameters, AreNoneWithoutParameters)
{
  plot.metaData->parameterColumns.clear();
  EXPECT_THAT(plot.shownParameters(), IsEmpty());
}

TEST_F(ShownParameters, OfACopyHaveTheOrderOfTheFirst)
{
  plot.parameterOrder = {5, 4};
  EXPECT_THAT(PlotContainer(plot).parameterOrder, ElementsAre(5, 4));
}

} // namespace
} // namespace runsieve::test
