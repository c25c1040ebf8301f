#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/charts/ChartFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::ChartFrame;
using app::numberText;
using app::Theme;
using app::Tick;
using app::ticksOf;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::vector<std::string> labels(AxisMap const& axis, int most)
{
  std::vector<std::string> found;
  for (Tick const& tick : ticksOf(axis, most))
    if (!tick.label.isEmpty()) found.push_back(tick.label.toStdString());
  return found;
}

TEST(AxisMap, PlacesAndValuesAreEachOthersReverse)
{
  for (AxisMap const& axis : {AxisMap(-3.0, 7.0), AxisMap(1e-6, 1e4, true), AxisMap(1e200, 3e200)})
    for (double const place : {-0.2, 0.0, 0.3, 1.0, 1.7})
      EXPECT_NEAR(axis.place(axis.value(place)), place, 1e-9);
}

TEST(AxisMap, ALogarithmicAxisHasNoPlaceForWhatIsNotPositive)
{
  const AxisMap axis(0.1, 10.0, true);
  EXPECT_TRUE(std::isnan(axis.place(0.0)));
  EXPECT_TRUE(std::isnan(axis.place(-1.0)));
  EXPECT_TRUE(std::isnan(AxisMap(0.0, 1.0).place(std::nan(""))));
}

TEST(AxisMap, EndsThatAreEqualMoveApart)
{
  for (double const value : {0.0, 5.0, -1e-9, 1e15, 1e300})
    for (bool const logarithmic : {false, true}) {
      const AxisMap axis(value, value, logarithmic);
      EXPECT_LT(axis.low(), axis.high()) << value;
      EXPECT_TRUE(std::isfinite(axis.place(axis.low())));
    }
}

TEST(AxisMap, EndsThatAreNoNumbersMakeAnAxisAllTheSame)
{
  for (auto const& [low, high] :
       {std::pair{std::nan(""), 1.0}, {-infinity, infinity}, {1.0, -1.0}, {-1e308, 1e308}})
    for (bool const logarithmic : {false, true}) {
      const AxisMap axis(low, high, logarithmic);
      EXPECT_LT(axis.low(), axis.high());
      EXPECT_TRUE(std::isfinite(axis.place(axis.value(0.5))));
    }
}

TEST(AxisMap, APartIsOfTheSameKind)
{
  const AxisMap part = AxisMap(1.0, 100.0, true).part(0.5, 1.0);
  EXPECT_TRUE(part.isLogarithmic());
  EXPECT_NEAR(part.low(), 10.0, 1e-9);
  EXPECT_NEAR(part.high(), 100.0, 1e-9);
}

TEST(AxisTicks, AreRoundNumbers)
{
  EXPECT_THAT(labels({0.0, 300.0}, 6), testing::ElementsAre("0", "50", "100", "150", "200", "250", "300"));
  EXPECT_THAT(labels({-0.1, 1.1}, 6), testing::ElementsAre("0", "0.2", "0.4", "0.6", "0.8", "1"));
  EXPECT_THAT(labels({0.0, 5e4}, 5), testing::ElementsAre("0", "10000", "20000", "30000", "40000", "50000"));
  EXPECT_THAT(labels({1e6, 1.2e6}, 4), testing::ElementsAre("1e6", "1.05e6", "1.1e6", "1.15e6", "1.2e6"));
  EXPECT_THAT(labels({1e-7, 5e-7}, 4), testing::ElementsAre("1e-7", "2e-7", "3e-7", "4e-7", "5e-7"));
}

TEST(AxisTicks, OfALogarithmicAxisAreDecadesWithMarksBetween)
{
  EXPECT_THAT(labels({0.001, 1000.0, true}, 8),
              testing::ElementsAre("0.001", "0.01", "0.1", "1", "10", "100", "1000"));
  EXPECT_THAT(labels({1e-8, 1e8, true}, 5), testing::ElementsAre("1e-8", "1e-4", "1", "10000", "1e8"));
  EXPECT_EQ(ticksOf({1.0, 100.0, true}, 5).size(), 19u) << "1 to 9, 10 to 90, 100";
}

TEST(AxisTicks, OfLessThanTwoDecadesHaveNumbersBetween)
{
  EXPECT_THAT(labels({1.5, 30.0, true}, 6), testing::ElementsAre("2", "5", "10", "20"));
  EXPECT_GE(labels({1.5, 2.5, true}, 6).size(), 2u);
}

TEST(AxisTicks, NumbersAreDifferentAndReadBackToTheirValues)
{
  std::mt19937 random(1);
  std::uniform_real_distribution<double> exponent(-12.0, 12.0);
  std::uniform_real_distribution<double> part(0.0, 1.0);
  for (int round = 0; round < 3000; ++round) {
    const double low = (part(random) - 0.5) * std::pow(10.0, exponent(random));
    const double length = std::pow(10.0, exponent(random));
    if (length < 1e-9 * std::fabs(low)) continue;
    const AxisMap axis(low, low + length);
    std::set<std::string> seen;
    for (Tick const& tick : ticksOf(axis, 6)) {
      if (tick.label.isEmpty()) continue;
      EXPECT_TRUE(seen.insert(tick.label.toStdString()).second) << low << ' ' << length;
      EXPECT_NEAR(tick.label.toDouble(), tick.value, 1e-3 * length) << tick.label.toStdString();
    }
    EXPECT_GE(seen.size(), 2u) << low << ' ' << length;
    EXPECT_LE(seen.size(), 8u) << low << ' ' << length;
  }
}

TEST(NumberText, HasAsManyDigitsAsTheStepTellsApart)
{
  EXPECT_EQ(numberText(0.123456789, 0.01), "0.123");
  EXPECT_EQ(numberText(12345.0), "12345");
  EXPECT_EQ(numberText(123456.0), "123456");
  EXPECT_EQ(numberText(1.5e-7), "1.5e-7");
  EXPECT_EQ(numberText(0.0, 0.1), "0");
  EXPECT_EQ(numberText(std::nan("")), "-");
  EXPECT_EQ(numberText(infinity), "inf");
}

/// Whether texts drawn at an axis keep clear of one another.
TEST(ChartFrame, NumbersNeverTouchWhateverTheAxisAndTheSize)
{
  QFont font;
  const Theme theme = Theme::ofPaper(font);
  const QFontMetricsF metrics(font);
  std::mt19937 random(2);
  std::uniform_real_distribution<double> exponent(-9.0, 9.0);
  std::uniform_real_distribution<double> size(60.0, 900.0);
  for (int round = 0; round < 2000; ++round) {
    const bool logarithmic = round % 2 == 0;
    const double low = std::pow(10.0, exponent(random));
    const AxisMap axis(low, low * (1.0 + std::pow(10.0, 0.4 * exponent(random))), logarithmic);
    const ChartFrame frame({0.0, 0.0, size(random), size(random)}, {axis, "x"}, {axis, "y"}, theme);
    double end = -1e9;
    for (Tick const& tick : frame.horizontalTicks()) {
      if (tick.label.isEmpty()) continue;
      const double half = 0.5 * metrics.horizontalAdvance(tick.label);
      EXPECT_GT(frame.xAt(tick.value) - half, end);
      end = frame.xAt(tick.value) + half;
    }
    double top = 1e9;
    for (Tick const& tick : frame.verticalTicks()) {
      if (tick.label.isEmpty()) continue;
      EXPECT_LT(frame.yAt(tick.value) + 0.4 * metrics.height(), top);
      top = frame.yAt(tick.value) - 0.4 * metrics.height();
    }
  }
}

/// Dark pixels of a picture in a rectangle.
int inkIn(QImage const& image, QRectF const& place)
{
  int ink = 0;
  for (int y = qRound(place.top()); y < qRound(place.bottom()); ++y)
    for (int x = qRound(place.left()); x < qRound(place.right()); ++x)
      ink += image.rect().contains(x, y) && qGray(image.pixel(x, y)) < 128 ? 1 : 0;
  return ink;
}

TEST(ChartFrame, NumbersStandOutsideOfThePlotBesideTheirMarks)
{
  const Theme theme = Theme::ofPaper(QFont());
  const QFontMetricsF metrics(theme.font);
  QImage image(400, 300, QImage::Format_RGB32);
  image.fill(Qt::white);
  const ChartFrame frame({0, 0, 400, 300}, {AxisMap(0, 10), "time"}, {AxisMap(0, 10), "value"}, theme);
  QPainter painter(&image);
  frame.paint(painter, theme);
  painter.end();
  const QRectF plot = frame.plot();
  EXPECT_EQ(inkIn(image, plot.adjusted(1, 1, -1, -1)), 0);
  for (Tick const& tick : frame.horizontalTicks())
    if (!tick.label.isEmpty()) {
      const QRectF below(frame.xAt(tick.value) - 4, plot.bottom() + theme.tick + 2, 8, metrics.height());
      EXPECT_GT(inkIn(image, below), 3) << tick.label.toStdString();
    }
  for (Tick const& tick : frame.verticalTicks())
    if (!tick.label.isEmpty()) {
      const double width = metrics.horizontalAdvance(tick.label);
      const QRectF beside(plot.left() - theme.tick - theme.gap - width - 1, frame.yAt(tick.value) - 6,
                          width + 2, 12);
      EXPECT_GT(inkIn(image, beside), 3) << tick.label.toStdString();
    }
  const QRectF title(plot.center().x() - 20, 300 - metrics.height(), 40, metrics.height());
  EXPECT_GT(inkIn(image, title), 10);
}

TEST(ChartFrame, LeavesRoomForTheWidestNumber)
{
  const Theme theme = Theme::ofPaper(QFont());
  const ChartFrame few({0, 0, 400, 300}, {AxisMap(0, 1), "x"}, {AxisMap(0, 1), "y"}, theme);
  const ChartFrame many({0, 0, 400, 300}, {AxisMap(0, 1), "x"}, {AxisMap(0, 100000), "y"}, theme);
  EXPECT_GT(many.left(), few.left());
  const ChartFrame aligned({0, 0, 400, 300}, {AxisMap(0, 1), "x"}, {AxisMap(0, 1), "y"}, theme, many.left());
  EXPECT_EQ(aligned.plot().left(), many.plot().left());
}

TEST(AxisTicks, OfExactlyOneDecadeAreItsEndsWithMarksBetween)
{
  for (double const low : {1.0, 0.001, 1000.0, 1e-7}) {
    const auto ticks = ticksOf({low, 10.0 * low, true}, 6);
    ASSERT_EQ(ticks.size(), 10u) << low;
    EXPECT_NEAR(ticks.front().value, low, 1e-9 * low);
    EXPECT_NEAR(ticks.back().value, 10.0 * low, 1e-9 * low);
    EXPECT_FALSE(ticks.front().label.isEmpty());
    EXPECT_FALSE(ticks.back().label.isEmpty());
  }
}

} // namespace
} // namespace runsieve::test
