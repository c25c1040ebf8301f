#include <runsieve/core/coverage/ColorRamp.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

/// Relative luminance of linear light (ITU-R BT.709).
double luminance(Color const& color)
{
  const auto linear = [](std::uint8_t byte) { return std::pow(byte / 255.0, 2.2); };
  return 0.2126 * linear(color[0]) + 0.7152 * linear(color[1]) + 0.0722 * linear(color[2]);
}

/// In OKLab by way of CIE XYZ, as Ottosson defines it.
std::array<double, 3> labOf(Color const& color)
{
  const auto linear = [](std::uint8_t byte) {
    const double value = byte / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  using Matrix = std::array<std::array<double, 3>, 3>;
  const auto times = [](Matrix const& matrix, std::array<double, 3> const& v) {
    std::array<double, 3> product = {};
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t k = 0; k < 3; ++k) product[i] += matrix[i][k] * v[k];
    return product;
  };
  constexpr Matrix xyz = {{{0.4124564, 0.3575761, 0.1804375},
                           {0.2126729, 0.7151522, 0.0721750},
                           {0.0193339, 0.1191920, 0.9503041}}};
  constexpr Matrix cones = {{{0.8189330101, 0.3618667424, -0.1288597137},
                             {0.0329845436, 0.9293118715, 0.0361456387},
                             {0.0482003018, 0.2643662691, 0.6338517070}}};
  constexpr Matrix lab = {{{0.2104542553, 0.7936177850, -0.0040720468},
                           {1.9779984951, -2.4285922050, 0.4505937099},
                           {0.0259040371, 0.7827717662, -0.8086757660}}};
  std::array<double, 3> response =
      times(cones, times(xyz, {linear(color[0]), linear(color[1]), linear(color[2])}));
  for (double& value : response) value = std::cbrt(value);
  return times(lab, response);
}

constexpr double lightest = 0.88;
constexpr double darkest = 0.24;

TEST(ColorRamp, FallsEvenlyInLightness)
{
  for (Color const& hue : {Color{255, 0, 0}, Color{0, 0, 255}, Color{0, 128, 0}, Color{40, 70, 120}}) {
    const ColorRamp ramp(hue);
    for (double position = 0; position <= 1; position += 0.1)
      EXPECT_NEAR(labOf(ramp.at(position))[0], lightest + position * (darkest - lightest), 0.006) << position;
  }
}

/// Far enough from the ends of sRGB: there a step of lightness costs chroma.
TEST(ColorRamp, HasTheColorItselfWhereItIsAsLight)
{
  for (int red = 40; red <= 220; red += 30)
    for (int green = 40; green <= 220; green += 30)
      for (int blue = 40; blue <= 220; blue += 30) {
        const Color color{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                          static_cast<std::uint8_t>(blue)};
        const double lightness = labOf(color)[0];
        if (lightness > lightest || lightness < darkest) continue;
        const Color found = ColorRamp(color).at((lightness - lightest) / (darkest - lightest));
        for (std::size_t i = 0; i < 3; ++i)
          EXPECT_NEAR(found[i], color[i], 1) << red << ' ' << green << ' ' << blue;
      }
}

TEST(ColorRamp, GetsDarkerStepByStepInEveryHue)
{
  for (Color const& hue : {Color{255, 0, 0}, Color{0, 0, 255}, Color{0, 128, 0}, Color{255, 255, 0},
                           Color{40, 70, 120}, Color{0, 0, 0}, Color{255, 255, 255}, Color{200, 0, 200}}) {
    const ColorRamp ramp(hue);
    for (double position = 0.02; position <= 1; position += 0.02)
      EXPECT_LT(luminance(ramp.at(position)), luminance(ramp.at(position - 0.02))) << position;
    EXPECT_GT(luminance(ramp.at(0)), 0.5);
    EXPECT_LT(luminance(ramp.at(1)), 0.05);
  }
}

TEST(ColorRamp, KeepsTheHue)
{
  const ColorRamp red(Color{255, 0, 0});
  const ColorRamp blue(Color{40, 70, 120});
  for (double position = 0; position <= 1; position += 0.1) {
    const Color r = red.at(position);
    EXPECT_GT(r[0], r[1] + 20);
    EXPECT_GT(r[0], r[2] + 20);
    const Color b = blue.at(position);
    EXPECT_GT(b[2], b[1] + 10);
    EXPECT_GT(b[1], b[0] + 5);
  }
}

TEST(ColorRamp, OfAGreyIsGrey)
{
  const ColorRamp ramp(Color{128, 128, 128});
  for (double position = 0; position <= 1; position += 0.1) {
    const Color color = ramp.at(position);
    EXPECT_LE(*std::max_element(color.begin(), color.end()) - *std::min_element(color.begin(), color.end()),
              1);
  }
}

TEST(ColorRamp, TakesTheNearestEndOutOfRange)
{
  const ColorRamp ramp(Color{255, 0, 0});
  EXPECT_EQ(ramp.at(-3), ramp.at(0));
  EXPECT_EQ(ramp.at(std::numeric_limits<double>::quiet_NaN()), ramp.at(0));
  EXPECT_EQ(ramp.at(1e300), ramp.at(1));
}

} // namespace
} // namespace runsieve::test
