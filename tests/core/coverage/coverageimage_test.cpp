#include <runsieve/core/coverage/CoverageImage.h>
#include <runsieve/core/coverage/OpacityTable.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace runsieve::test {
namespace {

using Shades = CoverageImage::Shades;
using Pixel = std::array<int, 4>;

constexpr std::uint32_t one = RunCoverage::perRun;
constexpr Color blue{30, 60, 200};
constexpr Color red{255, 40, 10};

/// Column k has as many runs as the k-th number says, in the middle row of three.
RunCoverage columns(std::vector<int> const& runs, int subRows = 1, float y = 1.5F)
{
  RunCoverage coverage({static_cast<int>(runs.size()), 3, subRows, 0.5, {}});
  for (std::size_t k = 0; k < runs.size(); ++k) {
    const auto left = static_cast<float>(k);
    const std::vector<float> line{left, y, left + 1, y};
    for (int left = runs[k]; left > 0; left -= 200)
      coverage.add(line.data(), 2, static_cast<std::uint8_t>(std::min(left, 200)));
  }
  return coverage;
}

/// An image with memory of its own.
class Image
{
public:
  void resolve(std::vector<CoverageImage::Layer> const& layers)
  {
    if (!layers.empty() && layers[0].coverage) {
      columns = layers[0].coverage->frame().width;
      bytes.assign(4UL * static_cast<std::size_t>(columns * layers[0].coverage->frame().height), 7);
    }
    image.resolve(layers, bytes.data());
  }
  [[nodiscard]] int width() const { return columns; }
  [[nodiscard]] std::vector<std::uint8_t> const& pixels() const { return bytes; }
  [[nodiscard]] DensityScale scale(std::size_t layer) const { return image.scale(layer); }

private:
  CoverageImage image;
  int columns = 0;
  std::vector<std::uint8_t> bytes;
};

Pixel pixelOf(Image const& image, int x, int y)
{
  auto const* bytes = image.pixels().data() + 4 * (y * image.width() + x);
  return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

TEST(OpacityTable, GrowsWithTheCountFromZeroToOne)
{
  for (const double a : {1e-9, 1e-4, 0.003, 14 / 255.0, 150 / 255.0, 0.999, 1.0}) {
    const OpacityTable table(a);
    EXPECT_EQ(table.at(0), 0);
    EXPECT_NEAR(table.at(one), a, 1.0 / 30000);
    for (const std::uint32_t runs : {2U, 3U, 7U, 20U, 101U, 1500U, 40000U, 16777215U})
      EXPECT_NEAR(table.at(runs * one), 1 - std::pow(1 - a, runs), 3e-4) << a << " " << runs;
    float before = 0;
    for (std::uint32_t count = 0; count < 4000000000U; count += 1 + count / 50) {
      const float opacity = table.at(count);
      EXPECT_GE(opacity, before);
      EXPECT_LE(opacity, 1);
      before = opacity;
    }
  }
}

TEST(OpacityTable, TakesPartsOfARunForPartsOfAPixel)
{
  const OpacityTable table(0.6);
  EXPECT_NEAR(table.at(one / 2), 0.3, 1e-6);
  EXPECT_NEAR(table.at(one + one / 4), 0.6 + 0.25 * 0.24, 1e-6);
}

TEST(OpacityTable, TakesTheNearestOpacityForOneThatIsNone)
{
  EXPECT_EQ(OpacityTable(-1).at(100 * one), 0);
  EXPECT_EQ(OpacityTable(std::numeric_limits<double>::quiet_NaN()).at(100 * one), 0);
  EXPECT_EQ(OpacityTable(7).at(one), 1);
  EXPECT_EQ(OpacityTable(0).at(UINT32_MAX), 0);
}

TEST(CoverageImage, ShowsCountsAsOpacityInTheColorOfTheLayer)
{
  const RunCoverage coverage = columns({0, 1, 2, 2000});
  Image image;
  image.resolve({{&coverage, {blue, 14 / 255.0}}});
  ASSERT_EQ(image.pixels().size(), 48);
  EXPECT_EQ(pixelOf(image, 0, 1), (Pixel{0, 0, 0, 0}));
  EXPECT_EQ(pixelOf(image, 1, 1), (Pixel{30, 60, 200, 14}));
  EXPECT_EQ(pixelOf(image, 2, 1), (Pixel{30, 60, 200, 27}));
  EXPECT_EQ(pixelOf(image, 3, 1), (Pixel{30, 60, 200, 255}));
  for (int x = 0; x < 4; ++x)
    for (const int y : {0, 2}) EXPECT_EQ(pixelOf(image, x, y), (Pixel{0, 0, 0, 0}));
}

TEST(CoverageImage, HasItsLowestRowFirst)
{
  const RunCoverage coverage = columns({1}, 1, 0.5F);
  Image image;
  image.resolve({{&coverage, {blue, 1}}});
  EXPECT_EQ(pixelOf(image, 0, 0), (Pixel{30, 60, 200, 255}));
  EXPECT_EQ(pixelOf(image, 0, 2), (Pixel{0, 0, 0, 0}));
}

TEST(CoverageImage, AveragesTheOpacityOfSubRows)
{
  // Ten coats over a quarter of a pixel: opaque there, and a quarter in all. Counts of whole pixels saturate.
  RunCoverage fine = columns({10}, 4, 0.75F);
  RunCoverage coarse = columns({10}, 1, 0.75F);
  Image image;
  image.resolve({{&fine, {red, 0.6}}});
  EXPECT_NEAR(pixelOf(image, 0, 1)[3], 64, 1);
  image.resolve({{&coarse, {red, 0.6}}});
  EXPECT_GT(pixelOf(image, 0, 1)[3], 200);
}

TEST(CoverageImage, ComposesTheSecondLayerOverTheFirst)
{
  const std::vector<int> below{0, 0, 1, 1, 3, 9, 50};
  const std::vector<int> above{0, 1, 0, 1, 2, 1, 10};
  const RunCoverage first = columns(below);
  const RunCoverage second = columns(above, 4);
  const double a = 0.2;
  const double b = 0.4;
  Image image;
  image.resolve({{&first, {blue, a}}, {&second, {red, b}}});
  for (int x = 0; x < 7; ++x) {
    const auto k = static_cast<std::size_t>(x);
    const double back = 1 - std::pow(1 - a, below[k]);
    const double front = 1 - std::pow(1 - b, above[k]);
    const double alpha = front + back * (1 - front);
    const Pixel pixel = pixelOf(image, x, 1);
    EXPECT_NEAR(pixel[3], 255 * alpha, 0.6) << x;
    for (std::size_t c = 0; c < 3; ++c) {
      const double color = alpha > 0 ? (red[c] * front + blue[c] * back * (1 - front)) / alpha : 0;
      EXPECT_NEAR(pixel[c], color, 0.6) << x;
    }
  }
}

TEST(CoverageImage, ShowsDensityAsOpaqueColorsFromLightToDark)
{
  const RunCoverage coverage = columns({0, 1, 3, 10, 40, 100, 1000});
  for (const Shades shades : {Shades::logarithmic, Shades::equalArea}) {
    Image image;
    image.resolve({{&coverage, {blue, 0.01, shades}}});
    EXPECT_EQ(pixelOf(image, 0, 1), (Pixel{0, 0, 0, 0}));
    const ColorRamp ramp(blue);
    const auto pixelAt = [&](double position) {
      const Color color = ramp.at(position);
      return Pixel{color[0], color[1], color[2], 255};
    };
    EXPECT_EQ(pixelOf(image, 1, 1), pixelAt(0));
    EXPECT_EQ(pixelOf(image, 6, 1), pixelAt(1));
    for (int x = 2; x < 7; ++x) {
      EXPECT_EQ(pixelOf(image, x, 1)[3], 255);
      EXPECT_LT(pixelOf(image, x, 1)[1], pixelOf(image, x - 1, 1)[1]) << x;
    }
    EXPECT_EQ(image.scale(0).smallest(), 1);
    EXPECT_EQ(image.scale(0).largest(), 1000);
    EXPECT_EQ(image.scale(1).largest(), 0);
  }
}

TEST(CoverageImage, ShowsTheEdgesOfDensityTranslucent)
{
  const RunCoverage coverage = columns({1}, 1, 1.75F);
  Image image;
  image.resolve({{&coverage, {blue, 1, Shades::logarithmic}}});
  EXPECT_EQ(pixelOf(image, 0, 1)[3], 191);
  EXPECT_EQ(pixelOf(image, 0, 2)[3], 64);
  EXPECT_EQ(image.scale(0).smallest(), 1);
  EXPECT_EQ(image.scale(0).largest(), 1);
}

TEST(CoverageImage, ComposesDensityInSubRowsBelowAnotherLayer)
{
  const RunCoverage first = columns({5, 5, 0}, 4);
  const RunCoverage second = columns({0, 9, 9}, 2);
  Image image;
  image.resolve({{&first, {blue, 1, Shades::equalArea}}, {&second, {red, 1}}});
  const Color dark = ColorRamp(blue).at(0.5 + 0.5 * std::log10(5.0)); // few runs are not darkest
  EXPECT_EQ(pixelOf(image, 0, 1), (Pixel{dark[0], dark[1], dark[2], 255}));
  EXPECT_EQ(pixelOf(image, 1, 1), (Pixel{255, 40, 10, 255}));
  EXPECT_EQ(pixelOf(image, 2, 1), (Pixel{255, 40, 10, 255}));
  EXPECT_EQ(image.scale(0).largest(), 5);
}

TEST(CoverageImage, OfNoRunsIsTransparent)
{
  const RunCoverage coverage({5, 4, 1, 0.5, {}});
  for (const Shades shades : {Shades::opacity, Shades::logarithmic, Shades::equalArea}) {
    Image image;
    image.resolve({{&coverage, {blue, 0.5, shades}}, {&coverage, {red, 0.5, shades}}});
    EXPECT_EQ(std::count(image.pixels().begin(), image.pixels().end(), 0), 80);
    EXPECT_EQ(image.scale(0).largest(), 0);
    EXPECT_TRUE(image.scale(0).decades().empty());
  }
}

TEST(CoverageImage, OfMoreRunsThanItsShadesTellApartIsWhole)
{
  const RunCoverage coverage = columns({1, 1000000, 16000000});
  for (const Shades shades : {Shades::opacity, Shades::logarithmic, Shades::equalArea}) {
    Image image;
    image.resolve({{&coverage, {blue, 0.5, shades}}});
    EXPECT_EQ(pixelOf(image, 2, 1)[3], 255);
  }
}

TEST(CoverageImage, ServesLayersOfAnySize)
{
  const RunCoverage small = columns({1, 1});
  const RunCoverage large = columns({1, 1, 1, 1, 1});
  Image image;
  image.resolve({{&large, {blue, 1}}});
  image.resolve({{&small, {blue, 1}}});
  EXPECT_EQ(pixelOf(image, 1, 1)[3], 255);
}

TEST(CoverageImage, RefusesLayersThatDoNotFit)
{
  const RunCoverage small = columns({1, 1});
  const RunCoverage large = columns({1, 1, 1, 1, 1});
  Image image;
  EXPECT_THROW(image.resolve({}), std::invalid_argument);
  EXPECT_THROW(image.resolve({{nullptr, {}}}), std::invalid_argument);
  EXPECT_THROW(image.resolve({{&small, {}}, {&large, {}}}), std::invalid_argument);
  EXPECT_THROW(image.resolve({{&small, {}}, {&small, {}}, {&small, {}}}), std::invalid_argument);
}

} // namespace
} // namespace runsieve::test
