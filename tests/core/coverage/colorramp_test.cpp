#include <runsieve/core/coverage/ColorRamp.h>

#include <gtest/gtest.h>

#include <algorithm>
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
