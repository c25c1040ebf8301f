#include <runsieve/core/coverage/ColorRamp.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

/// Lightness of both ends: the lightest still stands out from a white background.
constexpr double lightest = 0.88;
constexpr double darkest = 0.24;
// The same on dark.
constexpr double dimmest = 0.38;
constexpr double brightest = 0.95;

struct Lab
{
  double lightness;
  double a;
  double b;
};

/// Red, green and blue of linear intensity, 0 to 1.
using Linear = std::array<double, 3>;

double decoded(std::uint8_t byte)
{
  const double value = byte / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

std::uint8_t encoded(double linear)
{
  const double value = linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
  return static_cast<std::uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
}

Lab labOf(Color const& color)
{
  const double r = decoded(color[0]);
  const double g = decoded(color[1]);
  const double b = decoded(color[2]);
  const double l = std::cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
  const double m = std::cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
  const double s = std::cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
  return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
          1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
          0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

Linear linearOf(Lab const& lab)
{
  const double l = std::pow(lab.lightness + 0.3963377774 * lab.a + 0.2158037573 * lab.b, 3);
  const double m = std::pow(lab.lightness - 0.1055613458 * lab.a - 0.0638541728 * lab.b, 3);
  const double s = std::pow(lab.lightness - 0.0894841775 * lab.a - 1.2914855480 * lab.b, 3);
  return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
          -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
          -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

/// The colour of a lightness with as much of the given hue and chroma as sRGB has.
Color colorOf(double lightness, Lab const& hue)
{
  const auto withPart = [&](double part) { return linearOf({lightness, part * hue.a, part * hue.b}); };
  const auto isShown = [](Linear const& linear) {
    return std::all_of(linear.begin(), linear.end(), [](double v) { return v >= 0 && v <= 1; });
  };
  double part = 1;
  if (!isShown(withPart(1))) {
    double beyond = 1;
    part = 0;
    for (int i = 0; i < 12; ++i) {
      const double middle = (part + beyond) / 2;
      (isShown(withPart(middle)) ? part : beyond) = middle;
    }
  }
  const Linear linear = withPart(part);
  return {encoded(linear[0]), encoded(linear[1]), encoded(linear[2])};
}

} // namespace

ColorRamp::ColorRamp(Color const& color, bool onDark)
{
  const double first = onDark ? dimmest : lightest;
  const double last = onDark ? brightest : darkest;
  const Lab hue = labOf(color);
  for (std::size_t i = 0; i < steps; ++i) {
    const double position = static_cast<double>(i) / (steps - 1);
    colors[i] = colorOf(first + position * (last - first), hue);
  }
}

Color ColorRamp::at(double position) const
{
  const double inside = position > 0 ? std::min(position, 1.0) : 0;
  return colors[static_cast<std::size_t>(inside * (steps - 1) + 0.5)];
}

} // namespace runsieve
