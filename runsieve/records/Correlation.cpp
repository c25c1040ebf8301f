#include <runsieve/records/Correlation.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

double mean(double const* values, std::size_t n)
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

double correlation(double const* x, double const* y, std::size_t n)
{
  if (n < 2 || isConstant(x, n) || isConstant(y, n)) return 0.0;
  const double meanX = mean(x, n);
  const double meanY = mean(y, n);
  double products = 0.0;
  double squaresX = 0.0;
  double squaresY = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const double dx = x[i] - meanX;
    const double dy = y[i] - meanY;
    products += dx * dy;
    squaresX += dx * dx;
    squaresY += dy * dy;
  }
  // One root each: the product of the squares can leave the range of a double.
  const double r = products / (std::sqrt(squaresX) * std::sqrt(squaresY));
  return std::isfinite(r) ? std::clamp(r, -1.0, 1.0) : 0.0;
}

} // namespace runsieve
