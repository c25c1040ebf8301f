#include <runsieve/core/kernels/UnivariateDensityDerivative.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using testing::Each;

namespace {

using Values = std::vector<double>;
using Real = long double;

const Real pi = std::acos(Real(-1));

Values evaluate(Values sources, Values targets, double bandwidth, int order = 0, double accuracy = 0.01)
{
  Values results(targets.size(), -99.0);
  UnivariateDensityDerivative estimate(static_cast<int>(sources.size()), static_cast<int>(targets.size()),
                                       sources.data(), targets.data(), bandwidth, order, accuracy,
                                       results.data());
  estimate.Evaluate();
  return results;
}

/// He_0 = 1, He_1 = u, He_{r+1} = u He_r - r He_{r-1}.
Real hermite(int order, Real u)
{
  Real former = 0, current = 1;
  for (int r = 0; r < order; ++r) {
    const Real next = u * current - r * former;
    former = current;
    current = next;
  }
  return current;
}

/// The largest value that one kernel takes, as a scale for errors; He_r(u) exp(-u u / 2) is at most sqrt(r!).
Real scale(double bandwidth, int order)
{
  return std::sqrt(std::tgamma(Real(order + 1))) / (std::sqrt(2 * pi) * std::pow(Real(bandwidth), order + 1));
}

/// The definition, source by source, in extended precision.
Values directSum(Values const& sources, Values const& targets, double bandwidth, int order)
{
  Values results;
  for (double target : targets) {
    Real sum = 0;
    for (double source : sources) {
      const Real u = (Real(target) - Real(source)) / Real(bandwidth);
      sum += hermite(order, u) * std::exp(-u * u / 2);
    }
    const Real norm = std::sqrt(2 * pi) * sources.size() * std::pow(Real(bandwidth), order + 1);
    results.push_back(static_cast<double>((order % 2 ? -1 : 1) * sum / norm));
  }
  return results;
}

void expectDefinition(Values const& sources, Values const& targets, double bandwidth, int order,
                      double tolerance = 1e-10)
{
  const Values found = evaluate(sources, targets, bandwidth, order);
  const Values expected = directSum(sources, targets, bandwidth, order);
  const auto allowed = static_cast<double>(tolerance * scale(bandwidth, order));
  for (std::size_t j = 0; j < targets.size(); ++j)
    ASSERT_NEAR(found[j], expected[j], allowed)
        << "order " << order << ", h " << bandwidth << ", target " << j;
}

Values grid(int count, double from, double to)
{
  Values values;
  for (int j = 0; j < count; ++j) values.push_back(from + (to - from) * j / (count - 1));
  return values;
}

/// Values between 0 and 1 without any order.
Values scattered(int count)
{
  Values values;
  for (int i = 0; i < count; ++i) values.push_back(0.5 + 0.5 * std::sin(12.9898 * i + 0.3));
  return values;
}

Values ascending(Values values)
{
  std::sort(values.begin(), values.end());
  return values;
}

TEST(DensityTest, SmallSampleAgainstAReference)
{
  // s = np.array([0.1, 0.25, 0.3, 0.7]); scipy.stats.gaussian_kde(s, 0.1/s.std(ddof=1))([0.0, 0.25,
  // 0.5, 1.0]) SciPy 1.10.1
  const Values expected{0.6598271835844617, 2.201352966431827, 0.3141101593642741, 0.011079621053290401};
  const Values found = evaluate({0.1, 0.25, 0.3, 0.7}, {0.0, 0.25, 0.5, 1.0}, 0.1);
  for (std::size_t j = 0; j < expected.size(); ++j) EXPECT_NEAR(found[j], expected[j], 1e-12) << j;
}

TEST(DensityTest, SortedSourcesOnAnEvenGrid)
{
  for (double bandwidth : {0.001, 0.02, 0.1, 0.5})
    expectDefinition(ascending(scattered(600)), grid(200, 0, 1), bandwidth, 0);
}

TEST(DensityTest, UnsortedSources)
{
  for (double bandwidth : {0.001, 0.02, 0.1, 0.5})
    expectDefinition(scattered(600), grid(200, 0, 1), bandwidth, 0);
}

TEST(DensityTest, UnsortedTargets)
{
  for (int order : {0, 1, 2}) {
    expectDefinition(ascending(scattered(300)), scattered(150), 0.05, order);
    expectDefinition(scattered(300), scattered(150), 0.05, order);
  }
}

TEST(DensityTest, TargetsAtUnequalDistances)
{
  Values targets;
  for (int j = 0; j < 100; ++j) targets.push_back(std::pow(j / 99.0, 3.0));
  for (double bandwidth : {0.003, 0.1}) expectDefinition(ascending(scattered(400)), targets, bandwidth, 0);
}

TEST(DensityTest, DescendingAndRepeatedTargets)
{
  expectDefinition(ascending(scattered(200)), grid(50, 1, 0), 0.05, 0);
  expectDefinition(ascending(scattered(200)), {0.5, 0.5, 0.5, 0.2, 0.2}, 0.05, 0);
}

TEST(DensityTest, DerivativesFollowTheHermitePolynomials)
{
  for (int order : {1, 2, 3, 4, 6})
    for (double bandwidth : {0.02, 0.2}) expectDefinition(scattered(250), grid(200, 0, 1), bandwidth, order);
}

TEST(DensityTest, DerivativesAreSlopesOfTheDensity)
{
  const Values sources = scattered(80);
  const double h = 0.1, step = 1e-4;
  for (double y : {0.1, 0.35, 0.8}) {
    const Values f = evaluate(sources, {y - step, y, y + step}, h);
    EXPECT_NEAR(evaluate(sources, {y}, h, 1)[0], (f[2] - f[0]) / (2 * step), 1e-4) << y;
    EXPECT_NEAR(evaluate(sources, {y}, h, 2)[0], (f[2] - 2 * f[1] + f[0]) / (step * step), 1e-3) << y;
  }
}

TEST(DensityTest, SourcesFarOutsideTheTargetsStillCount)
{
  expectDefinition({-3.0, -0.2, 0.5, 1.1, 4.0}, grid(200, 0, 1), 0.7, 0);
  expectDefinition({-30.0, -20.0}, grid(200, 0, 1), 5.0, 0);
}

TEST(DensityTest, ASingleSourceIsTheKernel)
{
  const Values found = evaluate({2.0}, {2.0, 2.5, 1.5}, 0.5);
  EXPECT_NEAR(found[0], 0.7978845608028654, 1e-14); // 1/(sqrt(2 pi) 0.5)
  EXPECT_NEAR(found[1], 0.4839414490382867, 1e-14); // the same times exp(-1/2)
  EXPECT_NEAR(found[2], found[1], 1e-15);
}

TEST(DensityTest, ASingleTarget)
{
  for (int order : {0, 1, 2}) expectDefinition(scattered(50), {0.4}, 0.1, order);
}

TEST(DensityTest, ATinyBandwidthSeesOnlyItsOwnSource)
{
  const Values found = evaluate({0.0, 0.5, 1.0}, grid(5, 0, 1), 1e-12);
  const double peak = 1 / (std::sqrt(2 * M_PI) * 3e-12);
  EXPECT_NEAR(found[0], peak, 1e-9 * peak);
  EXPECT_EQ(found[1], 0.0);
  EXPECT_NEAR(found[2], peak, 1e-9 * peak);
  EXPECT_EQ(found[3], 0.0);
}

TEST(DensityTest, AHugeBandwidthIsFlat)
{
  const Values found = evaluate(scattered(20), grid(200, 0, 1), 1e8);
  const double level = 1 / (std::sqrt(2 * M_PI) * 1e8);
  for (double value : found) ASSERT_NEAR(value, level, 1e-12 * level);
}

TEST(DensityTest, BandwidthsBetweenTheExtremes)
{
  for (double bandwidth : {1e-6, 1e-4, 1.0 / 199, 0.01, 1.0, 10.0, 1e4})
    for (int order : {0, 1, 2})
      expectDefinition(ascending(scattered(100)), grid(200, 0, 1), bandwidth, order);
}

TEST(DensityTest, ValuesFarFromZeroLoseNothing)
{
  Values sources = ascending(scattered(100)), targets = grid(200, 0, 1);
  for (double& value : sources) value = value * 1024 + 1048576;
  for (double& value : targets) value = value * 1024 + 1048576;
  expectDefinition(sources, targets, 32.0, 0, 1e-9);
}

TEST(DensityTest, TheDensityIntegratesToOneAndIsNeverNegative)
{
  const Values found = evaluate(scattered(500), grid(2001, -2, 3), 0.08);
  double sum = 0;
  for (double value : found) {
    EXPECT_GE(value, 0.0);
    sum += value * 5 / 2000;
  }
  EXPECT_NEAR(sum, 1.0, 1e-9);
}

TEST(DensityTest, AnyAccuracyAskedForIsKept)
{
  const Values sources = scattered(400), targets = grid(200, 0, 1);
  for (double accuracy : {0.5, 0.01, 1e-6, 1e-9, 0.0}) {
    const Values found = evaluate(sources, targets, 0.05, 0, accuracy),
                 expected = directSum(sources, targets, 0.05, 0);
    for (std::size_t j = 0; j < targets.size(); ++j) ASSERT_NEAR(found[j], expected[j], 1e-9) << accuracy;
  }
}

TEST(DensityTest, NothingToSumGivesZero)
{
  EXPECT_THAT(evaluate({}, {0.0, 1.0}, 0.1), Each(0.0));
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (double bandwidth : {0.0, -1.0, infinity, std::nan("")})
    EXPECT_THAT(evaluate({0.5}, {0.0, 1.0}, bandwidth), Each(0.0)) << bandwidth;
  EXPECT_TRUE(evaluate({0.5}, {}, 0.1).empty());
}

TEST(DensityTest, ASourceThatIsNoNumberSpoilsEveryResult)
{
  for (Values const& sources :
       {Values{std::nan(""), 0.1, 0.2}, Values{0.1, std::nan(""), 0.2}, Values{0.1, 0.2, std::nan("")}})
    for (int order : {0, 1})
      for (double value : evaluate(sources, grid(10, 0, 1), 0.05, order)) EXPECT_TRUE(std::isnan(value));
}

TEST(DensityTest, InputsAreNotChanged)
{
  Values sources = scattered(30), targets{0.9, 0.1, 0.5}, results(3);
  const Values sourcesBefore = sources, targetsBefore = targets;
  UnivariateDensityDerivative(30, 3, sources.data(), targets.data(), 0.1, 0, 0.01, results.data()).Evaluate();
  EXPECT_EQ(sources, sourcesBefore);
  EXPECT_EQ(targets, targetsBefore);
}

} // namespace
