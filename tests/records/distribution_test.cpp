#include <runsieve/records/Distribution.h>

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

using testing::Pair;

namespace runsieve {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Reference
{
  std::string name;
  std::function<std::unique_ptr<Distribution>()> make;
  int type;
  std::vector<std::pair<double, double>> densities; ///< x and density
  std::pair<double, double> support;
  std::pair<double, double> shown;
};

std::ostream& operator<<(std::ostream& out, Reference const& reference)
{
  return out << reference.name;
}

/// Densities are d.pdf(x), ends at the unbounded sides d.ppf(0.001) and d.ppf(0.999) of SciPy 1.10.1, d being
/// the distribution named beside each.
std::vector<Reference> references()
{
  return {
      {"Uniform", // uniform(-1, 4)
       [] { return uniformDistribution(-1, 3); },
       0,
       {{-1.0, 0.25}, {0.0, 0.25}, {3.0, 0.25}},
       {-1, 3},
       {-1, 3}},
      {"Normal", // norm(2, 0.5)
       [] { return normalDistribution(2, 0.5); },
       1,
       {{1.0, 0.1079819330263761},
        {2.0, 0.7978845608028654},
        {2.75, 0.2590351913317835},
        {-3.0, 1.538919725341284e-22}},
       {-infinity, infinity},
       {0.4548838469160934, 3.5451161530839066}},
      {"LogUniform", // loguniform(0.1, 10)
       [] { return logUniformDistribution(0.1, 10); },
       2,
       {{0.1, 2.171472409516259},
        {1.0, 0.21714724095162594},
        {7.0, 0.03102103442166085},
        {10.0, 0.02171472409516259}},
       {0.1, 10},
       {0.1, 10}},
      {"LogNormal", // lognorm(0.8, scale=numpy.exp(0.5))
       [] { return logNormalDistribution(0.5, 0.8); },
       3,
       {{0.1, 0.010785799279345924}, {1.0, 0.41020121068796883}, {4.0, 0.0674900538804608}},
       {0, infinity},
       {0, 19.534572509083212}},
      {"Gamma", // gamma(2.5, scale=1.5)
       [] { return gammaDistribution(2.5, 1.5); },
       4,
       {{0.2, 0.021368533361480754}, {2.0, 0.20352667466866572}, {9.0, 0.018269746667254724}},
       {0, infinity},
       {0, 15.386254239324654}},
      {"Exponential", // expon(scale=4)
       [] { return exponentialDistribution(0.25); },
       6,
       {{0.0, 0.25}, {1.0, 0.19470019576785122}, {10.0, 0.0205212496559747}},
       {0, infinity},
       {0, 27.631021115928544}},
      {"Weibull", // weibull_min(1.7, scale=3)
       [] { return weibullDistribution(1.7, 3); },
       7,
       {{0.5, 0.15415991151974964}, {2.0, 0.25827210363020486}, {6.0, 0.03572907140036829}},
       {0, infinity},
       {0, 9.35080216013232}},
      {"Beta", // beta(2, 3.5)
       [] { return betaDistribution(2, 3.5); },
       8,
       {{0.1, 1.210282717487943}, {0.4, 1.7567852458396853}, {0.9, 0.04482528583288674}},
       {0, 1},
       {0, 1}},
      {"Triangular", // triang(0.25, loc=1, scale=4)
       [] { return triangularDistribution(1, 2, 5); },
       9,
       {{1.5, 0.25}, {2.0, 0.5}, {4.0, 0.16666666666666666}},
       {1, 5},
       {1, 5}},
  };
}

void expectNear(double value, double expected)
{
  if (std::isinf(expected))
    EXPECT_EQ(value, expected);
  else
    EXPECT_NEAR(value, expected, 1e-9 * std::max(1e-3, std::fabs(expected)));
}

/// Midpoint rule; none of the references is unbounded within its shown range.
double integral(Distribution& distribution, std::pair<double, double> range)
{
  int const steps = 200000;
  double const step = (range.second - range.first) / steps;
  double sum = 0;
  for (int i = 0; i < steps; ++i) sum += distribution.getPdf(range.first + (i + 0.5) * step) * step;
  return sum;
}

struct DistributionTest : testing::TestWithParam<Reference>
{
  std::unique_ptr<Distribution> distribution = GetParam().make();
};

TEST_P(DistributionTest, HasItsNumber)
{
  EXPECT_EQ(distribution->getType(), GetParam().type);
}

TEST_P(DistributionTest, HasTheDensityOfTheReference)
{
  for (auto [x, density] : GetParam().densities)
    EXPECT_NEAR(distribution->getPdf(x), density, 1e-12 * density) << x;
}

TEST_P(DistributionTest, HasTheSupportOfItsDefinition)
{
  std::pair<double, double> const support = distribution->getRange(Distribution::support);
  EXPECT_EQ(support, GetParam().support);
}

TEST_P(DistributionTest, ShowsAllButOneThousandthAtEachUnboundedEnd)
{
  std::pair<double, double> const shown = distribution->getRange(Distribution::shown);
  expectNear(shown.first, GetParam().shown.first);
  expectNear(shown.second, GetParam().shown.second);
}

TEST_P(DistributionTest, IsZeroOutsideItsSupport)
{
  auto [lower, upper] = GetParam().support;
  for (double distance : {1e-6, 0.5, 1e3}) {
    EXPECT_EQ(distribution->getPdf(lower - distance), 0.0) << distance;
    EXPECT_EQ(distribution->getPdf(upper + distance), 0.0) << distance;
  }
  EXPECT_EQ(distribution->getPdf(-infinity), 0.0);
  EXPECT_EQ(distribution->getPdf(infinity), 0.0);
}

TEST_P(DistributionTest, CoversTheShownRange)
{
  std::pair<double, double> const shown = distribution->getRange(Distribution::shown);
  double const hidden =
      0.001 * (std::isinf(GetParam().support.first) + std::isinf(GetParam().support.second));
  EXPECT_NEAR(integral(*distribution, shown), 1.0 - hidden, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Kinds, DistributionTest, testing::ValuesIn(references()),
                         [](auto const& test) { return test.param.name; });

TEST(PointDistributionTest, HasNoDensityAndARangeOfOnePoint)
{
  for (double value : {-2.5, 0.0, 1e9}) {
    auto point = pointDistribution(value);
    EXPECT_EQ(point->getType(), 5);
    EXPECT_EQ(point->getPdf(value), 0.0);
    EXPECT_EQ(point->getPdf(value + 1), 0.0);
    EXPECT_THAT(point->getRange(Distribution::support), Pair(value, value));
    EXPECT_THAT(point->getRange(Distribution::shown), Pair(value, value));
  }
}

TEST(SpecialDistributionTest, AShapeOfOneMakesThemExponential)
{
  auto exponential = exponentialDistribution(0.5);
  auto gamma = gammaDistribution(1, 2);
  auto weibull = weibullDistribution(1, 2);
  for (double x : {0.0, 0.3, 5.0}) {
    EXPECT_NEAR(gamma->getPdf(x), exponential->getPdf(x), 1e-14) << x;
    EXPECT_NEAR(weibull->getPdf(x), exponential->getPdf(x), 1e-14) << x;
  }
}

TEST(SpecialDistributionTest, BetaWithBothShapesOneIsUniform)
{
  auto flat = betaDistribution(1, 1);
  for (double x : {0.1, 0.5, 0.9}) EXPECT_NEAR(flat->getPdf(x), 1.0, 1e-13) << x;
}

TEST(SpecialDistributionTest, AShapeBelowOneHasADensityAwayFromItsPole)
{
  // gamma(0.5, scale=2).pdf([0.2, 2.0, 9.0]) and .ppf(0.999), SciPy 1.10.1
  auto gamma = gammaDistribution(0.5, 2);
  EXPECT_NEAR(gamma->getPdf(0.2), 0.8071711293576809, 1e-12);
  EXPECT_NEAR(gamma->getPdf(2.0), 0.1037768743551487, 1e-12);
  EXPECT_NEAR(gamma->getPdf(9.0), 0.0014772828039793348, 1e-12);
  EXPECT_NEAR(gamma->getRange(Distribution::shown).second, 10.827566170662733, 1e-8);
  EXPECT_FALSE(std::isnan(gamma->getPdf(0.0)));
  EXPECT_FALSE(std::isnan(betaDistribution(0.5, 0.5)->getPdf(0.0)));
  EXPECT_FALSE(std::isnan(betaDistribution(0.5, 0.5)->getPdf(1.0)));
  EXPECT_FALSE(std::isnan(weibullDistribution(0.5, 1)->getPdf(0.0)));
}

TEST(SpecialDistributionTest, ATriangleMayStandUprightOnOneSide)
{
  auto rising = triangularDistribution(0, 2, 2);
  EXPECT_DOUBLE_EQ(rising->getPdf(1.0), 0.5);
  EXPECT_DOUBLE_EQ(rising->getPdf(2.0), 1.0);
  EXPECT_EQ(rising->getPdf(2.1), 0.0);
  auto falling = triangularDistribution(0, 0, 2);
  EXPECT_DOUBLE_EQ(falling->getPdf(0.0), 1.0);
  EXPECT_DOUBLE_EQ(falling->getPdf(1.0), 0.5);
  EXPECT_EQ(falling->getPdf(-0.1), 0.0);
}

TEST(DistributionParameterTest, EndsInTheWrongOrderAreRefused)
{
  EXPECT_THROW((void)uniformDistribution(3, -1), std::domain_error);
  EXPECT_THROW((void)logUniformDistribution(10, 0.1), std::domain_error);
  EXPECT_THROW((void)triangularDistribution(5, 2, 1), std::domain_error);
  EXPECT_THROW((void)triangularDistribution(1, 6, 5), std::domain_error);
  EXPECT_THROW((void)triangularDistribution(1, 0, 5), std::domain_error);
}

TEST(DistributionParameterTest, ALogarithmicRangeMustBePositive)
{
  EXPECT_THROW((void)logUniformDistribution(0, 10), std::domain_error);
  EXPECT_THROW((void)logUniformDistribution(-1, 10), std::domain_error);
}

TEST(DistributionParameterTest, WidthsScalesShapesAndRatesMustNotBeNegative)
{
  EXPECT_THROW((void)normalDistribution(2, -0.5), std::domain_error);
  EXPECT_THROW((void)logNormalDistribution(0.5, -0.8), std::domain_error);
  EXPECT_THROW((void)gammaDistribution(-2.5, 1.5), std::domain_error);
  EXPECT_THROW((void)gammaDistribution(2.5, -1.5), std::domain_error);
  EXPECT_THROW((void)exponentialDistribution(-0.25), std::domain_error);
  EXPECT_THROW((void)weibullDistribution(-1.7, 3), std::domain_error);
  EXPECT_THROW((void)weibullDistribution(1.7, -3), std::domain_error);
  EXPECT_THROW((void)betaDistribution(-2, 3.5), std::domain_error);
  EXPECT_THROW((void)betaDistribution(2, -3.5), std::domain_error);
}

TEST(DistributionParameterTest, WidthsScalesShapesAndRatesMustNotBeZero)
{
  EXPECT_THROW((void)normalDistribution(2, 0), std::domain_error);
  EXPECT_THROW((void)logNormalDistribution(0.5, 0), std::domain_error);
  EXPECT_THROW((void)gammaDistribution(0, 1.5), std::domain_error);
  EXPECT_THROW((void)gammaDistribution(2.5, 0), std::domain_error);
  EXPECT_THROW((void)exponentialDistribution(0), std::domain_error);
  EXPECT_THROW((void)weibullDistribution(0, 3), std::domain_error);
  EXPECT_THROW((void)weibullDistribution(1.7, 0), std::domain_error);
  EXPECT_THROW((void)betaDistribution(0, 3.5), std::domain_error);
  EXPECT_THROW((void)betaDistribution(2, 0), std::domain_error);
}

TEST(DistributionParameterTest, WhatIsNotFiniteIsRefused)
{
  for (double wrong : {notANumber, infinity, -infinity}) {
    EXPECT_THROW((void)pointDistribution(wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)uniformDistribution(wrong, 3), std::domain_error) << wrong;
    EXPECT_THROW((void)uniformDistribution(0, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)logUniformDistribution(1, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)logUniformDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)normalDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)normalDistribution(0, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)logNormalDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)logNormalDistribution(0, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)gammaDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)gammaDistribution(1, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)exponentialDistribution(wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)weibullDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)weibullDistribution(1, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)betaDistribution(wrong, 1), std::domain_error) << wrong;
    EXPECT_THROW((void)betaDistribution(1, wrong), std::domain_error) << wrong;
    EXPECT_THROW((void)triangularDistribution(wrong, 1, 2), std::domain_error) << wrong;
    EXPECT_THROW((void)triangularDistribution(0, wrong, 2), std::domain_error) << wrong;
    EXPECT_THROW((void)triangularDistribution(0, 1, wrong), std::domain_error) << wrong;
  }
}

} // namespace
} // namespace runsieve
