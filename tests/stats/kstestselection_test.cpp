#include "support/PlotParts.h"
#include "support/TableBuilder.h"
#include <runsieve/core/kernels/KolmogorovSmirnov.h>

#include <gtest/gtest.h>

#include <vtkFloatArray.h>

#include <algorithm>
#include <cmath>

namespace runsieve::test {
namespace {

using Sample = std::vector<double>;

/// A ranked table: a pair of columns for each sample. The ranks play no part in the comparison.
vtkSmartPointer<vtkTable> rankedTable(std::vector<Sample> const& samples)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  for (std::size_t i = 0; i < samples.size(); ++i) {
    table->AddColumn(makeColumn("Rank of k" + std::to_string(i), Sample(samples[i].size(), -7.0)));
    table->AddColumn(makeColumn("Sorted k" + std::to_string(i), samples[i]));
  }
  return table;
}

/// A sample of n distinct ascending values between -1 and 1, shifted.
Sample wave(int n, double frequency, double shift)
{
  Sample values;
  for (int i = 0; i < n; ++i) values.push_back(std::sin(frequency * i) + shift);
  std::sort(values.begin(), values.end());
  return values;
}

struct KsTestSelectionTest : testing::Test
{
  PlotContainer container{nullptr};

  std::vector<PlotContainer::KsStatistics> const& compare(std::vector<Sample> const& a,
                                                          std::vector<Sample> const& b)
  {
    container.tables = {rankedTable(a), rankedTable(b)};
    container.ksTestSelection(0, 1);
    return container.ksStatistics;
  }

  void expectOne(double d, double p)
  {
    ASSERT_EQ(container.ksStatistics.size(), 1u);
    EXPECT_DOUBLE_EQ(container.ksStatistics[0].d, d);
    EXPECT_DOUBLE_EQ(container.ksStatistics[0].p, p);
  }
};

TEST_F(KsTestSelectionTest, EachParameterIsComparedWithItsOwnColumn)
{
  auto const& result = compare({{1, 2, 3, 4}, {10, 20, 30, 40}}, {{5, 6, 7, 8}, {11, 21, 31, 41}});
  ASSERT_EQ(result.size(), 2u);
  EXPECT_DOUBLE_EQ(result[0].d, 1.0);
  EXPECT_DOUBLE_EQ(result[1].d, 0.25);
}

TEST_F(KsTestSelectionTest, TheSampleSizeIsTheFloorOfTheHarmonicSize)
{
  // i = np.arange(60); a = np.sort(np.sin(1.7*i)); j = np.arange(85); b = np.sort(np.sin(0.9*j) + 0.4)
  // d = scipy.stats.ks_2samp(a, b).statistic; scipy.stats.kstwo.sf(d, 60*85 // 145), SciPy 1.10.1
  auto const& result = compare({wave(60, 1.7, 0.0)}, {wave(85, 0.9, 0.4)});
  ASSERT_EQ(result.size(), 1u);
  EXPECT_NEAR(result[0].d, 0.3, 1e-14);
  EXPECT_NEAR(result[0].p, 0.002733424412855845, 1e-12);
}

TEST_F(KsTestSelectionTest, AnyTwoTablesOfTheContainerCanBeCompared)
{
  container.tables = {
      nullptr, nullptr, nullptr, rankedTable({{1, 2}}), nullptr, nullptr, rankedTable({{3, 4}})};
  container.ksTestSelection(3, 6);
  expectOne(1.0, 1.0);
}

TEST_F(KsTestSelectionTest, IdenticalSamplesKeepADistanceOfOneStep)
{
  compare({{1, 2, 3, 4, 5}}, {{1, 2, 3, 4, 5}});
  expectOne(0.2, 1.0);
}

TEST_F(KsTestSelectionTest, DisjointSamplesAreOneApartInEitherOrder)
{
  const Sample low = wave(30, 1.3, 0.0), high = wave(25, 1.1, 9.0);
  for (auto const& [a, b] : {std::pair(low, high), std::pair(high, low)}) {
    auto const& result = compare({a}, {b});
    ASSERT_EQ(result.size(), 1u);
    EXPECT_NEAR(result[0].d, 1.0, 1e-14);
    EXPECT_LE(result[0].d, 1.0);
    EXPECT_LT(result[0].p, 1e-12);
  }
}

TEST_F(KsTestSelectionTest, NoSelectedRowsMeanNoDistance)
{
  compare({{}}, {{1, 2, 3}});
  expectOne(0.0, 1.0);
}

TEST_F(KsTestSelectionTest, NoOtherRowsMeanNoDistance)
{
  compare({{1, 2, 3}}, {{}});
  expectOne(0.0, 1.0);
}

TEST_F(KsTestSelectionTest, TwoEmptySamplesMeanNoDistance)
{
  compare({{}}, {{}});
  expectOne(0.0, 1.0);
}

TEST_F(KsTestSelectionTest, OneValueAgainstOneValueIsNeverSignificant)
{
  compare({{1}}, {{5}});
  expectOne(1.0, 1.0);
}

TEST_F(KsTestSelectionTest, NoStoredProbabilityPassesOne)
{
  for (int n = 1; n < 120; n += 3)
    for (double shift : {0.0, 0.02, 0.1, 0.5}) {
      auto const& result = compare({wave(n, 1.7, 0.0)}, {wave(3 * n, 0.9, shift)});
      ASSERT_EQ(result.size(), 1u);
      ASSERT_LE(result[0].p, 1.0) << n << ", " << shift;
      const double p =
          KolmogorovSmirnov<double*, double*>::p(result[0].d, static_cast<std::size_t>(3 * n / 4));
      ASSERT_EQ(result[0].p, std::min(p, 1.0)) << n << ", " << shift;
    }
}

TEST_F(KsTestSelectionTest, AResultReplacesTheOneBefore)
{
  compare({{1, 2}, {1, 2}, {1, 2}}, {{3, 4}, {3, 4}, {3, 4}});
  EXPECT_EQ(compare({{1, 2}}, {{3, 4}}).size(), 1u);
  EXPECT_TRUE(compare({}, {}).empty());
}

TEST_F(KsTestSelectionTest, ASingleColumnIsNoPair)
{
  container.ksStatistics = {{0.5, 0.5}};
  container.tables = {makeTable({{"Rank of k", {1, 2}}}), rankedTable({{1, 2}})};
  container.ksTestSelection(0, 1);
  EXPECT_TRUE(container.ksStatistics.empty());
}

TEST_F(KsTestSelectionTest, ANarrowerSecondTableLimitsTheComparison)
{
  EXPECT_EQ(compare({{1, 2}, {1, 2}}, {{3, 4}}).size(), 1u);
}

TEST_F(KsTestSelectionTest, MissingTablesGiveAnEmptyResult)
{
  container.ksStatistics = {{0.5, 0.5}};
  container.tables = {rankedTable({{1, 2}}), nullptr};
  container.ksTestSelection(0, 1);
  EXPECT_TRUE(container.ksStatistics.empty());

  container.ksStatistics = {{0.5, 0.5}};
  container.ksTestSelection(7, 9);
  EXPECT_TRUE(container.ksStatistics.empty());
}

TEST_F(KsTestSelectionTest, AColumnThatHoldsNoDoublesDoesNotBreakTheOthers)
{
  auto odd = rankedTable({{1, 2}});
  odd->AddColumn(makeColumn("Rank of k1", Sample{0, 0}));
  odd->AddColumn(makeColumn<vtkFloatArray>("Sorted k1", Sample{1, 2}));
  container.tables = {odd, rankedTable({{3, 4}, {3, 4}})};
  container.ksTestSelection(0, 1);
  ASSERT_GE(container.ksStatistics.size(), 1u);
  EXPECT_DOUBLE_EQ(container.ksStatistics[0].d, 1.0);
}

} // namespace
} // namespace runsieve::test
