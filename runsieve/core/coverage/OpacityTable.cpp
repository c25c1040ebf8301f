#include <runsieve/core/coverage/OpacityTable.h>

#include <cmath>

namespace runsieve {

namespace {

/// Less of the background shows in no picture of 8 bits.
constexpr double invisible = 1.0 / 4096;

/// Opacity that one step of the table adds at most if it has several coats: straight steps of that size are
/// off by less than 1 / 30,000.
constexpr double largestStep = 1.0 / 64;

/// The logarithm of RunCoverage::perRun.
constexpr int coatBits = 8;

/// Steps of 2^20 coats: then even the largest count is a few steps.
constexpr int mostBits = 28;

} // namespace

OpacityTable::OpacityTable(double opacity) : shift(coatBits)
{
  const double a = opacity > 0 ? std::fmin(opacity, 1.0) : 0;
  double coats = 1; // of a step
  for (; shift < mostBits && 2 * coats * a <= largestStep; coats *= 2) ++shift;
  unit = 1 / static_cast<float>(1U << shift);
  const std::size_t most = (UINT32_MAX >> shift) + std::size_t{1};
  values.push_back(0);
  for (std::size_t i = 1; i <= most; ++i) {
    const double left = std::pow(1 - a, static_cast<double>(i) * coats);
    values.push_back(static_cast<float>(left < invisible ? 1 : 1 - left));
    if (left < invisible) break;
  }
  last = static_cast<std::uint32_t>(values.size() - 1);
}

} // namespace runsieve
