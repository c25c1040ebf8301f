#include <runsieve/core/inference/KolmogorovLimit.h>

#include <cmath>

namespace runsieve {

namespace {

constexpr double EIGHTH_OF_SQUARED_PI = 1.2337005501361697;
constexpr double ROOT_OF_TWO_PI = 2.5066282746310002;

/// For z up to 1 the fourth term is below 1e-26 of the whole.
double smallZ(double z)
{
  double const x = EIGHTH_OF_SQUARED_PI / (z * z);
  return 1.0 - ROOT_OF_TWO_PI / z * (std::exp(-x) + std::exp(-9.0 * x) + std::exp(-25.0 * x));
}

/// For z from 1 the fifth term is below 1e-20 of the whole.
double largeZ(double z)
{
  double const x = 2.0 * z * z;
  return 2.0 * (std::exp(-x) - std::exp(-4.0 * x) + std::exp(-9.0 * x) - std::exp(-16.0 * x));
}

} // namespace

double kolmogorovTail(double z)
{
  // Below 0.04 the tail differs from 1 by less than 1e-300.
  if (z < 0.04) return 1.0;
  return z < 1.0 ? smallZ(z) : largeZ(z);
}

} // namespace runsieve
