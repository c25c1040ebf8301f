#include <runsieve/items/DensityBars.h>

#include <runsieve/core/coverage/RunCoverage.h>

#include "support/RecordingDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {
namespace {

constexpr runsieve::Color blue{30, 60, 200};
constexpr runsieve::Color red{200, 40, 20};

constexpr float width = 90; ///< of a bar, in pixels of 72 per inch
constexpr float height = 7; ///< likewise
constexpr float below = 13; ///< from a bar to the next
constexpr std::size_t steps = 45;

/// A picture with as many runs in its pixels, a pixel each.
DensityBar barOf(std::vector<std::uint32_t> runs, runsieve::Color const& color = blue)
{
  for (std::uint32_t& count : runs) count *= RunCoverage::perRun;
  CountHistogram histogram;
  histogram.add(runs.data(), runs.size());
  return {DensityScale(DensityScale::Kind::logarithmic, histogram), color};
}

struct DensityBarsTest : testing::Test
{
  RecordingPainter recorder;

  void paint(std::vector<DensityBar> const& bars, bool isRight = true, float scale = 1)
  {
    paintDensityBars(recorder.painter, bars, {1000, 500, isRight}, scale);
    EXPECT_EQ(recorder.errors(), 0);
  }

  /// Rectangles: of each bar the background, then its steps from the left.
  [[nodiscard]] std::vector<Stroke> rectangles() const
  {
    std::vector<Stroke> found;
    for (Stroke const& stroke : recorder.strokes())
      if (stroke.kind == Stroke::QuadStrip || stroke.kind == Stroke::Polygon) found.push_back(stroke);
    return found;
  }

  [[nodiscard]] std::vector<Stroke> marks() const
  {
    std::vector<Stroke> found;
    for (Stroke const& stroke : recorder.polyLines()) // among the outlines of rectangles
      if (stroke.points.size() == 2) found.push_back(stroke);
    return found;
  }

  static float left(Stroke const& stroke)
  {
    return std::min_element(stroke.points.begin(), stroke.points.end())->first;
  }
  static float right(Stroke const& stroke)
  {
    return std::max_element(stroke.points.begin(), stroke.points.end())->first;
  }
  static std::pair<float, float> heights(Stroke const& stroke)
  {
    const auto byHeight = [](Point const& a, Point const& b) { return a.second < b.second; };
    const auto ends = std::minmax_element(stroke.points.begin(), stroke.points.end(), byHeight);
    return {ends.first->second, ends.second->second};
  }
};

TEST_F(DensityBarsTest, ABarGoesThroughTheColoursOfItsScale)
{
  const DensityBar bar = barOf({1, 1000});
  paint({bar});
  const std::vector<Stroke> found = rectangles();
  ASSERT_EQ(found.size(), 1 + steps);
  const ColorRamp ramp(blue);
  const float begin = left(found[1]);
  for (std::size_t i = 0; i < steps; ++i) {
    Stroke const& step = found[1 + i];
    const double place = (static_cast<double>(i) + 0.5) / static_cast<double>(steps);
    const runsieve::Color wanted = ramp.at(bar.scale.shade(std::pow(1000.0, place)));
    for (std::size_t channel = 0; channel < 3; ++channel)
      EXPECT_NEAR(step.brush[channel], wanted[channel], 1) << i;
    EXPECT_EQ(step.brush[3], 255);
    EXPECT_FLOAT_EQ(left(step), begin + static_cast<float>(i) * width / static_cast<float>(steps));
    EXPECT_FLOAT_EQ(right(step), begin + width) << "no gap to the next";
    EXPECT_FLOAT_EQ(heights(step).second - heights(step).first, height);
  }
}

TEST_F(DensityBarsTest, MarksStandAtDecadesBetweenTheEnds)
{
  paint({barOf({1, 1000})});
  const std::vector<Stroke> found = marks();
  ASSERT_EQ(found.size(), 2U) << "10 and 100, not 1 and 1000";
  const float begin = left(rectangles()[1]);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_NEAR(left(found[i]), begin + width * static_cast<float>(i + 1) / 3, 0.5);
    EXPECT_EQ(left(found[i]), right(found[i]));
    EXPECT_EQ(heights(found[i]), heights(rectangles()[1]));
    EXPECT_EQ(found[i].pen, (Color{255, 255, 255, 255}));
    EXPECT_EQ(found[i].width, 1.0F);
  }
}

TEST_F(DensityBarsTest, EndsAreTold)
{
  paint({barOf({3, 12345})});
  EXPECT_EQ(recorder.texts(), (std::vector<std::string>{"3", "12,345 runs"}));
}

TEST_F(DensityBarsTest, OneRunIsOneRun)
{
  paint({barOf({1})});
  EXPECT_EQ(recorder.texts(), (std::vector<std::string>{"1", "1 run"}));
}

TEST_F(DensityBarsTest, NumbersAreInGroupsOfThree)
{
  paint({barOf({100, 999}), barOf({1000, 1234567})});
  EXPECT_EQ(recorder.texts(), (std::vector<std::string>{"100", "999 runs", "1,000", "1,234,567 runs"}));
}

TEST_F(DensityBarsTest, EachLayerHasABarBelowTheFormer)
{
  paint({barOf({1, 50}), barOf({1, 20}, red)});
  const std::vector<Stroke> found = rectangles();
  ASSERT_EQ(found.size(), 2 * (1 + steps));
  Stroke const& first = found[1];
  Stroke const& second = found[2 + steps];
  EXPECT_FLOAT_EQ(heights(first).first - heights(second).first, below);
  EXPECT_EQ(left(first), left(second));
  EXPECT_LT(heights(first).second, 500.0F);
  EXPECT_GT(second.brush[0], second.brush[2]) << "red";
}

TEST_F(DensityBarsTest, ALayerWithoutRunsHasNoneAndTakesNoPlace)
{
  paint({barOf({}), barOf({1, 20})});
  const std::vector<Stroke> found = rectangles();
  ASSERT_EQ(found.size(), 1 + steps);
  RecordingPainter alone;
  paintDensityBars(alone.painter, {barOf({1, 20})}, {1000, 500, true}, 1);
  ASSERT_EQ(alone.strokes().size(), recorder.strokes().size());
  for (std::size_t i = 0; i < alone.strokes().size(); ++i)
    EXPECT_EQ(alone.strokes()[i].points, recorder.strokes()[i].points);
}

TEST_F(DensityBarsTest, TheBackgroundIsAroundTheBarAndNearlyWhite)
{
  paint({barOf({1, 20})});
  const Stroke background = rectangles().front();
  EXPECT_EQ(background.brush, (Color{255, 255, 255, 200}));
  EXPECT_LT(left(background), left(rectangles()[1]));
  EXPECT_GT(right(background), right(rectangles()[1]) + 60) << "the text of the largest number";
  EXPECT_LT(heights(background).first, heights(rectangles()[1]).first);
  EXPECT_GT(heights(background).second, heights(rectangles()[1]).second);
}

TEST_F(DensityBarsTest, BarsLieInsideTheCorner)
{
  paint({barOf({1, 20})});
  EXPECT_LT(right(rectangles()[1]) + 62, 1000.0F) << "and the text";
  RecordingPainter other;
  paintDensityBars(other.painter, {barOf({1, 20})}, {1000, 500, false}, 1);
  EXPECT_GT(left(other.strokes()[1]), 1000.0F);
}

TEST_F(DensityBarsTest, AScreenOfMorePixelsHasLargerBars)
{
  paint({barOf({1, 20}), barOf({1, 20})}, true, 2);
  const std::vector<Stroke> found = rectangles();
  EXPECT_FLOAT_EQ(right(found[1]) - left(found[1]), 2 * width);
  EXPECT_FLOAT_EQ(heights(found[1]).second - heights(found[1]).first, 2 * height);
  EXPECT_FLOAT_EQ(heights(found[1]).first - heights(found[2 + steps]).first, 2 * below);
  EXPECT_LT(right(found[1]) + 2 * 62, 1000.0F);
}

} // namespace
} // namespace runsieve::test
