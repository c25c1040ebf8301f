#include <runsieve/core/kernels/TwoSampleTest.h>

#include <runsieve/core/kernels/KolmogorovSmirnov.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

using Ks = KolmogorovSmirnov<double*, double*>;

} // namespace

double sortedStatistic(double const* a, std::size_t nA, double const* b, std::size_t nB)
{
  if (nA == 0 || nB == 0) return 0.0;
  // The one instance of the class is for pointers that may write, which the walk does not do.
  auto* firstA = const_cast<double*>(a);
  auto* firstB = const_cast<double*>(b);
  return Ks::statistic(firstA, firstA + nA, firstB, firstB + nB);
}

TwoSampleTest testOf(double statistic, std::size_t nA, std::size_t nB)
{
  const auto sizeA = static_cast<double>(nA);
  const auto sizeB = static_cast<double>(nB);
  const double effective = std::floor(sizeA * sizeB / (sizeA + sizeB)); // NaN for two empty samples
  const std::size_t n = effective > 0.0 ? static_cast<std::size_t>(effective) : 0;
  return {std::min(Ks::p(statistic, n), 1.0), statistic};
}

} // namespace runsieve
