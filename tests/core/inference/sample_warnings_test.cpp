#include <runsieve/core/inference/SampleWarnings.h>

#include "UniformDraws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace runsieve::test {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

std::vector<double const*> arraysOf(std::vector<Column> const& columns)
{
  std::vector<double const*> arrays;
  for (Column const& column : columns) arrays.push_back(column.data());
  return arrays;
}

SampleDesign designOf(std::vector<Column> const& columns)
{
  return sampleDesign(arraysOf(columns), columns.empty() ? 0 : columns[0].size());
}

std::vector<FewLevels> levelsOf(std::vector<Column> const& columns, std::size_t few = 10)
{
  return fewLevels(ordersOf(columns), arraysOf(columns), few);
}

/// The i-th number of the van der Corput sequence, whose columns make a Halton sequence.
double radicalInverse(std::size_t i, std::size_t base)
{
  double value = 0.0;
  double digit = 1.0 / static_cast<double>(base);
  for (; i > 0; i /= base, digit /= static_cast<double>(base)) value += digit * static_cast<double>(i % base);
  return value;
}

/// Strata in random order, one draw in each.
Column hypercubeColumn(std::size_t runs, std::uint64_t seed)
{
  Column column = uniformColumns(1, runs, seed)[0];
  RandomStream random(seed, 77);
  std::vector<std::uint32_t> strata(runs);
  std::iota(strata.begin(), strata.end(), 0u);
  for (std::size_t i = runs; i > 1; --i)
    std::swap(strata[i - 1], strata[random.below(static_cast<std::uint32_t>(i))]);
  for (std::size_t run = 0; run < runs; ++run)
    column[run] = (strata[run] + column[run]) / static_cast<double>(runs);
  return column;
}

} // namespace

TEST(FewLevels, areToldWithTheirNumber)
{
  const std::vector<FewLevels> found = levelsOf({{1, 5, 1, 1, NONE}, {1, 2, 3, 4, 5}}, 4);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].parameter, 0u);
  EXPECT_EQ(found[0].levels, 2u);
  EXPECT_FALSE(found[0].lattice);
}

TEST(FewLevels, areALatticeIfEquallySpacedOrTheirLogarithmsAre)
{
  const std::vector<FewLevels> found = levelsOf({{0, 0.1, 0.2, 0.3}, {0.01, 0.1, 1, 10}, {-1, 1, 2, 4}});
  ASSERT_EQ(found.size(), 3u);
  EXPECT_TRUE(found[0].lattice);
  EXPECT_TRUE(found[1].lattice);
  EXPECT_FALSE(found[2].lattice);
}

TEST(FewLevels, areFoundOnALongLatticeThatManyRunsShare)
{
  std::vector<Column> columns = uniformColumns(2, 1000, 1);
  for (double& value : columns[0]) value = std::floor(50.0 * value);
  const std::vector<FewLevels> found = levelsOf(columns);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].levels, 50u);
  EXPECT_TRUE(found[0].lattice);
}

TEST(FewLevels, ofConstantsNoValuesAndNoRunsAreNone)
{
  EXPECT_TRUE(levelsOf({{3, 3, 3}, {NONE, NONE, NONE}}).empty());
  EXPECT_TRUE(levelsOf({{}}).empty());
}

TEST(FewLevels, withInfiniteValuesAreNoLattice)
{
  const std::vector<FewLevels> found = levelsOf({{-INFINITE, 0, INFINITE}});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_FALSE(found[0].lattice);
}

TEST(DesignCorrelations, areToldFromTheStrongestOn)
{
  std::vector<Column> columns = uniformColumns(4, 500, 2);
  for (std::size_t run = 0; run < 500; ++run) {
    columns[1][run] = columns[0][run] + 0.5 * columns[1][run];
    columns[3][run] = -columns[2][run] + 0.1 * columns[3][run];
  }
  const std::vector<DesignCorrelation> found = designCorrelations(ordersOf(columns), 500);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].first, 2u);
  EXPECT_EQ(found[0].second, 3u);
  EXPECT_LT(found[0].r, -0.9);
  EXPECT_EQ(found[1].first, 0u);
  EXPECT_EQ(found[1].second, 1u);
  EXPECT_FALSE(found[0].copy);
}

TEST(DesignCorrelations, tellCopiesByAnyStrictlyMonotoneFunction)
{
  std::vector<Column> columns = uniformColumns(3, 300, 3);
  for (std::size_t run = 0; run < 300; ++run) {
    columns[0][run] = run % 7 == 0 ? 0.5 : columns[0][run];
    columns[1][run] = std::exp(columns[0][run]);
    columns[2][run] = -std::pow(columns[0][run], 3);
  }
  const std::vector<DesignCorrelation> found = designCorrelations(ordersOf(columns), 300);
  ASSERT_EQ(found.size(), 3u);
  for (DesignCorrelation const& pair : found) EXPECT_TRUE(pair.copy);
  EXPECT_EQ(found[1].r, -1.0);
}

TEST(DesignCorrelations, tellNoCopyWhereOneRunLacksAValueOrTiesDiffer)
{
  Column x(100);
  std::iota(x.begin(), x.end(), 0.0);
  Column lacking = x;
  lacking[50] = NONE;
  Column tied = x;
  tied[1] = tied[0];
  const std::vector<DesignCorrelation> found = designCorrelations(ordersOf({x, lacking, tied}), 100);
  ASSERT_EQ(found.size(), 3u);
  for (DesignCorrelation const& pair : found) {
    EXPECT_GT(pair.r, 0.999);
    EXPECT_FALSE(pair.copy);
  }
}

TEST(DesignCopies, areThoseThatCorrelationsFind)
{
  std::vector<Column> columns = uniformColumns(6, 200, 9);
  columns[2] = columns[0];
  for (double& value : columns[2]) value = std::exp(value);
  columns[4] = columns[0];
  for (double& value : columns[4]) value = -value;
  columns[5] = columns[1];
  columns[5][7] = NONE;
  const std::vector<DesignCorrelation> found = designCopies(ordersOf(columns), 200);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].first, 0u);
  EXPECT_EQ(found[0].second, 2u);
  EXPECT_EQ(found[0].r, 1.0);
  EXPECT_EQ(found[1].first, 0u);
  EXPECT_EQ(found[1].second, 4u);
  EXPECT_EQ(found[1].r, -1.0);
  EXPECT_TRUE(found[0].copy && found[1].copy);
}

TEST(DesignCorrelations, ofConstantsAndNoRunsAreNone)
{
  EXPECT_TRUE(designCorrelations(ordersOf({{1, 1, 1}, {1, 2, 3}}), 3).empty());
  EXPECT_TRUE(designCorrelations(ordersOf({{}, {}}), 0).empty());
}

TEST(SampleDesign, isIndependentForDraws)
{
  EXPECT_EQ(designOf(uniformColumns(3, 200, 4)), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf(uniformColumns(1, 200, 5)), SampleDesign::INDEPENDENT);
}

TEST(SampleDesign, isAlmostNeverTakenForAnotherForDraws)
{
  int others = 0;
  for (std::uint64_t scan = 0; scan < 2000; ++scan)
    others += designOf(uniformColumns(1, 20 + scan % 50, scan)) != SampleDesign::INDEPENDENT;
  EXPECT_LE(others, 1);
}

TEST(SampleDesign, isASweepIfTheOnlyParameterThatVariesGoesOneWay)
{
  const Column rising = {1, 2, 3, 4, 5, 6, 7, 9};
  const Column falling = {9, 7, 6, 5, 4, 3, 2, 1};
  const Column turning = {1, 2, 3, 4, 5, 6, 9, 7};
  EXPECT_EQ(designOf({rising}), SampleDesign::SWEEP);
  EXPECT_EQ(designOf({Column(8, 1.0), falling, Column(8, 7.0)}), SampleDesign::SWEEP);
  EXPECT_EQ(designOf({turning}), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf({rising, turning}), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf({{1, 2, 3, 4, 5, 6, 7}}), SampleDesign::INDEPENDENT) << "draws can do that by chance";
}

TEST(SampleDesign, isASweepOverLevelsThatSeveralRunsShare)
{
  const Column three = {1, 1, 1, 1, 2, 2, 2, 2, 5, 5, 5, 5};
  EXPECT_EQ(designOf({three}), SampleDesign::SWEEP);
  EXPECT_EQ(designOf({{1, 1, 1, 2, 2, 2, 5, 5, 5}}), SampleDesign::INDEPENDENT) << "chance 1.2e-3";
}

TEST(SampleDesign, ofOneParameterThatIsDrawnInStrataIsAHypercube)
{
  EXPECT_EQ(designOf({hypercubeColumn(40, 3)}), SampleDesign::LATIN_HYPERCUBE);
}

TEST(SampleDesign, isALatticeIfAllCombinationsOfLevelsAreThereEquallyOften)
{
  std::vector<Column> columns(3);
  for (int run = 0; run < 48; ++run) {
    columns[0].push_back(run % 2);
    columns[1].push_back(std::pow(10.0, run / 2 % 3));
    columns[2].push_back(run / 6 % 4);
  }
  EXPECT_EQ(designOf(columns), SampleDesign::LATTICE);
  columns[0][5] = 1.0 - columns[0][5];
  EXPECT_EQ(designOf(columns), SampleDesign::INDEPENDENT);
}

TEST(SampleDesign, isALatinHypercubeIfEachStratumHoldsOneValue)
{
  std::vector<Column> columns;
  for (std::uint64_t p = 0; p < 4; ++p) columns.push_back(hypercubeColumn(100, p));
  for (double& value : columns[1]) value = std::exp(5.0 * value); // uniform logarithms
  for (double& value : columns[2]) value = 100.0 - 3.0 * value;
  EXPECT_EQ(designOf(columns), SampleDesign::LATIN_HYPERCUBE);
  columns[3] = uniformColumns(1, 100, 8)[0];
  EXPECT_EQ(designOf(columns), SampleDesign::INDEPENDENT);
}

TEST(SampleDesign, isASequenceIfTheFirstRunsAreEvenAsWell)
{
  std::vector<Column> columns(4);
  for (std::size_t run = 1; run <= 1000; ++run)
    for (std::size_t p = 0; p < 4; ++p)
      columns[p].push_back(radicalInverse(run, std::vector<std::size_t>{2, 3, 5, 7}[p]));
  EXPECT_EQ(designOf(columns), SampleDesign::SEQUENCE);
}

TEST(SampleDesign, isNotToldOfFewRunsOrMissingOrInfiniteValues)
{
  EXPECT_EQ(designOf({hypercubeColumn(10, 1), hypercubeColumn(10, 2)}), SampleDesign::INDEPENDENT);
  std::vector<Column> columns = {hypercubeColumn(50, 1), hypercubeColumn(50, 2)};
  EXPECT_EQ(designOf(columns), SampleDesign::LATIN_HYPERCUBE);
  columns[0][3] = INFINITE;
  EXPECT_EQ(designOf(columns), SampleDesign::INDEPENDENT);
  columns[0][3] = NONE;
  EXPECT_EQ(designOf(columns), SampleDesign::INDEPENDENT);
}

TEST(SampleDesign, ofNoRunsParametersOrVariationIsIndependent)
{
  EXPECT_EQ(designOf({}), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf({{}}), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf({{1.0}, {2.0}}), SampleDesign::INDEPENDENT);
  EXPECT_EQ(designOf({Column(30, 1.0), Column(30, 2.0)}), SampleDesign::INDEPENDENT);
}

TEST(SampleDesign, isNotToldOfARangeWhoseWidthIsNoNumberOrTooSmallForOne)
{
  Column huge = hypercubeColumn(30, 1);
  for (double& value : huge) value = (value - 0.5) * 2.0 * 1.7e308;
  Column tiny = hypercubeColumn(30, 2);
  for (double& value : tiny) value *= 1e-310;
  EXPECT_EQ(designOf({huge, tiny}), SampleDesign::INDEPENDENT);
}

} // namespace runsieve::test
