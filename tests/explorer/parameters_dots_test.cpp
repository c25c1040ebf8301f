#include "app/explorer/parameters/RunDots.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::dotsImage;
using app::RunColumns;
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

TEST(RunDots, ARunIsADotOfTwoPixelsRadiusAtItsValues)
{
  const RunColumns across({0.25}, AxisMap(0.0, 1.0));
  const RunColumns up({0.75}, AxisMap(0.0, 1.0));
  const QImage image = dotsImage({across, up}, {0}, {1}, QSize(101, 101), 1.0, Theme::ofPaper(QFont()));
  const auto dot = covered(image, 25, 25);
  EXPECT_EQ(dot.size(), 13u) << "a disc of radius 2";
  EXPECT_EQ(dot.count({0, 0}), 1u);
  EXPECT_EQ(dot.count({2, 0}), 1u);
  EXPECT_EQ(dot.count({2, 2}), 0u);
}

TEST(RunDots, ThoseThatAreNotShownLeaveNoDot)
{
  const RunColumns values({0.25, 0.5}, AxisMap(0.0, 1.0));
  const QImage image =
      dotsImage({values, values}, {0, 0}, {0, 0}, QSize(101, 101), 1.0, Theme::ofPaper(QFont()));
  EXPECT_TRUE(covered(image, 0, 0).empty());
}

TEST(RunDots, APassingRunLiesOverTheOthers)
{
  const RunColumns values({0.5, 0.5}, AxisMap(0.0, 1.0));
  const Theme theme = Theme::ofPaper(QFont());
  const QImage image = dotsImage({values, values}, {1, 0}, {1, 1}, QSize(101, 101), 1.0, theme);
  const QColor color = image.pixelColor(50, 50);
  EXPECT_GT(color.red(), color.blue() + 60)
      << "as the passing runs, whose colour is " << theme.passing.name().toStdString();
}

} // namespace
} // namespace runsieve::test
