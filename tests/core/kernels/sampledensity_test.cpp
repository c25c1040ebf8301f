#include <runsieve/core/kernels/SampleDensity.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace runsieve::test {
namespace {

using Sample = std::vector<double>;

/// The density of a sorted sample of fewer than 800 values from its definition: reflected at the borders of
/// the range, a Gaussian around each value, its width by the rule of thumb from `spread`.
double reflected(Sample const& sorted, double lower, double upper, double spread, double x)
{
  const double width = 1.06 * spread * std::pow(static_cast<double>(sorted.size()), -0.2);
  double sum = 0.0;
  for (double value : sorted)
    for (double source : {value, 2.0 * lower - value, 2.0 * upper - value})
      sum += std::exp(-0.5 * std::pow((x - source) / width, 2.0));
  return sum / (static_cast<double>(sorted.size()) * width * std::sqrt(2.0 * M_PI));
}

/// Most values near the middle, a few far off: there the quartiles are closer than the deviations tell.
Sample heavyTails(int count)
{
  Sample sample;
  for (int i = 0; i < count; ++i) {
    const double u = (i + 0.5) / count - 0.5;
    sample.push_back(50.0 + 20.0 * u + 600.0 * std::pow(u, 5.0) + (i % 2) * 4.0 / count);
  }
  return sample;
}

void expectBandwidthByQuartiles(Sample const& sample)
{
  const ParameterRange range{0.0, 100.0, 100.0, false};
  ASSERT_TRUE(std::is_sorted(sample.begin(), sample.end()));
  std::array<double, densityPoints> locations, density;
  sampleDensity(sample, range, locations.data(), density.data());
  const std::size_t n = sample.size();
  const double spread = (sample[3 * n / 4] - sample[n / 4]) / 1.34;
  for (int j = 0; j < densityPoints; ++j) {
    const double expected = reflected(sample, 0.0, 100.0, spread, locations[j]);
    // What the evaluation of the kernel may lose.
    EXPECT_NEAR(density[j], expected, 1e-9) << j;
  }
}

TEST(SampleDensityTest, OfAHeavyTailedSampleIsAsWideAsItsQuartilesTell)
{
  for (int count : {40, 41, 42, 43, 799}) {
    SCOPED_TRACE(count);
    expectBandwidthByQuartiles(heavyTails(count));
  }
}

} // namespace
} // namespace runsieve::test
