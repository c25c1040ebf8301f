#include <runsieve/core/coverage/DensityScale.h>

#include <runsieve/core/coverage/RunCoverage.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace runsieve::test {
namespace {

using Kind = DensityScale::Kind;

CountHistogram histogramOf(std::vector<double> const& runs)
{
  std::vector<std::uint32_t> counts;
  for (const double r : runs) counts.push_back(static_cast<std::uint32_t>(r * RunCoverage::perRun));
  CountHistogram histogram;
  histogram.add(counts.data(), counts.size());
  return histogram;
}

/// Many pixels of few runs, few of many: 1 to 5,000.
std::vector<double> skewed()
{
  std::vector<double> runs;
  for (int i = 1; i <= 5000; ++i) runs.push_back(5000.0 / i);
  return runs;
}

TEST(CountHistogram, HasBinsOfEvenRatioFromOneRunOn)
{
  EXPECT_EQ(CountHistogram::binOf(0), 0);
  EXPECT_EQ(CountHistogram::binOf(RunCoverage::perRun), 0);
  EXPECT_EQ(CountHistogram::binOf(2 * RunCoverage::perRun), 64);
  EXPECT_EQ(CountHistogram::binOf(UINT32_MAX), CountHistogram::bins - 1);
  for (std::size_t bin = 0; bin < CountHistogram::bins; ++bin) {
    const double low = CountHistogram::lowerEdge(bin);
    EXPECT_NEAR(CountHistogram::lowerEdge(bin + 1) / low, 1.011, 0.005);
    EXPECT_EQ(CountHistogram::binOf(static_cast<std::uint32_t>(std::ceil(low * RunCoverage::perRun))), bin);
  }
}

TEST(CountHistogram, LeavesOutThatLessThanOneRunCovers)
{
  const CountHistogram histogram = histogramOf({0, 0.5, 2, 0.99, 7});
  std::uint64_t pixels = 0;
  for (const std::uint64_t n : histogram.pixelsPerBin()) pixels += n;
  EXPECT_EQ(pixels, 2);
  EXPECT_EQ(histogram.smallest(), 2);
  EXPECT_EQ(histogram.largest(), 7);
}

TEST(DensityScale, GoesFromTheSmallestToTheLargestCount)
{
  for (const Kind kind : {Kind::logarithmic, Kind::equalArea}) {
    const DensityScale scale(kind, histogramOf(skewed()));
    EXPECT_EQ(scale.smallest(), 1);
    EXPECT_EQ(scale.largest(), 5000);
    EXPECT_EQ(scale.position(1), 0);
    EXPECT_EQ(scale.position(5000), 1);
    EXPECT_EQ(scale.position(0.1), 0);
    EXPECT_EQ(scale.position(1e9), 1);
    EXPECT_EQ(scale.position(std::numeric_limits<double>::quiet_NaN()), 0);
    double before = 0;
    for (double runs = 1; runs < 5000; runs *= 1.003) {
      EXPECT_GE(scale.position(runs), before);
      before = scale.position(runs);
    }
    EXPECT_GT(before, 0.99);
  }
}

TEST(DensityScale, IsLogarithmic)
{
  const DensityScale scale(Kind::logarithmic, histogramOf({2, 20, 200}));
  EXPECT_NEAR(scale.position(20), 0.5, 1e-12);
  EXPECT_NEAR(scale.position(2 * std::sqrt(10)), 0.25, 1e-12);
}

TEST(DensityScale, GivesAllPartsOfTheRampToEquallyManyPixels)
{
  const auto runs = skewed();
  const DensityScale scale(Kind::equalArea, histogramOf(runs));
  std::vector<int> perTenth(10);
  for (const double r : runs)
    ++perTenth[std::min<std::size_t>(9, static_cast<std::size_t>(10 * scale.position(r)))];
  for (const int pixels : perTenth) EXPECT_NEAR(pixels, 500, 100);
}

TEST(DensityScale, MarksPowersOfTen)
{
  const DensityScale scale(Kind::logarithmic, histogramOf(skewed()));
  const auto marks = scale.decades();
  ASSERT_EQ(marks.size(), 4);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(marks[i].runs, std::pow(10, i));
    EXPECT_EQ(marks[i].position, scale.position(marks[i].runs));
  }
  EXPECT_TRUE(DensityScale(Kind::logarithmic, histogramOf({12, 90})).decades().empty());
}

TEST(DensityScale, PutsASingleCountAtTheDarkEnd)
{
  for (const Kind kind : {Kind::logarithmic, Kind::equalArea}) {
    EXPECT_EQ(DensityScale(kind, histogramOf({6, 6})).position(6), 1);
    const DensityScale edges(kind, histogramOf({0.3, 0.6}));
    EXPECT_EQ(edges.smallest(), 1);
    EXPECT_EQ(edges.largest(), 1);
    EXPECT_EQ(edges.position(1), 1);
  }
}

TEST(DensityScale, OfAnEmptyPictureIsEmpty)
{
  for (const Kind kind : {Kind::logarithmic, Kind::equalArea}) {
    const DensityScale scale(kind, histogramOf({0, 0}));
    EXPECT_EQ(scale.smallest(), 0);
    EXPECT_EQ(scale.largest(), 0);
    EXPECT_TRUE(scale.decades().empty());
    EXPECT_TRUE(std::isfinite(scale.position(1)));
  }
}

TEST(DensityScale, FewRunsAreNotPale)
{
  using Kind = DensityScale::Kind;
  EXPECT_EQ(DensityScale(Kind::logarithmic, histogramOf({1, 200})).shade(1), 0);
  EXPECT_EQ(DensityScale(Kind::logarithmic, histogramOf({1, 200})).shade(200), 1);
  EXPECT_NEAR(DensityScale(Kind::logarithmic, histogramOf({1, 10})).shade(1), 0.25, 1e-12);
  EXPECT_NEAR(DensityScale(Kind::logarithmic, histogramOf({1, 10})).shade(std::sqrt(10.0)), 0.625, 1e-12);
  EXPECT_EQ(DensityScale(Kind::logarithmic, histogramOf({1, 1})).shade(1), 0.5);
}

} // namespace
} // namespace runsieve::test
