#include "app/view/RankTable.h"

#include "app/view/ScanPlot.h"
#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A plot of seven runs with five parameters, of which the first three runs pass.
struct RankTableTest : testing::Test, PlotScene
{
  RankTableTest()
  {
    ScanShape shape;
    shape.runs = 7;
    shape.times = 2;
    shape.parameters = 5;
    shape.parameter = [](int p, int r) { return 100.0 * p + r * r; };
    app::showScan(container, makeScan(shape), {});
    app::selectRows(container, {0, 2, 4});
  }

  std::vector<std::string> names()
  {
    std::vector<std::string> found;
    for (app::RankedParameter const& ranked : app::rankedParameters(container)) found.push_back(ranked.name);
    return found;
  }

  std::vector<bool> significant()
  {
    std::vector<bool> found;
    for (app::RankedParameter const& ranked : app::rankedParameters(container))
      found.push_back(ranked.significant);
    return found;
  }
};

TEST_F(RankTableTest, ParametersOfEqualPAreOrderedByD)
{
  container.ksStatistics = {{0.01, 0.3}, {0.01, 0.5}, {0.01, 0.2}, {0.01, 0.9}, {0.001, 0.15}};
  EXPECT_THAT(names(), ElementsAre("k5", "k4", "k2", "k1", "k3"));
  container.ksStatistics = {{1.0, 0.3}, {1.0, 0.5}, {1.0, 0.2}, {1.0, 0.9}, {1.0, 0.15}};
  EXPECT_THAT(names(), ElementsAre("k4", "k2", "k1", "k3", "k5")) << "the same among those that don't differ";
}

TEST_F(RankTableTest, EqualParametersKeepTheirOrder)
{
  container.ksStatistics.assign(5, {0.01, 0.3});
  EXPECT_THAT(names(), ElementsAre("k1", "k2", "k3", "k4", "k5"));
}

TEST_F(RankTableTest, SignificantParametersComeFirst)
{
  // k3 has the least p, but too small a d.
  container.ksStatistics = {{0.04, 0.3}, {0.06, 0.5}, {0.001, 0.05}, {0.03, 0.4}, {0.5, 0.2}};
  EXPECT_THAT(names(), ElementsAre("k4", "k1", "k3", "k2", "k5"));
  EXPECT_THAT(significant(), ElementsAre(true, true, false, false, false));
}

TEST_F(RankTableTest, ThresholdsThemselvesAreSignificant)
{
  settings().setPThreshold(0.25);
  settings().setKsThreshold(0.5);
  container.ksStatistics = {
      {0.25, 0.5}, {0.25, std::nextafter(0.5, 0)}, {std::nextafter(0.25, 1), 0.5}, {0, 1}, {1, 1}};
  EXPECT_THAT(names(), ElementsAre("k4", "k1", "k2", "k3", "k5"));
  EXPECT_THAT(significant(), ElementsAre(true, true, false, false, false));
}

TEST_F(RankTableTest, MediansAreThoseOfThePassingAndTheOtherRuns)
{
  auto const ranked = app::rankedParameters(container);
  ASSERT_EQ(ranked.size(), 5u);
  for (app::RankedParameter const& parameter : ranked) {
    double const base = 100.0 * (parameter.name.back() - '1');
    EXPECT_EQ(parameter.medianPassing, base + 1) << parameter.name << ": of 0, 1, 4";
    EXPECT_EQ(parameter.medianOthers, base + 20.5) << parameter.name << ": of 9, 16, 25, 36";
  }
}

TEST_F(RankTableTest, WithoutASelectionThereIsNothingToRank)
{
  app::clearSelection(container);
  EXPECT_THAT(names(), IsEmpty());
}

} // namespace
} // namespace runsieve::test
