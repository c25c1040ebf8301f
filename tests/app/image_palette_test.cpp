#include "app/render/ImagePalette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace runsieve::app {
namespace {

using Pixels = std::vector<std::uint8_t>;

Pixels shown(ImagePalette const& palette)
{
  Pixels pixels;
  for (const std::uint8_t number : palette.pixels) {
    auto const& color = palette.colors.at(number);
    pixels.insert(pixels.end(), color.begin(), color.end());
  }
  return pixels;
}

int largestError(Pixels const& wanted, Pixels const& found)
{
  int largest = 0;
  for (std::size_t i = 0; i < wanted.size(); ++i)
    largest = std::max(largest, std::abs(wanted[i] - found.at(i)));
  return largest;
}

/// As many colours, twice each and in any order.
Pixels anyColors(int count)
{
  Pixels pixels;
  for (int twice = 0; twice < 2; ++twice)
    for (int i = 0; i < count; ++i)
      for (const int channel : {i * 37 % 256, i / 256, 255 - i % 256})
        pixels.push_back(static_cast<std::uint8_t>(channel));
  return pixels;
}

/// All mixtures of two ramps, many more than 256.
Pixels mixtures()
{
  Pixels pixels;
  for (int a = 0; a < 60; ++a)
    for (int b = 0; b < 60; ++b)
      for (const int channel : {200 - a - b, 100 + a, 100 + b})
        pixels.push_back(static_cast<std::uint8_t>(channel));
  return pixels;
}

TEST(ImagePalette, HasTheColorsOfTheImageIfTheyAreFew)
{
  for (const int count : {1, 2, 3, 255, 256}) {
    const Pixels pixels = anyColors(count);
    const auto palette = paletteOf(pixels, 0);
    ASSERT_TRUE(palette) << count;
    EXPECT_EQ(palette->colors.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(shown(*palette), pixels);
  }
}

TEST(ImagePalette, OfMoreColorsHas256NearThem)
{
  const Pixels pixels = mixtures();
  const auto palette = paletteOf(pixels, 8);
  ASSERT_TRUE(palette);
  EXPECT_EQ(palette->colors.size(), ImagePalette::mostColors);
  const int error = largestError(pixels, shown(*palette));
  EXPECT_GT(error, 0);
  EXPECT_LE(error, 4);
}

TEST(ImagePalette, IsNoneIfAColorWouldDifferByMoreThanItMay)
{
  const Pixels pixels = mixtures();
  const int error = largestError(pixels, shown(paletteOf(pixels, 255).value()));
  EXPECT_TRUE(paletteOf(pixels, error));
  EXPECT_FALSE(paletteOf(pixels, error - 1));
  EXPECT_FALSE(paletteOf(anyColors(257), 0));
}

TEST(ImagePalette, ColorsOfManyPixelsAreNearlyKept)
{
  Pixels pixels = mixtures();
  Pixels frequent = {150, 130, 120};
  for (int i = 0; i < 5000; ++i) pixels.insert(pixels.end(), frequent.begin(), frequent.end());
  const auto palette = paletteOf(pixels, 8);
  ASSERT_TRUE(palette);
  const Pixels found = shown(*palette);
  EXPECT_EQ(Pixels(found.end() - 3, found.end()), frequent);
}

TEST(ImagePalette, RareColorsStayAsCloseAsOthers)
{
  Pixels pixels;
  for (int i = 0; i < 100000; ++i)
    for (const int channel : {i % 80, i % 79, 40}) pixels.push_back(static_cast<std::uint8_t>(channel));
  const Pixels rare = {250, 251, 252};
  pixels.insert(pixels.end(), rare.begin(), rare.end());
  const auto palette = paletteOf(pixels, 255);
  ASSERT_TRUE(palette);
  const Pixels found = shown(*palette);
  EXPECT_EQ(Pixels(found.end() - 3, found.end()), rare);
}

TEST(ImagePalette, OfNoPixelsIsEmpty)
{
  const auto palette = paletteOf({}, 0);
  ASSERT_TRUE(palette);
  EXPECT_TRUE(palette->colors.empty());
  EXPECT_TRUE(palette->pixels.empty());
}

} // namespace
} // namespace runsieve::app
