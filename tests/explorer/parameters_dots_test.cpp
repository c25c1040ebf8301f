#include "DocumentScene.h"

#include "app/explorer/parameters/RunDots.h"

#include <algorithm>
#include <set>
#include <utility>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::DotPlaces;
using app::RunColumns;
using app::RunDots;
using app::Theme;

/// The pixels that a picture covers, from those of a place.
std::set<std::pair<int, int>> covered(QImage const& image, int x0, int y0)
{
  std::set<std::pair<int, int>> places;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 0) places.insert({x - x0, y - y0});
  return places;
}

QImage dotsImage(DotPlaces const& places, std::vector<std::uint8_t> const& passing,
                 std::vector<std::uint8_t> const& eligible)
{
  return RunDots(QSize(101, 101), 1.0).image(places, passing, eligible, Theme::ofPaper(QFont()));
}

TEST(RunDots, ARunIsADotOfTwoPixelsRadiusAtItsValues)
{
  const RunColumns across({0.25}, AxisMap(0.0, 1.0));
  const RunColumns up({0.75}, AxisMap(0.0, 1.0));
  const QImage image = dotsImage({across, up}, {0}, {1});
  const auto dot = covered(image, 25, 25);
  EXPECT_EQ(dot.size(), 13u) << "a disc of radius 2";
  EXPECT_EQ(dot.count({0, 0}), 1u);
  EXPECT_EQ(dot.count({2, 0}), 1u);
  EXPECT_EQ(dot.count({2, 2}), 0u);
}

TEST(RunDots, ThoseThatAreNotShownLeaveNoDot)
{
  const RunColumns values({0.25, 0.5}, AxisMap(0.0, 1.0));
  const QImage image = dotsImage({values, values}, {0, 0}, {0, 0});
  EXPECT_TRUE(covered(image, 0, 0).empty());
}

TEST(RunDots, APassingRunLiesOverTheOthers)
{
  const RunColumns values({0.5, 0.5}, AxisMap(0.0, 1.0));
  const Theme theme = Theme::ofPaper(QFont());
  const QImage image = dotsImage({values, values}, {1, 0}, {1, 1});
  const QColor color = image.pixelColor(50, 50);
  EXPECT_GT(color.red(), color.blue() + 60)
      << "as the passing runs, whose colour is " << theme.passing.name().toStdString();
}

TEST(RunDots, OfRunsThatHaveComeAndGoneAreThoseOfTheRunsThatAreThere)
{
  std::vector<double> values;
  for (std::size_t run = 0; run < 3000; ++run) values.push_back(scattered(0, run));
  const RunColumns across(values, AxisMap(0.0, 1.0));
  std::reverse(values.begin(), values.end());
  const RunColumns up(values, AxisMap(0.0, 1.0));
  const DotPlaces places{across, up};
  RunDots dots(QSize(101, 101), 1.0);
  std::vector<std::uint8_t> eligible(values.size(), 1);
  // More than 400 others at first, then fewer, whose dots are larger.
  for (std::size_t const passingRuns : {0u, 1000u, 2900u, 500u, 3000u}) {
    std::vector<std::uint8_t> passing(values.size(), 0);
    std::fill_n(passing.begin(), passingRuns, std::uint8_t(1));
    eligible[passingRuns / 2] = 0;
    EXPECT_EQ(dots.image(places, passing, eligible, Theme::ofPaper(QFont())),
              dotsImage(places, passing, eligible))
        << passingRuns;
  }
}

} // namespace
} // namespace runsieve::test
