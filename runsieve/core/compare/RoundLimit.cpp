#include <runsieve/core/compare/RoundLimit.h>

#include <charconv>
#include <cstddef>
#include <limits>

namespace runsieve {

namespace {

/// The values on both sides of a limit; infinite where there is none.
struct Gap
{
  double below = -std::numeric_limits<double>::infinity(); ///< largest of those below it
  double above = std::numeric_limits<double>::infinity();  ///< least of those above it
  bool isValue = false;                                    ///< whether it is one of them itself
};

Gap gapAround(std::vector<double> const& values, double limit)
{
  Gap gap;
  for (double const value : values) {
    if (value < limit && value > gap.below) gap.below = value;
    if (value > limit && value < gap.above) gap.above = value;
    gap.isValue = gap.isValue || value == limit;
  }
  return gap;
}

/// The limit with so many digits.
double withDigits(double limit, int digits)
{
  constexpr std::size_t room = 40;
  char text[room];
  auto const written = std::to_chars(text, text + room, limit, std::chars_format::scientific, digits - 1);
  double rounded = limit;
  std::from_chars(text, written.ptr, rounded);
  return rounded;
}

} // namespace

double roundLimit(std::vector<double> const& values, double limit, bool isLow)
{
  Gap const gap = gapAround(values, limit);
  auto const separates = [&](double rounded) {
    if (isLow) return rounded > gap.below && (gap.isValue ? rounded <= limit : rounded <= gap.above);
    return rounded < gap.above && (gap.isValue ? rounded >= limit : rounded >= gap.below);
  };
  for (int digits = 1; digits < std::numeric_limits<double>::max_digits10; ++digits) {
    double const rounded = withDigits(limit, digits);
    if (separates(rounded)) return rounded + 0.0; // no minus zero
  }
  return limit;
}

} // namespace runsieve
