#include <runsieve/core/coverage/MovedPixels.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

namespace runsieve::test {
namespace {

using Numbers = std::vector<std::uint32_t>;

constexpr std::uint32_t old = 99; ///< what a target shows before

/// An image whose pixels have the numbers 0, 1, 2, ...
Numbers numbered(int width, int height)
{
  Numbers pixels;
  for (int i = 0; i < width * height; ++i) pixels.push_back(static_cast<std::uint32_t>(i));
  return pixels;
}

struct Size
{
  int width;
  int height;
};

Numbers moved(Size source, Size target, PixelMove const& move)
{
  const Numbers from = numbered(source.width, source.height);
  Numbers to(static_cast<std::size_t>(target.width * target.height), old);
  movePixels(reinterpret_cast<std::uint8_t const*>(from.data()), source.width, source.height,
             reinterpret_cast<std::uint8_t*>(to.data()), target.width, target.height, move);
  return to;
}

TEST(MovedPixelsTest, WithoutAMoveTheImageIsTheSame)
{
  EXPECT_EQ(moved({3, 2}, {3, 2}, {}), numbered(3, 2));
}

TEST(MovedPixelsTest, WhatComesInStaysAsItWas)
{
  EXPECT_EQ(moved({3, 2}, {3, 2}, {1, 1, 1, 0}), (Numbers{1, 2, old, 4, 5, old}));
  EXPECT_EQ(moved({3, 2}, {3, 2}, {1, -1, 1, 0}), (Numbers{old, 0, 1, old, 3, 4}));
  EXPECT_EQ(moved({3, 2}, {3, 2}, {1, 0, 1, 1}), (Numbers{3, 4, 5, old, old, old}));
  EXPECT_EQ(moved({3, 2}, {3, 2}, {1, 0, 1, -1}), (Numbers{old, old, old, 0, 1, 2}));
}

TEST(MovedPixelsTest, PartsOfAPixelAreRounded)
{
  EXPECT_EQ(moved({3, 1}, {3, 1}, {1, 0.4, 1, 0}), (Numbers{0, 1, 2}));
  EXPECT_EQ(moved({3, 1}, {3, 1}, {1, 0.6, 1, 0}), (Numbers{1, 2, old}));
  EXPECT_EQ(moved({3, 1}, {3, 1}, {1, -0.6, 1, 0}), (Numbers{old, 0, 1}));
}

TEST(MovedPixelsTest, AStretchedImageHasItsPixelsSeveralTimes)
{
  EXPECT_EQ(moved({2, 2}, {4, 4}, {0.5, 0, 0.5, 0}),
            (Numbers{0, 0, 1, 1, 0, 0, 1, 1, 2, 2, 3, 3, 2, 2, 3, 3}));
}

TEST(MovedPixelsTest, AShrunkImageLeavesPixelsOut)
{
  EXPECT_EQ(moved({4, 4}, {3, 2}, {2, 0, 2, 0}), (Numbers{5, 7, old, 13, 15, old}));
}

TEST(MovedPixelsTest, SizesMayDiffer)
{
  EXPECT_EQ(moved({2, 1}, {4, 2}, {1, -1, 1, 0}), (Numbers{old, 0, 1, old, old, old, old, old}));
  EXPECT_EQ(moved({4, 2}, {1, 1}, {1, 2, 1, 1}), (Numbers{6}));
  EXPECT_EQ(moved({1, 1}, {3, 2}, {0.25, 0, 0.25, 0}), (Numbers{0, 0, 0, 0, 0, 0}));
}

TEST(MovedPixelsTest, AnImageMayBeTurnedRound)
{
  EXPECT_EQ(moved({3, 1}, {3, 1}, {-1, 3, 1, 0}), (Numbers{2, 1, 0}));
}

TEST(MovedPixelsTest, AnImageFarAwayIsNotThere)
{
  const Numbers none(6, old);
  const double infinite = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (double offset : {3.0, -3.0, 1e300, -1e300, infinite, nan}) {
    EXPECT_EQ(moved({3, 2}, {3, 2}, {1, offset, 1, 0}), none) << offset;
    EXPECT_EQ(moved({3, 2}, {3, 2}, {1, 0, 1, offset}), none) << offset;
  }
  EXPECT_EQ(moved({3, 2}, {3, 2}, {infinite, 0, 1, 0}), none);
}

} // namespace
} // namespace runsieve::test
