#include <runsieve/core/inference/TwoSampleP.h>

#include "core/inference/DrawnSamples.h"

#include <runsieve/core/inference/KolmogorovLimit.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace runsieve::test {

namespace {

using Ends = std::vector<std::uint32_t>;

Ends untied(std::uint32_t runs)
{
  Ends ends(runs);
  std::iota(ends.begin(), ends.end(), 1u);
  return ends;
}

TwoSampleP untiedP(std::uint32_t passing, std::uint32_t others, std::int64_t difference)
{
  return twoSampleP(untied(passing + others), passing, others, difference);
}

TwoSampleP pOf(DrawnSamples const& samples)
{
  SampleComparison const compared = samples.compared();
  return twoSampleP(samples.ordered.groupEnds, compared.passing, compared.others, compared.difference);
}

/// That of the largest difference there is, if no values tie: 2 of all splits.
double pOfApart(std::uint32_t passing, std::uint32_t others)
{
  double p = 2.0;
  for (std::uint32_t k = 1; k <= passing; ++k) p *= static_cast<double>(k) / (others + k);
  return p;
}

void expectClose(double found, double truth, double relative)
{
  EXPECT_NEAR(found, truth, relative * truth);
}

/// The exponent of ten of a number that may be beyond the range of doubles.
long exponentOf(std::string const& number)
{
  return std::strtol(number.c_str() + number.find('e') + 1, nullptr, 10);
}

} // namespace

TEST(TwoSampleP, isThatOfCountedPathsWithManyAndWithoutTies)
{
  TruthTable const table("two_sample_p.csv");
  ASSERT_EQ(table.size(), 2000u);
  for (std::size_t row = 0; row < table.size(); ++row) {
    SCOPED_TRACE(row);
    DrawnSamples const samples(table, row);
    EXPECT_EQ(samples.compared().difference, table.number(row, "difference"));
    TwoSampleP const found = pOf(samples);
    EXPECT_EQ(found.method, PMethod::Exact);
    EXPECT_FALSE(found.below);
    expectClose(found.p, table.number(row, "p"), 1e-11);
  }
}

TEST(TwoSampleP, isThatOfSciPyWithoutTies)
{
  TruthTable const table("two_sample_p.csv");
  std::size_t compared = 0;
  for (std::size_t row = 0; row < table.size(); ++row) {
    if (std::isnan(table.number(row, "p_scipy"))) continue;
    ++compared;
    SCOPED_TRACE(row);
    expectClose(pOf(DrawnSamples(table, row)).p, table.number(row, "p_scipy"), 1e-11);
  }
  EXPECT_EQ(compared, 1000u);
}

// R 4.2 finds p as a difference from 1, so that digits below 1e-12 are noise.
TEST(TwoSampleP, isThatOfRInTheDigitsThatRHas)
{
  TruthTable const table("two_sample_p.csv");
  TruthTable const r("two_sample_p_r.csv");
  ASSERT_EQ(table.size(), r.size());
  for (std::size_t row = 0; row < table.size(); ++row) {
    SCOPED_TRACE(row);
    EXPECT_NEAR(pOf(DrawnSamples(table, row)).p, r.number(row, "exact"), 2e-12);
  }
}

TEST(TwoSampleP, keepsItsDigitsDownTo1em300AndSaysThatItIsBelow)
{
  TruthTable const table("two_sample_p_tail.csv");
  std::size_t below = 0;
  for (std::size_t row = 0; row < table.size(); ++row) {
    SCOPED_TRACE(row);
    TwoSampleP const found = pOf(DrawnSamples(table, row));
    EXPECT_EQ(found.below, exponentOf(table.text(row, "p")) < -300);
    if (found.below) {
      EXPECT_EQ(found.p, 1e-300);
      ++below;
    } else {
      expectClose(found.p, table.number(row, "p"), 1e-11);
    }
  }
  EXPECT_GT(below, 10u);
}

TEST(TwoSampleP, isThatOfFiveKnownExamples)
{
  expectClose(untiedP(28, 73, 28 * 73).p, 2.9e-25, 0.02);
  expectClose(untiedP(5, 55, 5 * 55).p, 3.7e-7, 0.02);
  expectClose(untiedP(27, 33, 858).p, 1.4e-15, 0.04); // d 0.963
  expectClose(untiedP(5, 55, 135).p, 0.17, 0.02);     // d 0.491
  expectClose(untiedP(3, 997, 2369).p, 0.018, 0.02);  // d 0.792
}

TEST(TwoSampleP, keepsItsDigitsOverMillionsOfRuns)
{
  for (std::uint32_t const others : {1000u, 100000u, 2400000u}) {
    SCOPED_TRACE(others);
    TwoSampleP const found = untiedP(3, others, std::int64_t{3} * others);
    EXPECT_EQ(found.method, PMethod::Exact);
    expectClose(found.p, pOfApart(3, others), 1e-11);
  }
  // One passing run is as far out in as many of all places, at both ends.
  expectClose(untiedP(1, 999999, 999990).p, 20.0 / 1e6, 1e-11);
}

TEST(TwoSampleP, isTheSameForBothDirectionsAndEitherNameOfTheSamples)
{
  double const p = untiedP(30, 50, 700).p;
  EXPECT_EQ(untiedP(30, 50, -700).p, p);
  expectClose(untiedP(50, 30, 700).p, p, 1e-13);
}

TEST(TwoSampleP, countsSplitsByHandWithTies)
{
  // Values a a b b: of the 6 splits into 2 and 2 those with both passing at a or both at b differ by 1, the
  // other 4 not at all.
  Ends const ends{2, 4};
  expectClose(twoSampleP(ends, 2, 2, 4).p, 2.0 / 6.0, 1e-15);
  EXPECT_EQ(twoSampleP(ends, 2, 2, 0).p, 1.0);
  // a a a b: the passing one is b in one split of four, a in the others, by 1 and by 1/3.
  expectClose(twoSampleP({3, 4}, 1, 3, 3).p, 0.25, 1e-15);
  EXPECT_EQ(twoSampleP({3, 4}, 1, 3, 1).p, 1.0);
}

TEST(TwoSampleP, isOneIfAllValuesAreEqual)
{
  TwoSampleP const found = twoSampleP({40}, 10, 30, 0);
  EXPECT_EQ(found.p, 1.0);
  EXPECT_FALSE(found.below);
}

TEST(TwoSampleP, isUndefinedIfASampleIsEmpty)
{
  EXPECT_TRUE(std::isnan(twoSampleP({2}, 2, 0, 0).p));
  EXPECT_TRUE(std::isnan(twoSampleP({2}, 0, 2, 0).p));
  EXPECT_TRUE(std::isnan(twoSampleP({}, 0, 0, 0).p));
  EXPECT_TRUE(std::isnan(asymptoticP(0, 3, 0).p));
  EXPECT_FALSE(twoSampleP({}, 0, 0, 0).below);
}

TEST(TwoSampleP, isOfOneRunOnEachSide)
{
  EXPECT_EQ(untiedP(1, 1, 1).p, 1.0);
}

TEST(TwoSampleP, refusesWhatNoSampleCanHave)
{
  EXPECT_THROW((void)twoSampleP({3}, 2, 2, 1), std::invalid_argument);
  EXPECT_THROW((void)twoSampleP({}, 2, 2, 1), std::invalid_argument);
  EXPECT_THROW((void)twoSampleP({4}, 2, 2, 5), std::invalid_argument);
  EXPECT_THROW((void)twoSampleP({4}, 2, 2, std::numeric_limits<std::int64_t>::min()), std::invalid_argument);
  // More runs than numbers of places.
  EXPECT_THROW((void)twoSampleP({4294967294u}, 4294967295u, 4294967295u, 1), std::invalid_argument);
}

TEST(TwoSampleP, isAsymptoticForSamplesTooLargeToCount)
{
  std::uint32_t const runs = 100000;
  std::int64_t const difference = std::int64_t{runs} * 900; // d = 0.009
  TwoSampleP const found = untiedP(runs, runs, difference);
  EXPECT_EQ(found.method, PMethod::Asymptotic);
  EXPECT_EQ(found.p, asymptoticP(runs, runs, difference).p);
  // Fewer are counted, and come close to the limit.
  TwoSampleP const counted = untiedP(20000, 20000, 20000 * 200);
  EXPECT_EQ(counted.method, PMethod::Exact);
  EXPECT_NEAR(counted.p, asymptoticP(20000, 20000, 20000 * 200).p, 0.001);
}

TEST(TwoSampleP, isNeverZeroWhereTheLimitVanishes)
{
  TwoSampleP const found = untiedP(50000, 50000, std::int64_t{50000} * 50000);
  EXPECT_EQ(found.method, PMethod::Asymptotic);
  EXPECT_TRUE(found.below);
  EXPECT_EQ(found.p, 1e-300);
}

// R takes a difference from 1 here as well.
TEST(AsymptoticP, isThatOfRInTheDigitsThatRHas)
{
  TruthTable const table("two_sample_p.csv");
  TruthTable const r("two_sample_p_r.csv");
  for (std::size_t row = 0; row < table.size(); ++row) {
    SCOPED_TRACE(row);
    SampleComparison const compared = DrawnSamples(table, row).compared();
    TwoSampleP const found = asymptoticP(compared.passing, compared.others, compared.difference);
    EXPECT_EQ(found.method, PMethod::Asymptotic);
    EXPECT_NEAR(found.p, r.number(row, "asymptotic"), 2e-12);
  }
}

TEST(KolmogorovTail, isThatOfSciPy)
{
  TruthTable const table("kolmogorov_tail.csv");
  for (std::size_t row = 0; row < table.size(); ++row) {
    SCOPED_TRACE(row);
    expectClose(kolmogorovTail(table.number(row, "z")), table.number(row, "p"), 1e-14);
  }
}

TEST(KolmogorovTail, isOneUpToZeroAndZeroAtInfinity)
{
  EXPECT_EQ(kolmogorovTail(0.0), 1.0);
  EXPECT_EQ(kolmogorovTail(std::numeric_limits<double>::denorm_min()), 1.0);
  EXPECT_EQ(kolmogorovTail(std::numeric_limits<double>::infinity()), 0.0);
}

} // namespace runsieve::test
