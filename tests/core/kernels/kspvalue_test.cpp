#include "support/MemoryPeak.h"

#include <runsieve/core/kernels/KolmogorovSmirnov.h>

#include <boost/math/special_functions/gamma.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Ks = KolmogorovSmirnov<double*, double*>;

/// The p-value of a statistic d at sample size n, and the evaluators behind it.
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Equal to as many digits as were written down.
void expectDigits(double value, double expected, int digits)
{
  EXPECT_NEAR(value, expected, std::fabs(expected) * 0.5001 * std::pow(10.0, 1 - digits));
}

void expectRelative(double value, double expected, double tolerance)
{
  EXPECT_NEAR(value, expected, std::fabs(expected) * tolerance);
}

TEST(KsPValueTest, SampleValues)
{
  expectDigits(Ks::p(0.3, 10), 0.270536, 6);
  expectDigits(Ks::p(0.5, 10), 0.00777741, 6);
  expectDigits(Ks::p(0.7, 10), 7.735e-06, 6);
  expectDigits(Ks::p(0.1, 200), 0.0341890, 6);
  expectDigits(Ks::p(0.2, 200), 1.73179e-07, 6);
  expectDigits(Ks::p(0.95, 10), 1.95313e-13, 6);
  expectDigits(Ks::p(0.21, 10), 0.695964, 6);
}

TEST(KsPValueTest, AStatisticUpToTwoStepsIsCertain)
{
  EXPECT_EQ(Ks::p(0.0, 1), 1.0);
  EXPECT_EQ(Ks::p(0.0, 1000), 1.0);
  for (std::size_t n : {2u, 10u, 140u, 141u, 5000u})
    EXPECT_EQ(Ks::p(2.0 / static_cast<double>(n), n), 1.0) << n;
  EXPECT_LT(Ks::p(std::nextafter(0.2, 1.0), 10), 1.0);
  EXPECT_EQ(Ks::p(-0.3, 10), 1.0);
}

TEST(KsPValueTest, NoSampleAndOneValueAreCertain)
{
  for (double d : {0.0, 0.5, 1.0}) {
    EXPECT_EQ(Ks::p(d, 0), 1.0) << d;
    EXPECT_EQ(Ks::p(d, 1), 1.0) << d;
  }
}

TEST(KsPValueTest, TheLargestStatisticOfMediumSizesIsImpossible)
{
  for (std::size_t n = 4; n <= 140; ++n) EXPECT_EQ(Ks::p(1.0, n), 0.0) << n;
}

TEST(KsPValueTest, ADistanceLessThanAStepBelowOneHasAClosedForm)
{
  EXPECT_EQ(Ks::p(0.95, 10), 2.0 * std::pow(1.0 - 0.95, 10.0));
  EXPECT_EQ(Ks::p(0.99, 50), 2.0 * std::pow(1.0 - 0.99, 50.0));
}

TEST(KsPValueTest, SmallSamplesTakeTheFiniteSumFromFourOn)
{
  // 16 * 0.5 * 0.5 is exactly 4
  EXPECT_EQ(Ks::p(0.5, 16), Ks::miller(0.5, 16));
  const double below = std::nextafter(0.5, 0.0);
  EXPECT_EQ(Ks::p(below, 16), 1.0 - Ks::durbin(below, 16));
  EXPECT_GT(Ks::p(below, 16), Ks::p(0.5, 16) * 1.05) << "the evaluators must differ here";
}

TEST(KsPValueTest, SampleSize141IsTheFirstOfTheLargeOnes)
{
  const double d = std::sqrt(2.2 / 141.0) * (1.0 + 1e-9);
  EXPECT_EQ(Ks::p(d, 141), Ks::miller(d, 141));
  EXPECT_EQ(Ks::p(d, 140), 1.0 - Ks::durbin(d, 140));
}

TEST(KsPValueTest, LargeSamplesTakeTheSeriesUpToAndWith2Point2)
{
  const double d = 0.12491131605836449;
  ASSERT_EQ((141.0 * d) * d, 2.2);
  EXPECT_EQ(Ks::p(d, 141), 1.0 - Ks::pelzGood(d, 141));
  const double above = std::nextafter(d, 1.0);
  EXPECT_EQ(Ks::p(above, 141), Ks::miller(above, 141));
}

TEST(KsPValueTest, LargeSamplesAreCutOffAbove370)
{
  EXPECT_EQ(Ks::p(0.9, 500), 0.0);
  EXPECT_EQ(Ks::p(0.1, 37001), 0.0);
  EXPECT_EQ(Ks::p(0.99, 400), 0.0);
}

TEST(KsPValueTest, MediumSamplesHaveNoCutOff)
{
  // 2 * scipy.stats.ksone.sf(0.9, 140) - 2 * 0.1**140, SciPy 1.10.1
  EXPECT_EQ(Ks::p(0.9, 140), Ks::miller(0.9, 140));
  expectRelative(Ks::p(0.9, 140), 8.559736009372258e-142, 1e-10);
}

TEST(KsPValueTest, AnUndefinedStatisticStaysUndefined)
{
  EXPECT_TRUE(std::isnan(Ks::p(notANumber, 10)));
  EXPECT_TRUE(std::isnan(Ks::p(notANumber, 1000)));
}

TEST(KsPValueTest, TheFiniteSumIsTheTailWithoutItsFirstTerm)
{
  // 2 * scipy.stats.ksone.sf(d, n) - 2 * (1 - d)**n, SciPy 1.10.1
  expectRelative(Ks::miller(0.5, 16), 0.00028806552895460635, 1e-10);
  expectRelative(Ks::miller(0.35, 60), 4.47739405076471e-07, 1e-10);
  expectRelative(Ks::miller(0.2, 200), 1.7317874617300036e-07, 1e-10);
  expectRelative(Ks::miller(0.13, 150), 0.011384005305999853, 1e-10);
  expectRelative(Ks::miller(0.06, 1000), 0.001428597887952891, 1e-10);
}

TEST(KsPValueTest, ARoundingRestBelowZeroInTheLastTermOfTheSumCountsAsZero)
{
  // (1 - d) - t is -5.6e-17 there; values as above
  expectRelative(Ks::p(7.0 / 12.0, 12), 0.00015282627129515204, 1e-10);
  expectRelative(Ks::p(8.0 / 13.0, 13), 2.0758419477716187e-05, 1e-10);
  expectRelative(Ks::p(14.0 / 23.0, 23), 9.599744932273121e-09, 1e-10);
  for (std::size_t n = 4; n < 400; ++n)
    for (std::size_t k = 1; k < n; ++k)
      ASSERT_FALSE(std::isnan(Ks::p(static_cast<double>(k) / static_cast<double>(n), n))) << k << "/" << n;
}

TEST(KsPValueTest, TheFiniteSumEndsForStatisticsOutsideTheUnitRange)
{
  EXPECT_EQ(Ks::miller(1.5, 20), 0.0);
  EXPECT_EQ(Ks::miller(infinity, 20), 0.0);
  EXPECT_EQ(Ks::p(1.7, 140), 0.0);
}

TEST(KsPValueTest, TheFiniteSumDoublesAOneSidedTailAndSoPassesOne)
{
  // 2 * scipy.stats.ksone.sf(0.05, 100) is 1.16
  EXPECT_GT(Ks::miller(0.05, 100), 1.0);
}

/// The finite sum, each factorial computed when it is needed.
double sumOfTerms(double d, std::size_t n)
{
  auto const logFactorial = [](std::size_t k) { return boost::math::lgamma(static_cast<double>(k + 1)); };
  const double N = static_cast<double>(n);
  double sum = 0.0;
  for (std::size_t j = 1; j <= n; ++j) {
    const double t = static_cast<double>(j) / N;
    const double rest = (1.0 - d) - t;
    if (rest <= 0.0) break;
    sum +=
        std::exp(logFactorial(n) - logFactorial(n - j) - logFactorial(j) +
                 static_cast<double>(j - 1) * std::log(t + d) + static_cast<double>(n - j) * std::log(rest));
  }
  return (d + d) * sum;
}

/// Factorials below a limit are kept from one call to the next. A value must not tell on which side of it
/// they are.
TEST(KsPValueTest, TheFiniteSumOfHugeSamplesHasEveryBit)
{
  for (std::size_t n : {262142, 262143, 262144, 262145})
    EXPECT_EQ(Ks::miller(0.004, n), sumOfTerms(0.004, n)) << n;
  EXPECT_EQ(Ks::miller(0.0035, 400000), sumOfTerms(0.0035, 400000));
  // from the same formula in another implementation; libraries of elementary functions differ in the last
  // bits
  expectRelative(Ks::miller(0.004, 262144), 0x1.dbb3ee11b1ffbp-12, 1e-9);
  expectRelative(Ks::miller(0.003, 1000000), 0x1.051e3075e0dcbp-25, 1e-9);
}

TEST(KsPValueTest, TheFiniteSumOfHugeSamplesKeepsLittleMemory)
{
  const runsieve::test::MemoryPeak peak;
  EXPECT_GT(Ks::p(0.001, 3000000), 0.0);
  EXPECT_LT(peak.bytes(), 6 << 20);
}

TEST(KsPValueTest, TheMatrixIsExactWhereTheCornerNeedsNoCorrection)
{
  // scipy.stats.kstwo.cdf(d, n), SciPy 1.10.1; here ceil(d n) - d n <= 1/2 or d n is whole
  expectRelative(Ks::durbin(0.3, 10), 0.7294644252000005, 1e-12);
  expectRelative(Ks::durbin(0.275, 20), 0.9208553171379292, 1e-12);
  expectRelative(Ks::durbin(0.19, 50), 0.9530106717979387, 1e-12);
  expectRelative(Ks::durbin(0.11, 50), 0.4560992034092699, 1e-11);
  expectRelative(Ks::durbin(0.09, 140), 0.8053053370154262, 1e-11);
}

TEST(KsPValueTest, TheCornerCorrectionIsAddedUnpowered)
{
  // scipy.stats.kstwo.sf(0.21, 10), with the power: 0.6963025889106403
  EXPECT_NEAR(Ks::p(0.21, 10), 0.6959640925049941, 1e-12);
}

TEST(KsPValueTest, TheMatrixGivesWayToAClosedTailAtHundredRuns)
{
  // 1 - 2 * exp(-(d*d*n) * (1.409/n + (0.331/sqrt(n) + 2.000071))); the matrix would give 0.9990989339851155
  EXPECT_NEAR(Ks::durbin(0.194, 100), 0.99909892703288, 1e-13);
  // d d n = 3.732: still the matrix. scipy.stats.kstwo.cdf(19.7/104, 104); the closed tail is 7.1e-9 below
  EXPECT_NEAR(Ks::durbin(19.7 / 104.0, 104), 0.9990337536531892, 1e-11);
}

TEST(KsPValueTest, SmallerSizesHaveNoClosedTail)
{
  // scipy.stats.kstwo.cdf(0.3, 99); the closed tail would give 0.9999999761314032
  EXPECT_NEAR(Ks::durbin(0.3, 99), 0.9999999787049799, 1e-12);
}

TEST(KsPValueTest, TheMatrixRefusesSizesThatAreNoNumbers)
{
  EXPECT_TRUE(std::isnan(Ks::durbin(notANumber, 10)));
  EXPECT_TRUE(std::isnan(Ks::durbin(infinity, 10)));
}

TEST(KsPValueTest, RoundingCanTakeTheMatrixPastOneWhereItIsNotAskedFor)
{
  EXPECT_GT(Ks::durbin(0.91, 16), 1.0);
  EXPECT_NEAR(Ks::durbin(0.91, 16), 1.0, 1e-15);
  EXPECT_GE((16 * 0.91) * 0.91, 4.0) << "the finite sum stands there";
  // The tails that are left to a difference from 1 are far greater than its rounding.
  double least = 1.0;
  for (std::size_t n = 2; n < 400; ++n)
    for (int k = 1; k <= 100; ++k) {
      const auto N = static_cast<double>(n);
      const double limit = std::min(std::sqrt((n < 141 ? 4.0 : 2.2) / N), 1.0 - 1.0 / N);
      least = std::min(least, Ks::p(std::nextafter(limit, 0.0) * k / 100.0, n));
    }
  EXPECT_GT(least, 5e-5);
}

TEST(KsPValueTest, TheSeriesHasItsTwoLeadingOrders)
{
  // z = d*sqrt(n); k = np.arange(1, 121, 2); u = np.arange(-60, 60) + 0.5
  // sqrt(2*pi)/z*exp(-k**2*pi**2/(8*z*z)).sum()
  //   + sqrt(pi/2)/(6*z**4)*((pi**2*u**2 - z*z)*exp(-pi**2*u**2/(2*z*z))).sum()/sqrt(n), NumPy 1.24.2
  // The sums stop once a term is below 1e-5 of the whole, hence the tolerance.
  EXPECT_NEAR(Ks::pelzGood(0.1, 200), 0.9658109724592855, 1e-7);
  EXPECT_NEAR(Ks::pelzGood(0.05, 500), 0.8413810289685183, 1e-7);
  EXPECT_NEAR(Ks::pelzGood(0.04, 1000), 0.9206545088353034, 1e-7);
  EXPECT_NEAR(Ks::pelzGood(0.02, 5000), 0.9638573523261614, 1e-7);
  EXPECT_NEAR(Ks::pelzGood(0.03, 400), 0.1467515813181451, 1e-7);
}

TEST(KsPValueTest, TheSeriesEndsForTinyStatistics)
{
  // all terms vanish there, so that no ratio of terms ever tells the sums to stop
  EXPECT_FALSE(Ks::pelzGood(1e-200, 200) > 0.0);
  EXPECT_FALSE(Ks::pelzGood(0.0, 200) > 0.0);
  EXPECT_EQ(Ks::p(2.1e-6, 1000000), 1.0);
}

TEST(KsPValueTest, LargeSamplesAgreeWithTheExactDistributionInTheFirstOrders)
{
  // scipy.stats.kstwo.sf(d, n), SciPy 1.10.1. The orders left out are of size 1/n, so 1/n bounds the error.
  EXPECT_NEAR(Ks::p(0.1, 200), 1.0 - 0.9658896491968462, 1.0 / 200);
  EXPECT_NEAR(Ks::p(0.05, 500), 1.0 - 0.8413373977618464, 1.0 / 500);
  EXPECT_NEAR(Ks::p(0.02, 5000), 1.0 - 0.9638605860467436, 1.0 / 5000);
}

} // namespace
