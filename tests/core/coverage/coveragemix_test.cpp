#include <runsieve/core/coverage/CoverageMix.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace runsieve::test {
namespace {

using Pixel = std::array<int, 4>;

constexpr Color blue{30, 60, 200};
constexpr Color red{255, 0, 10};

/// Column k has as many lines as the k-th number says, in the middle row of three.
RunCoverage columns(std::vector<int> const& lines, int subRows = 1, float y = 1.5F)
{
  RunCoverage coverage({static_cast<int>(lines.size()), 3, subRows, 0.5, {}});
  for (std::size_t k = 0; k < lines.size(); ++k) {
    const auto left = static_cast<float>(k);
    const std::vector<float> line{left, y, left + 1, y};
    for (int i = 0; i < lines[k]; ++i) coverage.add(line.data(), 2);
  }
  return coverage;
}

std::vector<Pixel> pixelsOf(CoverageMix const& mix, int width)
{
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(4 * 3 * width), 77);
  mix.store(bytes.data());
  std::vector<Pixel> pixels;
  for (std::size_t i = 0; i < bytes.size(); i += 4)
    pixels.push_back({bytes[i], bytes[i + 1], bytes[i + 2], bytes[i + 3]});
  return pixels;
}

int opacityOf(double a, double count)
{
  return static_cast<int>(std::lround(255 * (1 - std::pow(1 - a, count))));
}

TEST(CoverageMix, IsNothingWithoutLines)
{
  for (Pixel const& pixel : pixelsOf(CoverageMix(2, 3), 2)) EXPECT_EQ(pixel, (Pixel{0, 0, 0, 0}));
}

TEST(CoverageMix, LinesOfOneColourKeepItAndGetDenser)
{
  CoverageMix mix(4, 3);
  mix.add(columns({0, 1, 2, 5}), blue, 0.4);
  const std::vector<Pixel> pixels = pixelsOf(mix, 4);
  EXPECT_EQ(pixels[4], (Pixel{0, 0, 0, 0}));
  for (int k = 1; k < 4; ++k)
    EXPECT_EQ(pixels[static_cast<std::size_t>(4 + k)], (Pixel{30, 60, 200, opacityOf(0.4, k < 3 ? k : 5)}));
  for (std::size_t i : {0, 1, 2, 3, 8, 9, 10, 11}) EXPECT_EQ(pixels[i], (Pixel{0, 0, 0, 0}));
}

TEST(CoverageMix, ColoursHaveAShareAsTheirLines)
{
  CoverageMix mix(3, 3);
  mix.add(columns({3, 1, 1}), blue, 0.6);
  mix.add(columns({1, 1, 0}), red, 0.6);
  const std::vector<Pixel> pixels = pixelsOf(mix, 3);
  EXPECT_EQ(pixels[3], (Pixel{86, 45, 153, opacityOf(0.6, 4)}));
  EXPECT_EQ(pixels[4], (Pixel{143, 30, 105, opacityOf(0.6, 2)}));
  EXPECT_EQ(pixels[5], (Pixel{30, 60, 200, opacityOf(0.6, 1)}));
}

TEST(CoverageMix, TheOrderOfLayersMakesNoDifference)
{
  const RunCoverage first = columns({3, 1, 7});
  const RunCoverage second = columns({2, 5, 1});
  CoverageMix one(3, 3);
  one.add(first, blue, 0.3);
  one.add(second, red, 0.9);
  CoverageMix other(3, 3);
  other.add(second, red, 0.9);
  other.add(first, blue, 0.3);
  EXPECT_EQ(pixelsOf(one, 3), pixelsOf(other, 3));
}

TEST(CoverageMix, OpaqueLinesWeighMoreThanTranslucentOnes)
{
  CoverageMix mix(1, 3);
  mix.add(columns({1}), {0, 0, 0}, 0.25);
  mix.add(columns({1}), {255, 255, 255}, 0.75);
  EXPECT_NEAR(pixelsOf(mix, 1)[1][0], 191, 1);
}

TEST(CoverageMix, PartsOfPixelsAreTheSameWithSubRows)
{
  CoverageMix coarse(2, 3);
  coarse.add(columns({1, 1}, 1, 1.75F), red, 0.8);
  CoverageMix fine(2, 3);
  fine.add(columns({1, 1}, 4, 1.75F), red, 0.8);
  EXPECT_EQ(pixelsOf(coarse, 2), pixelsOf(fine, 2));
}

TEST(CoverageMix, SubRowsOfALayerDontChangeItsWeight)
{
  CoverageMix coarse(2, 3);
  coarse.add(columns({1, 2}), red, 0.5);
  coarse.add(columns({1, 1}), blue, 0.5);
  CoverageMix fine(2, 3);
  fine.add(columns({1, 2}), red, 0.5);
  fine.add(columns({1, 1}, 4), blue, 0.5);
  EXPECT_EQ(pixelsOf(coarse, 2), pixelsOf(fine, 2));
}

TEST(CoverageMix, RefusesCountsOfAnotherSize)
{
  CoverageMix mix(2, 3);
  EXPECT_THROW(mix.add(columns({1}), red, 0.5), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
