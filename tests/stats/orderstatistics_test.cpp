#include "support/OrderStatisticsFilters.h"
#include "support/Selections.h"

#include <runsieve/core/kernels/OrderStatistics.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <random>

using testing::Each;
using testing::ElementsAre;
using testing::IsNan;

namespace runsieve::test {
namespace {

using Sample = std::vector<double>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double denormal = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();

std::size_t mostBins()
{
  return static_cast<std::size_t>(vtkSmartPointer<vtkOrderStatistics>::New()->GetMaximumHistogramSize());
}

FiveNumbers fiveNumbers(Sample const& sample)
{
  return orderStatistics(sample.data(), sample.size(), 1, mostBins()).at(0);
}

FiveNumbers filtered(Sample const& sample)
{
  const Sample numbersOfFilter = numbers(filteredQuantiles(makeTable({{"x", sample}})), "x");
  FiveNumbers five{};
  std::copy_n(numbersOfFilter.begin(), five.size(), five.begin());
  return five;
}

/// Bit for bit, but for the bits of NaN.
void expectSame(FiveNumbers const& found, FiveNumbers const& wanted)
{
  for (std::size_t i = 0; i < found.size(); ++i) {
    const bool same = std::isnan(wanted[i]) ? std::isnan(found[i])
                                            : std::memcmp(&found[i], &wanted[i], sizeof(double)) == 0;
    EXPECT_TRUE(same) << "number " << i << ": " << found[i] << " instead of " << wanted[i];
  }
}

void expectAsFiltered(Sample const& sample)
{
  SCOPED_TRACE(std::to_string(sample.size()) + " values from " + std::to_string(sample.at(0)));
  expectSame(fiveNumbers(sample), filtered(sample));
}

/// Samples of all sizes by one rule, which gets random numbers from 0 up to 1.
class RandomSamples
{
public:
  explicit RandomSamples(unsigned seed) : random(seed) {}

  void expectAsFiltered(std::function<double(double)> const& value, std::size_t most = 6000)
  {
    for (std::size_t size : {std::size_t{1}, std::size_t{2}, std::size_t{7}, std::size_t{1000},
                             std::size_t{1001}, 1002 + random() % 2000, most})
      if (size <= most) test::expectAsFiltered(make(size, value));
  }

  Sample make(std::size_t size, std::function<double(double)> const& value)
  {
    Sample sample;
    for (std::size_t i = 0; i < size; ++i)
      sample.push_back(value(static_cast<double>(random()) / 4294967296.0));
    return sample;
  }

  std::mt19937 random;
};

struct OrderStatistics : testing::TestWithParam<unsigned>
{
  RandomSamples samples{GetParam()};
};

TEST_P(OrderStatistics, OfAnyNumbersAreThoseOfTheFilter)
{
  samples.expectAsFiltered([](double u) { return u; });
  samples.expectAsFiltered([](double u) { return 1e4 * (u - 0.5); });
  samples.expectAsFiltered([](double u) { return -std::exp(30.0 * u); });
}

TEST_P(OrderStatistics, OfLatticesAndTiesAreThoseOfTheFilter)
{
  for (double levels : {1.0, 2.0, 10.0, 999.0, 1001.0, 2500.0})
    samples.expectAsFiltered([levels](double u) { return 0.1 * std::floor(levels * u) - 20.0; });
}

TEST_P(OrderStatistics, OfNumbersWithHardlyABitBetweenThemAreThoseOfTheFilter)
{
  samples.expectAsFiltered([](double u) { return denormal * std::floor(3000.0 * u); });
  samples.expectAsFiltered([](double u) { return -denormal * std::floor(1e6 * u); });
  samples.expectAsFiltered([](double u) { return 1e300 * (1.0 + 2.3e-16 * std::floor(3000.0 * u)); });
  samples.expectAsFiltered([](double u) { return u < 0.5 ? -0.0 : 0.0; });
  samples.expectAsFiltered([](double u) { return u < 0.3 ? -0.0 : u < 0.6 ? 0.0 : u; });
}

TEST_P(OrderStatistics, OfHugeRangesAreThoseOfTheFilter)
{
  samples.expectAsFiltered([](double u) { return std::exp(1400.0 * (u - 0.5)); });
  samples.expectAsFiltered([](double u) { return largest * u; });
  samples.expectAsFiltered([](double u) { return 2.0 * (u - 0.5) * largest; });
  samples.expectAsFiltered([](double u) { return u < 0.5 ? largest : -largest; });
}

TEST_P(OrderStatistics, OfSomeInfiniteValuesAreThoseOfTheFilter)
{
  samples.expectAsFiltered([](double u) { return u < 0.1 ? infinity : std::floor(100.0 * u); });
  samples.expectAsFiltered([](double u) { return u < 0.1 ? -infinity : std::floor(100.0 * u); });
  samples.expectAsFiltered([](double u) { return u < 0.001 ? infinity : u; });
  samples.expectAsFiltered([](double u) { return u < 0.001 ? -infinity : u; });
  samples.expectAsFiltered([](double u) { return u < 0.5 ? -infinity : infinity; });
}

TEST_P(OrderStatistics, OfUndefinedValuesAmongOthersAreThoseOfTheFilter)
{
  samples.expectAsFiltered([](double u) { return u < 0.2 ? nan : std::floor(100.0 * u); });
  samples.expectAsFiltered([](double u) { return u < 0.2 ? nan : u; });
  samples.expectAsFiltered([](double u) { return u < 0.1 ? nan : u < 0.2 ? -infinity : u; });
  samples.expectAsFiltered([](double u) { return nan; });
}

INSTANTIATE_TEST_SUITE_P(Seeds, OrderStatistics, testing::Range(1U, 4U));

TEST(OrderStatisticsOfManyRuns, AreThoseOfTheFilter)
{
  RandomSamples samples(9);
  expectAsFiltered(samples.make(100000, [](double u) { return std::exp(3.0 * u); }));
  expectAsFiltered(samples.make(50000, [](double u) { return std::floor(3000.0 * u) / 7.0; }));
}

TEST(OrderStatisticsOfStackedRuns, ArePerTimePoint)
{
  // More times than are taken at once.
  constexpr std::size_t runs = 1500, times = 37;
  RandomSamples samples(5);
  const Sample stacked = samples.make(runs * times, [](double u) { return u - 0.3; });
  const auto found = orderStatistics(stacked.data(), runs, times, mostBins());
  ASSERT_EQ(found.size(), times);
  for (std::size_t t = 0; t < times; ++t) {
    Sample sample;
    for (std::size_t run = 0; run < runs; ++run) sample.push_back(stacked[run * times + t]);
    SCOPED_TRACE(t);
    expectSame(found[t], filtered(sample));
  }
}

TEST(OrderStatisticsOfAFewValues, AreThemselvesOrTheMeanOfTwo)
{
  EXPECT_THAT(fiveNumbers({4, 1, 3, 2}), ElementsAre(1, 1.5, 2.5, 3.5, 4));
  EXPECT_THAT(fiveNumbers({5, 3, 1, 2, 4}), ElementsAre(1, 1.5, 3, 4, 5));
  EXPECT_THAT(fiveNumbers({7}), Each(7.0));
}

TEST(OrderStatisticsOfAFewValues, CountAnUndefinedOneAsTheLeastBeforeIt)
{
  EXPECT_THAT(fiveNumbers({2, nan, 1, 3}), ElementsAre(1, 1.5, 2, 2.5, 3));
  EXPECT_THAT(fiveNumbers({nan, 2, 1, 3}), Each(IsNan()));
}

TEST(OrderStatisticsOfAFewValues, ShowAZeroByTheSignThatComesFirst)
{
  for (double first : {0.0, -0.0})
    for (double number : fiveNumbers({first, -first, -first}))
      EXPECT_EQ(std::signbit(number), std::signbit(first)) << first;
}

TEST(OrderStatisticsInAFewBins, RoundToHalfAsManySteps)
{
  // 5 values and 3 bins: steps of (10 - 0) / 3, then, since 4 bins are in use, steps of 5.
  const Sample sample{0, 2, 6, 9, 10};
  EXPECT_THAT(orderStatistics(sample.data(), 5, 1, 3).at(0), ElementsAre(0, 0, 5, 10, 10));
}

} // namespace
} // namespace runsieve::test
