#include <runsieve/core/inference/BoxChoice.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace runsieve::test {

namespace {

BoxPath pathOf(std::vector<BoxTally> const& boxes)
{
  BoxPath path;
  path.all = boxes.front();
  for (BoxTally const& inside : boxes) path.steps.push_back({std::nullopt, inside, 0});
  return path;
}

} // namespace

TEST(ChosenBox, isTheDensestOfThoseThatCoverEnough)
{
  BoxPath const path = pathOf({{100, 20}, {80, 18}, {60, 16}, {50, 12}, {10, 10}});
  EXPECT_EQ(chosenStep(path, 0.8), 2u); // 16 of 20 is just enough
  EXPECT_EQ(chosenStep(path, 0.81), 1u);
  EXPECT_EQ(chosenStep(path, 1.0), 0u);
  EXPECT_EQ(chosenStep(path, 0.0), 4u);
}

TEST(ChosenBox, isTheLargestOfEquallyDenseOnes)
{
  EXPECT_EQ(chosenStep(pathOf({{100, 20}, {40, 20}, {20, 10}}), 0.1), 1u);
}

TEST(ChosenBox, hasTheLargestHarmonicMeanOfCoverageAndDensityByDefault)
{
  // 2 p / (n + P): 0.333, 0.5, 0.75, 0.667
  EXPECT_EQ(chosenStep(pathOf({{100, 20}, {60, 20}, {20, 15}, {10, 10}})), 2u);
}

TEST(ChosenBox, isThatOfAllRunsIfNoneOrAllPass)
{
  EXPECT_EQ(chosenStep(pathOf({{5, 0}})), 0u);
  EXPECT_EQ(chosenStep(pathOf({{5, 0}}), 0.8), 0u);
  EXPECT_EQ(chosenStep(pathOf({{5, 5}})), 0u);
  EXPECT_EQ(chosenStep(pathOf({{0, 0}})), 0u);
}

TEST(ChosenBox, refusesACoverageThatIsNoShareAndAPathWithoutBoxes)
{
  BoxPath const path = pathOf({{5, 2}});
  for (double const wrong : {-0.1, 1.1, MISSING})
    EXPECT_THROW((void)chosenStep(path, wrong), std::invalid_argument);
  EXPECT_THROW((void)chosenStep(BoxPath{}), std::invalid_argument);
}

TEST(ChosenBox, isCloseToTheBoxThatMadeRunsPass)
{
  for (double const size : {0.3, 0.5, 0.7}) {
    BoxScan scan = uniformScan(4000, 10, 21);
    RandomStream noise(21, 99);
    letPass(scan, [&](std::size_t run) {
      bool const in = scan.columns[2][run] < size && scan.columns[6][run] > 1.0 - size;
      return in != (noise.below(50) == 0);
    });
    BoxTable const table = scan.table();
    BoxRule rule;
    rule.largestQuasiP = 0.05;
    BoxPath const path = *findBoxPath(table, scan.sample());
    Box const box = *chosenBox(table, scan.sample(), path, {}, rule);
    ASSERT_EQ(box.ranges.size(), 2u) << size;
    EXPECT_EQ(box.ranges[0].parameter, 2u);
    EXPECT_EQ(box.ranges[1].parameter, 6u);
    EXPECT_NEAR(box.ranges[0].high, size, 0.02);
    EXPECT_NEAR(box.ranges[1].low, 1.0 - size, 0.02);
    EXPECT_FALSE(box.ranges[0].cutsLow() || box.ranges[1].cutsHigh());
  }
}

TEST(ChosenBox, reachesItsCoverageAfterPastingAndDroppingLimits)
{
  BoxScan scan = uniformScan(1500, 6, 8);
  letPass(scan, [&](std::size_t run) {
    return scan.columns[0][run] * scan.columns[1][run] + 0.3 * scan.columns[4][run] < 0.25;
  });
  BoxTable const table = scan.table();
  BoxPath const path = *findBoxPath(table, scan.sample());
  for (double const coverage : {0.5, 0.8, 0.95}) {
    Box const box = *chosenBox(table, scan.sample(), path, {}, {coverage, true, 0.05});
    EXPECT_GE(measure(table, scan.sample(), box).coverage(), coverage);
  }
}

TEST(ChosenBox, isNotSearchedAnyMoreWhenAskedToStop)
{
  BoxScan const scan = uniformScan(10, 1, 1);
  BoxPath const path = *findBoxPath(scan.table(), scan.sample());
  EXPECT_FALSE(chosenBox(scan.table(), scan.sample(), path, {}, {}, [] { return true; }));
}

} // namespace runsieve::test
