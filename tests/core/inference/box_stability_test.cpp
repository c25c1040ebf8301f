#include <runsieve/core/inference/BoxStability.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

#include <cmath>

namespace runsieve::test {

namespace {

/// Two of five number parameters and a text parameter decide; some numbers are missing.
BoxScan scanWithBox()
{
  BoxScan scan = uniformScan(800, 6, 31);
  scan.categories = {0, 0, 0, 0, 0, 3};
  for (double& value : scan.columns[5]) value = std::floor(3.0 * value);
  letPass(scan, [&](std::size_t run) {
    return scan.columns[1][run] < 0.6 && scan.columns[3][run] > 0.4 && scan.columns[5][run] != 2.0;
  });
  for (std::size_t run = 0; run < 800; run += 20) scan.columns[0][run] = MISSING;
  return scan;
}

BoxStability stabilityOf(BoxScan const& scan, HalfSamples const& halves = {},
                         BoxRule const& rule = {{}, true, 0.05})
{
  return *boxStability(scan.table(), scan.sample(), {}, rule, halves);
}

void expectSame(BoxSpread const& a, BoxSpread const& b)
{
  auto const same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
  EXPECT_EQ(a.count, b.count);
  EXPECT_TRUE(same(a.low, b.low) && same(a.median, b.median) && same(a.high, b.high));
}

} // namespace

TEST(BoxStability, restrictsTheParametersThatMatterInAllHalvesAndOthersInFew)
{
  BoxStability const stability = stabilityOf(scanWithBox());
  EXPECT_EQ(stability.samples, 100u);
  for (std::size_t const parameter : {1, 3, 5}) EXPECT_EQ(stability.parameters[parameter].restricted, 100u);
  for (std::size_t const parameter : {0, 2, 4}) EXPECT_LT(stability.parameters[parameter].restricted, 30u);
}

TEST(BoxStability, hasTheLimitsAmongItsQuantiles)
{
  BoxStability const stability = stabilityOf(scanWithBox());
  BoxSpread const& high = stability.parameters[1].high;
  EXPECT_EQ(high.count, 100u);
  EXPECT_LE(high.low, high.median);
  EXPECT_LE(high.median, high.high);
  EXPECT_NEAR(high.median, 0.6, 0.03);
  EXPECT_NEAR(stability.parameters[3].low.median, 0.4, 0.03);
  EXPECT_EQ(stability.parameters[5].leftOut, (std::vector<std::size_t>{0, 0, 100}));
}

TEST(BoxStability, measuresBoxesOnRunsThatDidNotMakeThem)
{
  BoxStability const stability = stabilityOf(scanWithBox());
  EXPECT_GT(stability.density.median, 0.9);
  EXPECT_GT(stability.coverage.median, 0.8);
  EXPECT_LE(stability.density.high, 1.0);
  // Without any signal boxes look good only on their own runs: elsewhere they are as dense as all runs.
  BoxScan noise = uniformScan(800, 6, 32);
  RandomStream random(32, 77);
  letPass(noise, [&](std::size_t) { return random.below(4) == 0; });
  BoxStability const none = stabilityOf(noise, {}, {0.1, true, {}});
  EXPECT_NEAR(none.density.median, 0.25, 0.06);
}

TEST(BoxStability, isTheSameForAnyNumberOfThreads)
{
  BoxScan const scan = scanWithBox();
  BoxStability const one = stabilityOf(scan, {40, 5, 1});
  for (unsigned const threads : {2u, 3u, 7u}) {
    BoxStability const more = stabilityOf(scan, {40, 5, threads});
    expectSame(one.coverage, more.coverage);
    expectSame(one.density, more.density);
    expectSame(one.mass, more.mass);
    ASSERT_EQ(one.parameters.size(), more.parameters.size());
    for (std::size_t j = 0; j < one.parameters.size(); ++j) {
      EXPECT_EQ(one.parameters[j].restricted, more.parameters[j].restricted);
      EXPECT_EQ(one.parameters[j].leftOut, more.parameters[j].leftOut);
      expectSame(one.parameters[j].low, more.parameters[j].low);
      expectSame(one.parameters[j].high, more.parameters[j].high);
    }
  }
}

TEST(BoxStability, differsBySeed)
{
  BoxScan const scan = scanWithBox();
  EXPECT_NE(stabilityOf(scan, {20, 1, 1}).coverage.median, stabilityOf(scan, {20, 2, 1}).coverage.median);
}

TEST(BoxStability, hasNoCoverageIfNoRunPasses)
{
  BoxStability const stability = stabilityOf(uniformScan(50, 2, 1));
  EXPECT_EQ(stability.coverage.count, 0u);
  EXPECT_TRUE(std::isnan(stability.coverage.median));
  EXPECT_EQ(stability.density.median, 0.0);
  EXPECT_EQ(stability.mass.low, 1.0);
}

TEST(BoxStability, restrictsNothingIfAllRunsPass)
{
  BoxScan scan = uniformScan(50, 2, 1);
  letPass(scan, [](std::size_t) { return true; });
  BoxStability const stability = stabilityOf(scan);
  EXPECT_EQ(stability.parameters[0].restricted, 0u);
  EXPECT_EQ(stability.parameters[0].low.count, 0u);
  EXPECT_EQ(stability.coverage.low, 1.0);
  EXPECT_EQ(stability.density.low, 1.0);
}

TEST(BoxStability, ofNoRunsAndOfOneRunHasNoBoxes)
{
  EXPECT_EQ(stabilityOf(BoxScan{}).mass.count, 0u);
  BoxScan scan;
  scan.columns = {{3.0}};
  scan.passing = {1};
  EXPECT_EQ(stabilityOf(scan).parameters[0].restricted, 0u);
}

TEST(BoxStability, ofOneHalfHasItsLimitAsEveryQuantile)
{
  BoxSpread const high = stabilityOf(scanWithBox(), {1, 1, 1}).parameters[1].high;
  EXPECT_EQ(high.low, high.median);
  EXPECT_EQ(high.high, high.median);
}

TEST(BoxStability, stopsWhenAsked)
{
  BoxScan const scan = scanWithBox();
  int questions = 0;
  EXPECT_FALSE(boxStability(scan.table(), scan.sample(), {}, {}, {}, [&] { return ++questions == 3; }));
  EXPECT_EQ(questions, 3);
}

} // namespace runsieve::test
