#include <runsieve/core/inference/LaneWalk.h>

#include <runsieve/core/inference/RandomStream.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace runsieve::test {

namespace {

constexpr Counts bothCounts[] = {Counts::NARROW, Counts::WIDE};
constexpr Registers bothRegisters[] = {Registers::ANY_MACHINE, Registers::WIDEST};

/// Runs with some values and with other members in each lane.
struct Sample
{
  Sample(std::size_t runs, std::uint32_t levels, std::uint64_t seed) : values(runs), bits(runs)
  {
    RandomStream random(seed, 0);
    for (double& value : values) value = random.below(levels);
    for (LaneBits& bit : bits) bit = static_cast<LaneBits>(random.below(1u << 16) & random.below(1u << 16));
  }

  std::vector<double> values;
  std::vector<LaneBits> bits;
};

/// |n a - k g| for the members and all runs with a value of at most `value`, or of just that.
std::uint64_t differenceAt(Sample const& sample, std::size_t lane, double value, Steps steps)
{
  std::int64_t n = 0, k = 0, g = 0, a = 0;
  for (std::size_t run = 0; run < sample.values.size(); ++run) {
    if (std::isnan(sample.values[run])) continue;
    std::int64_t const member = sample.bits[run] >> lane & 1;
    bool const inside =
        steps == Steps::CUMULATIVE ? sample.values[run] <= value : sample.values[run] == value;
    ++n;
    k += member;
    g += inside ? 1 : 0;
    a += inside ? member : 0;
  }
  return static_cast<std::uint64_t>(std::abs(n * a - k * g));
}

LaneNumbers naiveDifferences(Sample const& sample, Steps steps)
{
  LaneNumbers largest{};
  for (std::size_t lane = 0; lane < laneCount; ++lane)
    for (double const value : sample.values)
      if (!std::isnan(value))
        largest[lane] = std::max(largest[lane], differenceAt(sample, lane, value, steps));
  return largest;
}

void expectNaive(Sample const& sample)
{
  OrderedValues const ordered = orderedValues(sample.values.data(), sample.values.size());
  LaneNumbers const members = membersAmong(ordered, sample.bits);
  for (Steps const steps : {Steps::CUMULATIVE, Steps::EACH_GROUP}) {
    LaneNumbers const expected = naiveDifferences(sample, steps);
    for (Counts const counts : bothCounts)
      for (Registers const registers : bothRegisters)
        EXPECT_EQ(largestDifferences(ordered, sample.bits, members, steps, counts, registers), expected);
  }
}

/// The difference if the members are the runs with the smallest values, in all ways that can count it.
void expectFullySeparated(std::uint32_t runs, std::uint32_t size, bool narrow)
{
  OrderedValues ordered;
  std::vector<LaneBits> bits(runs);
  for (std::uint32_t run = 0; run < runs; ++run) {
    ordered.order.push_back(run);
    ordered.groupEnds.push_back(run + 1);
    bits[run] = run < size ? 0x5555 : 0xaaaa;
  }
  std::uint64_t const product = std::uint64_t{size} * (runs - size);
  EXPECT_EQ(countsFor(product), narrow ? Counts::NARROW : Counts::WIDE);
  LaneNumbers all;
  all.fill(product);
  LaneNumbers const members = membersAmong(ordered, bits);
  for (Counts const counts : bothCounts) {
    if (!narrow && counts == Counts::NARROW) continue;
    for (Registers const registers : bothRegisters)
      EXPECT_EQ(largestDifferences(ordered, bits, members, Steps::CUMULATIVE, counts, registers), all);
  }
}

} // namespace

TEST(LaneWalk, findsWhatCountingFindsWithoutTies)
{
  expectNaive(Sample(1, 1, 1));
  expectNaive(Sample(2, 1u << 31, 2));
  expectNaive(Sample(150, 1u << 31, 3));
}

TEST(LaneWalk, stepsRunsWithEqualValuesTogether)
{
  expectNaive(Sample(150, 1, 4));
  expectNaive(Sample(150, 5, 5));
  expectNaive(Sample(150, 100, 6));
}

TEST(LaneWalk, leavesOutRunsWithoutAValue)
{
  Sample sample(120, 40, 7);
  for (std::size_t run = 0; run < 120; run += 3)
    sample.values[run] = std::numeric_limits<double>::quiet_NaN();
  expectNaive(sample);
}

TEST(LaneWalk, takesInfiniteValuesAsTheOutermost)
{
  Sample sample(60, 40, 8);
  sample.values[3] = sample.values[30] = std::numeric_limits<double>::infinity();
  sample.values[7] = -std::numeric_limits<double>::infinity();
  expectNaive(sample);
}

TEST(LaneWalk, findsNothingWithoutRuns)
{
  EXPECT_EQ(largestDifferences({}, {}, {}, Steps::CUMULATIVE, Counts::NARROW), LaneNumbers{});
  EXPECT_EQ(membersAmong({}, {}), LaneNumbers{});
}

TEST(LaneWalk, findsNothingWhereAllOrNoneAreMembers)
{
  Sample sample(50, 20, 9);
  std::fill(sample.bits.begin(), sample.bits.end(), LaneBits{0x00ff});
  expectNaive(sample);
  EXPECT_EQ(naiveDifferences(sample, Steps::CUMULATIVE), LaneNumbers{});
}

TEST(LaneWalk, countsMembersOfEachLane)
{
  Sample const sample(500, 9, 10);
  LaneNumbers expected{};
  for (LaneBits const bits : sample.bits)
    for (std::size_t lane = 0; lane < laneCount; ++lane) expected[lane] += bits >> lane & 1;
  EXPECT_EQ(membersAmong(orderedValues(sample.values.data(), 500), sample.bits), expected);
}

TEST(LaneWalk, isExactUpToTheLimitOfNarrowCountsAndBeyond)
{
  expectFullySeparated(92680, 46340, true);
  expectFullySeparated(92682, 46341, false);
  expectFullySeparated(300000, 150000, false);
  expectFullySeparated(300000, 7000, true);
}

} // namespace runsieve::test
