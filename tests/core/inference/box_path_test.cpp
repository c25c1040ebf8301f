#include <runsieve/core/inference/BoxPath.h>
#include <runsieve/core/inference/BoxSurroundings.h>

#include <core/inference/BoxScan.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace runsieve::test {

namespace {

BoxPath pathOf(BoxScan const& scan, PeelOptions const& options = {})
{
  return *findBoxPath(scan.table(), scan.sample(), options);
}

/// The runs up to a threshold, or from it on if `sign` is -1.
BoxTally runsUpTo(BoxScan const& scan, std::vector<double> const& column, double threshold, double sign)
{
  BoxTally tally;
  for (std::size_t run = 0; run < column.size(); ++run)
    if (sign * column[run] <= sign * threshold) tally += {1, scan.passing[run]};
  return tally;
}

/// The peel at one side of a parameter, by trying each of its values as threshold.
BoxTally peelByTrial(BoxScan const& scan, std::vector<double> const& column, double sign, std::size_t most)
{
  BoxTally smallest{column.size(), 0};
  BoxTally largest;
  for (double const threshold : column) {
    BoxTally const tally = runsUpTo(scan, column, threshold, sign);
    if (tally.runs <= smallest.runs) smallest = tally;
    if (tally.runs <= most && tally.runs > largest.runs) largest = tally;
  }
  return largest.runs > 0 ? largest : smallest;
}

/// The best criterion of any peel of all runs, each parameter being numbers.
double bestScoreByTrial(BoxScan const& scan, PeelOptions const& options)
{
  BoxTally const all = scan.sample().all();
  auto const n = static_cast<double>(all.runs);
  auto const k = static_cast<double>(options.runsOf(all.runs));
  double best = -INFINITE;
  for (auto const& column : scan.columns)
    for (double const sign : {1.0, -1.0}) {
      BoxTally const peel = peelByTrial(scan, column, sign, options.runsOf(all.runs));
      BoxTally left = all;
      left -= peel;
      if (left.passing == 0 || static_cast<double>(left.runs) < options.leastMass * n) continue;
      BoxMeasures const before{all, all};
      BoxMeasures const after{left, all};
      double const taken = std::max(static_cast<double>(peel.runs), k);
      best = std::max(best, (after.density() - before.density()) / taken);
    }
  return best;
}

} // namespace

TEST(BoxPath, beginsWithAllRunsAndLosesMassWithEveryStep)
{
  BoxScan scan = uniformScan(500, 6, 1);
  letPass(scan, [&](std::size_t run) { return scan.columns[1][run] < 0.4 || scan.columns[2][run] > 0.9; });
  BoxTable const table = scan.table();
  BoxPath const path = pathOf(scan);
  EXPECT_FALSE(path.steps.front().peel);
  EXPECT_EQ(path.steps.front().inside, path.all);
  ASSERT_GT(path.steps.size(), 10u);
  for (std::size_t step = 1; step < path.steps.size(); ++step) {
    EXPECT_LT(path.steps[step].inside.runs, path.steps[step - 1].inside.runs);
    EXPECT_GE(path.measures(step).mass(), 0.05);
    Box const box = path.box(step);
    EXPECT_EQ(box.ranges.size(), path.steps[step].restricted);
    EXPECT_EQ(measure(table, scan.sample(), box).inside, path.steps[step].inside);
  }
}

TEST(BoxPath, findsBoxesOfTwoAmongTenParameters)
{
  for (double const size : {0.3, 0.5, 0.7}) {
    BoxScan scan = uniformScan(2000, 10, 7);
    letPass(scan, [&](std::size_t run) {
      return scan.columns[3][run] < size && std::abs(scan.columns[8][run] - 0.5) < size / 2;
    });
    BoxPath const path = pathOf(scan);
    BoxMeasures const last = path.measures(path.steps.size() - 1);
    EXPECT_GT(last.density(), 0.95) << size;
    EXPECT_GT(last.coverage(), 0.75) << size;
    Box const box = path.box(path.steps.size() - 1);
    for (std::size_t const parameter : {std::size_t{3}, std::size_t{8}})
      EXPECT_TRUE(std::any_of(box.ranges.begin(), box.ranges.end(),
                              [&](auto const& range) { return range.parameter == parameter; }));
  }
}

TEST(BoxPath, cutsALatticeBetweenItsLevels)
{
  BoxScan scan;
  scan.columns.resize(2);
  for (int x = 0; x < 10; ++x)
    for (int y = 0; y < 10; ++y) {
      scan.columns[0].push_back(x);
      scan.columns[1].push_back(y);
      scan.passing.push_back(x >= 6 && y < 3 ? 1 : 0);
    }
  BoxPath const path = pathOf(scan);
  Box const box = path.box(path.steps.size() - 1);
  EXPECT_EQ(box, (Box{{numbersIn(0, 5.5, INFINITE), numbersIn(1, -INFINITE, 2.5)}}));
  EXPECT_EQ(path.steps.back().inside, (BoxTally{12, 12}));
}

TEST(BoxPath, takesOutOneCategoryAfterTheOther)
{
  BoxScan scan = uniformScan(600, 2, 3);
  for (double& value : scan.columns[1]) value = std::floor(5.0 * value);
  scan.categories = {0, 5};
  letPass(scan, [&](std::size_t run) { return scan.columns[1][run] == 1.0 || scan.columns[1][run] == 4.0; });
  BoxPath const path = pathOf(scan);
  ASSERT_EQ(path.steps.size(), 4u);
  EXPECT_EQ(path.box(3), (Box{{categoriesOf(1, {0, 1, 0, 0, 1})}}));
  EXPECT_EQ(path.measures(3).density(), 1.0);
  EXPECT_EQ(path.measures(3).coverage(), 1.0);
}

TEST(BoxPath, peelsALargeLevelForItsGainPerRunAndNotForItsSize)
{
  // Without the level 1 of the first parameter, half of all runs, the density rises from 0.2 to 0.3; without
  // the highest 5 runs of the second from 0.2 to 20 / 95, which is more for each run.
  BoxScan scan;
  scan.columns.resize(2);
  for (int run = 0; run < 100; ++run) {
    scan.columns[0].push_back(run < 50 ? 0 : 1);
    scan.columns[1].push_back(run % 50 + (run < 50 ? 0.0 : 0.5));
    scan.passing.push_back((run < 15 || (run >= 50 && run < 55)) ? 1 : 0);
  }
  BoxPath const path = pathOf(scan);
  EXPECT_EQ(path.steps[1].peel->parameter, 1u);
  EXPECT_EQ(path.steps[1].inside, (BoxTally{95, 20}));
}

TEST(BoxPath, doesNotPeelARareCategoryBeforeAGoodLimit)
{
  // One run has a category of its own and does not pass: its peel gains most for one run, but as one of 5
  // runs it counts for less than the peel of 5 runs of which none passes.
  BoxScan scan;
  scan.columns.resize(2);
  scan.categories = {2, 0};
  for (int run = 0; run < 100; ++run) {
    scan.columns[0].push_back(run == 99 ? 1 : 0);
    scan.columns[1].push_back((run * 37) % 100);
    scan.passing.push_back((run * 37) % 100 < 40 ? 1 : 0);
  }
  EXPECT_EQ(pathOf(scan).steps[1].peel->parameter, 1u);
}

TEST(BoxPath, hasTheBestPeelThatCanBeFoundByTrial)
{
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    RandomStream random(seed, 99);
    BoxScan scan = uniformScan(3 + random.below(25), 1 + random.below(4), seed);
    for (auto& column : scan.columns) {
      double const levels = 2.0 + random.below(30);
      for (double& value : column) value = std::floor(levels * value);
    }
    letPass(scan, [&](std::size_t) { return random.below(3) == 0; });
    PeelOptions options;
    options.fraction = 0.05 + 0.05 * random.below(6);
    BoxPath const path = pathOf(scan, options);
    BoxMeasures const all = path.measures(0);
    if (all.inside.passing == 0 || all.inside.passing == all.inside.runs) continue;
    double const best = bestScoreByTrial(scan, options);
    if (path.steps.size() == 1) {
      EXPECT_EQ(best, -INFINITE) << seed;
      continue;
    }
    double const removed = static_cast<double>(all.inside.runs - path.steps[1].inside.runs);
    double const counted = std::max(removed, static_cast<double>(options.runsOf(all.inside.runs)));
    EXPECT_NEAR((path.measures(1).density() - all.density()) / counted, best, 1e-12) << seed;
  }
}

TEST(BoxPath, endsOnceAllRunsInsidePass)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
  scan.passing = {0, 0, 0, 1, 1, 1, 1, 1, 1, 1};
  BoxPath const path = pathOf(scan);
  EXPECT_EQ(path.steps.size(), 4u);
  EXPECT_EQ(path.box(3), (Box{{numbersIn(0, 3.5, INFINITE)}}));
}

TEST(BoxPath, keepsTheLeastMass)
{
  BoxScan scan = uniformScan(400, 3, 5);
  letPass(scan, [&](std::size_t run) { return scan.columns[0][run] < 0.1; });
  PeelOptions options;
  options.leastMass = 0.5;
  BoxPath const path = pathOf(scan, options);
  EXPECT_GE(path.steps.back().inside.runs, 200u);
  EXPECT_LT(path.steps.back().inside.runs, 211u);
  options.leastMass = 1.0;
  EXPECT_EQ(pathOf(scan, options).steps.size(), 1u);
}

TEST(BoxPath, takesItsSharesOfRunsAsTheyAreWritten)
{
  EXPECT_EQ((PeelOptions{0.29, 0.05}).runsOf(100), 29u); // the product is 28.999...
  EXPECT_EQ((PeelOptions{0.05, 0.05}).runsOf(19), 1u);
  EXPECT_EQ((PeelOptions{0.05, 0.05}).runsOf(59), 2u);
  EXPECT_EQ((PeelOptions{0.05, 0.05}).runsOf(0), 1u);
  EXPECT_EQ((PeelOptions{0.05, 0.07}).leastRunsOf(100), 7u); // 7.000...1
  EXPECT_EQ((PeelOptions{0.05, 0.29}).leastRunsOf(100), 29u);
  EXPECT_EQ((PeelOptions{0.05, 0.05}).leastRunsOf(21), 2u);
  EXPECT_EQ((PeelOptions{0.05, 0.0}).leastRunsOf(100), 1u);
  EXPECT_EQ((PeelOptions{0.05, 0.05}).leastRunsOf(0), 1u);
}

TEST(BoxPath, isOneBoxIfAllRunsPass)
{
  BoxScan scan = uniformScan(50, 2, 1);
  letPass(scan, [](std::size_t) { return true; });
  EXPECT_EQ(pathOf(scan).steps.size(), 1u);
}

TEST(BoxPath, isOneBoxIfNoRunPasses)
{
  EXPECT_EQ(pathOf(uniformScan(50, 2, 1)).steps.size(), 1u);
}

TEST(BoxPath, isOneBoxForOneRunOrNone)
{
  BoxScan scan;
  scan.columns = {{1.0}};
  scan.passing = {1};
  EXPECT_EQ(pathOf(scan).steps.size(), 1u);
  EXPECT_EQ(pathOf(BoxScan{}).steps.size(), 1u);
  EXPECT_EQ(pathOf(BoxScan{{{}}, {}, {}}).steps.size(), 1u);
}

TEST(BoxPath, isOneBoxIfAllValuesAreEqual)
{
  BoxScan scan;
  scan.columns = {{4, 4, 4, 4}, {0, 0, 0, 0}};
  scan.categories = {0, 2};
  scan.passing = {1, 0, 1, 0};
  EXPECT_EQ(pathOf(scan).steps.size(), 1u);
}

TEST(BoxPath, isOneBoxIfNoRunHasAValue)
{
  BoxScan scan;
  scan.columns = {{MISSING, MISSING, MISSING}, {MISSING, MISSING, MISSING}};
  scan.categories = {0, 2};
  scan.passing = {1, 0, 1};
  EXPECT_EQ(pathOf(scan).steps.size(), 1u);
}

TEST(BoxPath, leavesOutRunsWithoutAValueOnceTheirParameterIsRestricted)
{
  BoxScan scan;
  scan.columns = {{MISSING, 1, 2, 3, 4, 5, 6, 7, 8, MISSING}};
  scan.passing = {0, 0, 1, 1, 1, 1, 1, 1, 1, 0};
  BoxPath const path = pathOf(scan);
  ASSERT_EQ(path.steps.size(), 2u);
  EXPECT_EQ(path.steps[1].inside, (BoxTally{7, 7}));
  EXPECT_EQ(path.box(1), (Box{{numbersIn(0, 1.5, INFINITE)}}));
}

TEST(BoxPath, leavesOutRunsWithoutATextOnceTheirParameterIsRestricted)
{
  BoxScan scan;
  scan.columns = {{MISSING, 0, 0, 1, 1, 1}};
  scan.categories = {2};
  scan.passing = {0, 0, 0, 1, 1, 1};
  BoxPath const path = pathOf(scan);
  ASSERT_EQ(path.steps.size(), 2u);
  EXPECT_EQ(path.steps[1].inside, (BoxTally{3, 3}));
}

TEST(BoxPath, takesInfiniteValuesAsTheEndsOfAParameter)
{
  BoxScan scan;
  scan.columns = {{-INFINITE, -INFINITE, 1, 2, 3, INFINITE, INFINITE}};
  scan.passing = {0, 0, 1, 1, 1, 0, 0};
  BoxPath const path = pathOf(scan);
  EXPECT_EQ(path.box(path.steps.size() - 1), (Box{{numbersIn(0, 1.0, 3.0)}}));
  scan.passing = {1, 1, 0, 0, 0, 0, 0};
  BoxPath const low = pathOf(scan);
  EXPECT_EQ(low.box(low.steps.size() - 1), (Box{{numbersIn(0, -INFINITE, -INFINITE)}}));
}

TEST(BoxPath, peelsMassiveTiesWhole)
{
  BoxScan scan;
  scan.columns.resize(1);
  for (int run = 0; run < 1000; ++run) {
    scan.columns[0].push_back(run < 900 ? 0 : run);
    scan.passing.push_back(run >= 900 ? 1 : 0);
  }
  BoxPath const path = pathOf(scan);
  ASSERT_EQ(path.steps.size(), 2u);
  EXPECT_EQ(path.steps[1].inside, (BoxTally{100, 100}));
}

TEST(BoxPath, peelsOneRunAtATimeWhereTheFractionIsLessThanARun)
{
  BoxScan scan;
  scan.columns = {{1, 2, 3, 4}};
  scan.passing = {0, 0, 0, 1};
  PeelOptions options;
  options.fraction = 1e-300;
  options.leastMass = 0.0;
  EXPECT_EQ(pathOf(scan, options).steps.size(), 4u);
}

TEST(BoxPath, looksOnlyAtRunsThatTakePart)
{
  BoxScan scan = uniformScan(300, 3, 11);
  letPass(scan, [&](std::size_t run) { return scan.columns[0][run] + scan.columns[1][run] < 0.8; });
  std::vector<unsigned char> eligible(300);
  BoxScan fewer;
  fewer.columns.resize(3);
  for (std::size_t run = 0; run < 300; run += 3) {
    eligible[run] = 1;
    for (std::size_t j = 0; j < 3; ++j) fewer.columns[j].push_back(scan.columns[j][run]);
    fewer.passing.push_back(scan.passing[run]);
  }
  BoxSample const sample(scan.passing.data(), 300, eligible.data());
  BoxPath const path = *findBoxPath(scan.table(), sample);
  BoxPath const expected = pathOf(fewer);
  ASSERT_EQ(path.steps.size(), expected.steps.size());
  ASSERT_GT(path.steps.size(), 5u);
  for (std::size_t step = 0; step < path.steps.size(); ++step) {
    EXPECT_EQ(path.steps[step].inside, expected.steps[step].inside);
    EXPECT_EQ(path.box(step), expected.box(step));
  }
}

TEST(BoxPath, stopsWhenAsked)
{
  BoxScan scan = uniformScan(500, 3, 2);
  letPass(scan, [&](std::size_t run) { return scan.columns[0][run] < 0.2; });
  int questions = 0;
  EXPECT_FALSE(findBoxPath(scan.table(), scan.sample(), {}, [&] { return ++questions == 4; }));
  EXPECT_EQ(questions, 4);
}

TEST(BoxPath, refusesOptionsOutOfRange)
{
  BoxScan const scan = uniformScan(5, 1, 1);
  for (double const wrong : {0.0, 1.0, -0.1, MISSING, INFINITE})
    EXPECT_THROW(pathOf(scan, {wrong, 0.05}), std::invalid_argument) << wrong;
  for (double const wrong : {-0.1, 1.1, MISSING})
    EXPECT_THROW(pathOf(scan, {0.05, wrong}), std::invalid_argument);
}

} // namespace runsieve::test
