#include <runsieve/core/live/LiveSieve.h>

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/inference/CategoryComparison.h>
#include <runsieve/core/inference/SampleComparison.h>
#include <runsieve/core/live/CurveBlock.h>
#include <runsieve/core/parallel/Parallel.h>

#include "RandomLiveScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Marks = std::vector<std::uint8_t>;
using Runs = std::vector<std::uint32_t>;

bool sameBits(double a, double b)
{
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

/// As the kernels of comparisons compute it.
LiveDistance expectedDistance(Scan const& scan, std::size_t parameter, Marks const& mask,
                              RunSet const& eligible)
{
  std::vector<double> values;
  Marks passes;
  std::vector<std::int32_t> categories;
  for (std::size_t const run : eligible.members()) {
    values.push_back(scan.parameters[parameter].values[run]);
    passes.push_back(mask[run]);
    categories.push_back(std::isnan(values.back()) ? -1 : static_cast<std::int32_t>(values.back()));
  }
  LiveDistance expected;
  OrderedValues const ordered = orderedValues(values.data(), values.size());
  expected.varies = ordered.groupEnds.size() > 1;
  if (scan.parameters[parameter].isText()) {
    CategoryComparison const found = compareCategories(categories.data(), passes.data(), values.size(),
                                                       scan.parameters[parameter].texts.size());
    expected.passing = found.passing;
    expected.others = found.others;
    expected.d = found.d;
    expected.text = found.category;
  } else {
    SampleComparison const found = compareSamples(ordered, values.data(), passes.data());
    expected.passing = found.passing;
    expected.others = found.others;
    expected.d = found.d;
    expected.value = found.value;
  }
  return expected;
}

void expectDistances(std::vector<LiveDistance> const& found, Scan const& scan, Marks const& mask,
                     RunSet const& eligible)
{
  ASSERT_EQ(found.size(), scan.parameters.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    LiveDistance const expected = expectedDistance(scan, i, mask, eligible);
    EXPECT_EQ(found[i].parameter, i);
    EXPECT_EQ(found[i].varies, expected.varies) << i;
    EXPECT_EQ(found[i].passing, expected.passing) << i;
    EXPECT_EQ(found[i].others, expected.others) << i;
    EXPECT_TRUE(sameBits(found[i].d, expected.d)) << i << ": " << found[i].d << ", not " << expected.d;
    EXPECT_TRUE(sameBits(found[i].value, expected.value))
        << i << ": " << found[i].value << ", not " << expected.value;
    EXPECT_EQ(found[i].text, expected.text) << i;
  }
}

/// The runs of which the marks differ.
Runs differing(Marks const& a, Marks const& b)
{
  Runs runs;
  for (std::size_t run = 0; run < a.size(); ++run)
    if (a[run] != b[run]) runs.push_back(static_cast<std::uint32_t>(run));
  return runs;
}

void expectMoved(LiveSieve& sieve, Scan const& scan, RunSet const& fixed, ResolvedGate const& gate)
{
  Marks const before = sieve.mask();
  RunSet expected = runsThrough(gate, scan);
  expected &= fixed;
  EXPECT_EQ(sieve.update(gate), expected.count()) << gate.text();
  EXPECT_EQ(sieve.mask(), expected.mask()) << gate.text();
  EXPECT_EQ(sieve.changed(), differing(before, sieve.mask())) << gate.text();
}

TEST(LiveSieveTest, ManyRandomRectanglesHaveTheRunsOfTheirGatesAndTheDistancesOfTheComparison)
{
  Dice dice(1);
  for (int i = 0; i < 120; ++i) {
    Scan const scan = randomScan(1 + dice.below(i % 4 == 0 ? 300 : 20), 1 + dice.below(30), dice);
    RunSet const eligible = i % 2 == 0 ? RunSet(scan.runs.size(), true) : randomRuns(scan.runs.size(), dice);
    LiveSieve sieve(scan, eligible);
    RunSet fixed(scan.runs.size(), true);
    for (int move = 0; move < 40; ++move) {
      if (move % 8 == 3) {
        fixed = randomRuns(scan.runs.size(), dice);
        EXPECT_EQ(sieve.setFixed(fixed), fixed.count());
        EXPECT_EQ(sieve.mask(), fixed.mask());
      }
      expectMoved(sieve, scan, fixed, randomRectangle(scan, dice));
      if (dice.below(2) == 0) expectDistances(*sieve.distances(), scan, sieve.mask(), eligible);
    }
  }
}

TEST(LiveSieveTest, RectanglesOfRunsInSeveralBlocksHaveTheRunsOfTheirGates)
{
  Dice dice(2);
  Scan const scan = randomScan(2 * CurveBlock::mostRuns + 77, 19, dice);
  RunSet const all(scan.runs.size(), true);
  LiveSieve sieve(scan);
  for (int move = 0; move < 60; ++move) expectMoved(sieve, scan, all, randomRectangle(scan, dice));
  expectDistances(*sieve.distances(), scan, sieve.mask(), all);
}

TEST(LiveSieveTest, GatesOfOtherKindsHaveTheirRunsToo)
{
  Dice dice(3);
  Scan const scan = randomScan(200, 12, dice);
  RunSet const all(scan.runs.size(), true);
  LiveSieve sieve(scan);
  for (char const* const text :
       {"crosses A @ 2.5..3.5 in 4..5", "max(A) @ 2..6 in 8..", "not mean(B) in 4..5", "k0 in 0.2..0.6",
        "text is low, high", "status complete", "runs 5, 20-90", "A @ 3..4 in 2..7"})
    expectMoved(sieve, scan, all, resolveGate(parseGate(text), scan));
}

TEST(LiveSieveTest, DistancesAreThoseOfCompareParameters)
{
  Dice dice(4);
  Scan const scan = randomScan(300, 5, dice);
  RunSet const eligible = randomRuns(300, dice);
  ResolvedGate const gate = resolveGate(parseGate("ever A @ 1..3 in 8.."), scan);
  LiveSieve sieve(scan, eligible);
  sieve.update(gate);
  std::vector<LiveDistance> const distances = *sieve.distances();
  ComparisonMethod method;
  method.adjustment = Adjustment::None;
  method.permutations = 0;
  Comparison const comparison = compareParameters(scan, runsThrough(gate, scan), eligible, method);
  ASSERT_FALSE(comparison.parameters.empty());
  for (ParameterComparison const& expected : comparison.parameters) {
    LiveDistance const& found = distances[expected.parameter];
    EXPECT_TRUE(found.varies);
    EXPECT_EQ(found.passing, expected.passing);
    EXPECT_EQ(found.others, expected.others);
    EXPECT_TRUE(sameBits(found.d, expected.d)) << expected.name;
    EXPECT_TRUE(sameBits(found.value, expected.value)) << expected.name;
    if (expected.isText) {
      EXPECT_EQ(scan.parameters[expected.parameter].texts.at(found.text), expected.text);
    }
  }
  for (LeftOutParameter const& left : comparison.leftOut) EXPECT_FALSE(distances[left.parameter].varies);
}

TEST(LiveSieveTest, AllRunsPassAtFirst)
{
  Dice dice(5);
  Scan const scan = randomScan(10, 3, dice);
  LiveSieve sieve(scan);
  EXPECT_EQ(sieve.mask(), Marks(10, 1));
  EXPECT_THAT(sieve.changed(), IsEmpty());
  LiveDistance const first = sieve.distances()->front();
  EXPECT_EQ(first.passing, 10u);
  EXPECT_EQ(first.others, 0u);
  EXPECT_TRUE(std::isnan(first.d));
}

/// Four runs that are constant at 0, 1, 2, 3.
Scan steps()
{
  Scan scan;
  scan.times = {0.0, 1.0};
  for (int run = 0; run < 4; ++run) scan.runs.push_back({std::to_string(run)});
  double* const values = scan.addOutput({"A", "", "", ""});
  for (int row = 0; row < 8; ++row) values[row] = row / 2;
  scan.parameters.push_back({{"k", "", "", ""}, {40.0, 30.0, 20.0, 10.0}, {}});
  return scan;
}

TEST(LiveSieveTest, TellsWhichRunsHaveComeAndGone)
{
  Scan const scan = steps();
  LiveSieve sieve(scan);
  EXPECT_EQ(sieve.update(resolveGate(parseGate("A @ 0..1 in 2..3"), scan)), 2u);
  EXPECT_THAT(sieve.changed(), ElementsAre(0, 1));
  EXPECT_EQ(sieve.update(resolveGate(parseGate("A @ 0..1 in 1..2"), scan)), 2u);
  EXPECT_THAT(sieve.changed(), ElementsAre(1, 3));
  EXPECT_THAT(sieve.mask(), ElementsAre(0, 1, 1, 0));
}

TEST(LiveSieveTest, PassingRunsOfSmallerValuesHaveANegativeDistance)
{
  Scan const scan = steps();
  LiveSieve sieve(scan);
  sieve.update(resolveGate(parseGate("A @ 0..1 in 2..3"), scan));
  LiveDistance const distance = sieve.distances()->front();
  EXPECT_EQ(distance.d, -1.0);
  EXPECT_EQ(distance.value, 20.0);
}

TEST(LiveSieveTest, NumbersHaveNoTextAndTextsNoValue)
{
  Scan scan = steps();
  scan.parameters.push_back({{"strain", "", "", ""}, {0.0, 0.0, 1.0, 1.0}, {"a", "b"}});
  LiveSieve sieve(scan);
  sieve.update(resolveGate(parseGate("A @ 0..1 in 2..3"), scan));
  std::vector<LiveDistance> const found = *sieve.distances();
  EXPECT_EQ(found[0].text, -1);
  EXPECT_TRUE(std::isnan(found[1].value));
  EXPECT_GE(found[1].text, 0);
}

TEST(LiveSieveTest, WithoutADifferenceThereIsNoPlace)
{
  Scan scan = steps();
  scan.parameters.front().values = {1.0, 2.0, 1.0, 2.0};
  scan.parameters.push_back({{"strain", "", "", ""}, {0.0, 1.0, 0.0, 1.0}, {"a", "b"}});
  LiveSieve sieve(scan);
  sieve.update(resolveGate(parseGate("A @ 0..1 in 2..3"), scan));
  std::vector<LiveDistance> const distances = *sieve.distances();
  for (LiveDistance const& found : distances) {
    EXPECT_EQ(found.d, 0.0);
    EXPECT_TRUE(std::isnan(found.value));
    EXPECT_EQ(found.text, -1);
  }
}

/// Interrupts at one question after the other: at the first one, then at the second, and so on.
class Interruptions
{
public:
  LiveWork work()
  {
    LiveWork work;
    work.interrupted = [this] { return asked++ == allowed; };
    return work;
  }
  void allowOneMore()
  {
    asked = 0;
    ++allowed;
  }

private:
  int asked = 0;
  int allowed = 0;
};

TEST(LiveSieveTest, InterruptedUpdateChangesNothing)
{
  Dice dice(6);
  Scan const scan = randomScan(2 * CurveBlock::mostRuns + 10, 9, dice);
  LiveSieve sieve(scan);
  sieve.update(resolveGate(parseGate("ever A @ 2..3 in 2..7"), scan));
  Marks const before = sieve.mask();
  Runs const changed = sieve.changed();
  ResolvedGate const next = resolveGate(parseGate("A @ 2..5 in 2..9"), scan);
  Interruptions interruptions;
  int times = 0;
  for (; !sieve.update(next, interruptions.work()); interruptions.allowOneMore(), ++times) {
    EXPECT_EQ(sieve.mask(), before);
    EXPECT_EQ(sieve.changed(), changed);
  }
  EXPECT_EQ(times, 3); // one for each block
  EXPECT_EQ(sieve.mask(), runsThrough(next, scan).mask());
}

TEST(LiveSieveTest, InterruptedDistancesAreRightTheNextTime)
{
  Dice dice(7);
  Scan const scan = randomScan(100, 9, dice);
  RunSet const all(100, true);
  LiveSieve sieve(scan);
  Interruptions interruptions;
  std::size_t times = 0;
  for (;; interruptions.allowOneMore(), ++times) {
    sieve.update(randomRectangle(scan, dice));
    auto const distances = sieve.distances(interruptions.work());
    if (!distances) continue;
    expectDistances(*distances, scan, sieve.mask(), all);
    break;
  }
  EXPECT_EQ(times, scan.parameters.size());
}

TEST(LiveSieveTest, PreparationGoesOnWhereItWasInterrupted)
{
  Dice dice(8);
  Scan const scan = randomScan(2 * CurveBlock::mostRuns + 10, 9, dice);
  RunSet const all(scan.runs.size(), true);
  LiveSieve sieve(scan);
  Interruptions interruptions;
  while (!sieve.prepare(0, interruptions.work())) interruptions.allowOneMore();
  expectMoved(sieve, scan, all, resolveGate(parseGate("A @ 2..5 in 2..9"), scan));
  expectMoved(sieve, scan, all, resolveGate(parseGate("B @ 2..5 in 2..9"), scan)); // another output
  expectDistances(*sieve.distances(), scan, sieve.mask(), all);
}

TEST(LiveSieveTest, RunnerOfSeveralThreadsHasTheSameResults)
{
  Dice dice(9);
  Scan const scan = randomScan(3 * CurveBlock::mostRuns, 17, dice);
  LiveWork several;
  several.runner = [](std::size_t count, std::function<void(std::size_t)> const& work) {
    inParallel(4, count, work);
  };
  LiveSieve alone(scan);
  LiveSieve shared(scan);
  for (int move = 0; move < 30; ++move) {
    ResolvedGate const gate = randomRectangle(scan, dice);
    EXPECT_EQ(shared.update(gate, several), alone.update(gate));
    EXPECT_EQ(shared.mask(), alone.mask());
    std::vector<LiveDistance> const expected = *alone.distances();
    std::vector<LiveDistance> const found = *shared.distances(several);
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_TRUE(sameBits(found[i].d, expected[i].d));
  }
}

TEST(LiveSieveTest, SetsOfAnotherScanAreRefused)
{
  Scan const scan = steps();
  EXPECT_THROW(LiveSieve(scan, RunSet(3)), std::invalid_argument);
  LiveSieve sieve(scan);
  EXPECT_THROW(sieve.setFixed(RunSet(5)), std::invalid_argument);
  EXPECT_EQ(sieve.mask(), Marks(4, 1));
}

TEST(LiveSieveTest, SharesTheValuesOfTheOutputThatItHasPrepared)
{
  Scan const scan = steps();
  LiveSieve sieve(scan);
  EXPECT_EQ(scan.outputs[0].values.use_count(), 1);
  sieve.prepare(0);
  EXPECT_EQ(scan.outputs[0].values.use_count(), 2);
}

TEST(LiveSieveTest, MovedSieveGoesOn)
{
  Scan const scan = steps();
  LiveSieve first(scan);
  first.update(resolveGate(parseGate("A @ 0..1 in 2..3"), scan));
  LiveSieve second(std::move(first));
  EXPECT_THAT(second.mask(), ElementsAre(0, 0, 1, 1));
  EXPECT_EQ(second.distances()->front().d, -1.0);
}

} // namespace
} // namespace runsieve::test
