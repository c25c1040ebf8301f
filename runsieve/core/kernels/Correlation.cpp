#include <runsieve/core/kernels/Correlation.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace runsieve {

namespace {

double meanOf(double const* values, std::size_t n)
{
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) sum += values[i];
  return sum / static_cast<double>(n);
}

/// Whether the curve is the same value throughout; rounding in its mean would give it a spread.
bool isConstant(double const* values, std::size_t n)
{
  return std::all_of(values, values + n, [values](double value) { return value == values[0]; });
}

} // namespace

double centre(double const* curve, std::size_t n, double* deviations)
{
  std::fill(deviations, deviations + n, 0.0);
  if (n < 2 || isConstant(curve, n)) return 0.0;
  const double mean = meanOf(curve, n);
  double most = 0.0;
  bool finite = true;
  for (std::size_t i = 0; i < n; ++i) {
    finite = finite && std::isfinite(curve[i] - mean);
    most = std::max(most, std::abs(curve[i] - mean));
  }
  if (!finite || most == 0.0) return 0.0;
  int exponent = 0;
  std::frexp(most, &exponent);
  double squares = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    deviations[i] = std::ldexp(curve[i] - mean, -exponent);
    squares += deviations[i] * deviations[i];
  }
  return std::sqrt(squares);
}

double correlation(double products, double rootX, double rootY)
{
  return rootX > 0.0 && rootY > 0.0 ? std::clamp(products / (rootX * rootY), -1.0, 1.0) : 0.0;
}

double correlation(double const* x, double const* y, std::size_t n)
{
  std::vector<double> deviations(2 * n);
  double* dx = deviations.data();
  double* dy = dx + n;
  const double rootX = centre(x, n, dx);
  const double rootY = centre(y, n, dy);
  double products = 0.0;
  for (std::size_t i = 0; i < n; ++i) products += dx[i] * dy[i];
  return correlation(products, rootX, rootY);
}

} // namespace runsieve
