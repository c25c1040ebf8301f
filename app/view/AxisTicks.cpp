#include "app/view/AxisTicks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double room = 0.04; ///< at each end, of the range of the values

/// Significant digits as "%g", with a short exponent: "0.25", "1e-6".
std::string numberText(double value, int digits)
{
  char text[40];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  std::string number(text);
  std::size_t const e = number.find('e');
  if (e == std::string::npos) return number;
  std::string const sign = number[e + 1] == '-' ? "-" : "";
  std::size_t const first = number.find_first_not_of("+-0", e + 1);
  return number.substr(0, e + 1) + sign + number.substr(first);
}

/// Also of decades that no number reaches.
std::string decadeText(int decade)
{
  bool const isShort = decade >= -4 && decade <= 4;
  return isShort ? numberText(std::pow(10.0, decade), 6) : "1e" + std::to_string(decade);
}

/// The smallest of 1, 2 and 5 times a power of 10 that is no less.
double roundStep(double least)
{
  double const power = std::pow(10.0, std::floor(std::log10(least)));
  for (double const factor : {1.0, 2.0, 5.0})
    if (factor * power >= least) return factor * power;
  return 10.0 * power;
}

} // namespace

AxisScale::AxisScale(std::vector<double> const& values)
{
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (double const value : values) {
    if (!std::isfinite(value)) continue;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  if (low > high) low = high = 0.0;
  logarithmic = low > 0.0 && low < high / 100.0;
  if (!logarithmic) std::frexp(std::max(std::fabs(low), std::fabs(high)), &exponent);
  begin = position(low);
  length = position(high) - begin;
  if (length > 0.0) {
    begin -= room * length;
    length *= 1.0 + 2.0 * room;
  } else {
    begin -= 0.5;
    length = 1.0;
  }
}

double AxisScale::position(double value) const
{
  return logarithmic ? std::log10(value) : std::ldexp(value, -exponent);
}

double AxisScale::place(double value) const
{
  return (position(value) - begin) / length;
}

std::vector<AxisTick> AxisScale::ticks(std::size_t most) const
{
  return logarithmic ? decades(most) : steps(most);
}

std::vector<AxisTick> AxisScale::decades(std::size_t most) const
{
  int const first = static_cast<int>(std::ceil(begin));
  int const last = static_cast<int>(std::floor(begin + length));
  int const spans = static_cast<int>(most);
  int const step = std::max(1, (last - first + spans - 1) / spans);
  int decade = static_cast<int>(std::ceil(static_cast<double>(first) / step)) * step;
  std::vector<AxisTick> ticks;
  for (; decade <= last; decade += step) ticks.push_back({(decade - begin) / length, decadeText(decade)});
  return ticks;
}

std::vector<AxisTick> AxisScale::steps(std::size_t most) const
{
  double const step = roundStep(std::ldexp(length / static_cast<double>(most), exponent));
  double const low = std::ldexp(begin, exponent);
  double const high = std::ldexp(begin + length, exponent);
  if (!(step > 0.0) || !std::isfinite(low) || !std::isfinite(high)) return {};
  double const first = std::ceil(low / step);
  double const largest = std::max(std::fabs(low), std::fabs(high));
  constexpr int fewest = 6; // with fewer, 100 would be 1e2
  int const digits = std::clamp(static_cast<int>(std::ceil(std::log10(largest / step))) + 1, fewest, 17);
  std::vector<AxisTick> ticks;
  for (std::size_t i = 0; i <= most; ++i) {
    double const value = (first + static_cast<double>(i)) * step + 0.0; // not -0
    if (value > high) break;
    std::string const label = numberText(value, digits);
    bool const isNew = ticks.empty() || ticks.back().label != label;
    bool const isWithin =
        place(value) >= 0.0 && place(value) <= 1.0; // rounding moves it where steps are tiny
    if (isNew && isWithin) ticks.push_back({place(value), label});
  }
  return ticks;
}

} // namespace runsieve::app
