#include "PaintRecorder.h"
#include "StabilityScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace runsieve::test {
namespace {

using app::StabilityPicture;
using app::Theme;
using testing::Contains;
using testing::Not;

struct PaintedStability : testing::Test, MadeStability
{
  QSize size{600, 400};
  Theme theme = Theme::ofPaper(QGuiApplication::font());

  [[nodiscard]] StabilityPicture picture() const
  {
    return {comparison, stability, QRectF(QPointF(), QSizeF(size)), theme};
  }
  [[nodiscard]] Painting painted() const
  {
    return painting(size, [this](QPainter& painter) { picture().paint(painter); });
  }
  [[nodiscard]] std::vector<Drawn> circles() const { return painted().of(Drawn::Kind::Ellipse); }
  [[nodiscard]] bool isNear(QPointF const& a, QPointF const& b) const
  {
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 0.5;
  }
};

TEST_F(PaintedStability, AMedianStandsAtItsShareAndDistance)
{
  add("k", true, {0.5, 0.4, 0.3});
  const auto drawn = circles();
  ASSERT_EQ(drawn.size(), 3u);
  const StabilityPicture shown = picture();
  const double shares[] = {0.1, 0.5, 1.0};
  const double medians[] = {0.55, 0.45, 0.35};
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_TRUE(isNear(drawn[i].points.boundingRect().center(), shown.frame().at(shares[i], medians[i])))
        << i;
}

TEST_F(PaintedStability, WhiskersReachFromLowToHigh)
{
  add("k", true, {0.5, 0.4, 0.3});
  const app::ChartFrame axes = picture().frame();
  int found = 0;
  for (Drawn const& line : painted().of(Drawn::Kind::Line)) {
    const QRectF place(line.points.boundingRect());
    if (line.pen.color() != theme.sets[0] || place.width() > 0.1) continue;
    ++found;
    EXPECT_NEAR(place.height(), axes.yAt(0.5) - axes.yAt(0.6), 0.01);
  }
  EXPECT_EQ(found, 3);
}

TEST_F(PaintedStability, CirclesAreFullWhereTheParameterIsBeyondTheNoise)
{
  add("k", true, {0.3, 0.3, 0.3});
  const auto drawn = circles();
  EXPECT_EQ(drawn[0].brush.color(), theme.paper);
  EXPECT_EQ(drawn[1].brush.color(), theme.sets[0]);
  EXPECT_EQ(drawn[2].brush.color(), theme.sets[0]);
}

TEST_F(PaintedStability, ParametersThatDoNotDifferAreGreyAndSaySo)
{
  add("k1", true, {0.5, 0.5, 0.5});
  add("k2", false, {0.2, 0.1, 0.05});
  const Painting record = painted();
  EXPECT_THAT(wordsOf(record), Contains("k1"));
  EXPECT_THAT(wordsOf(record), Contains("k2 (n.s.)"));
  EXPECT_EQ(circles()[0].pen.color(), theme.faint) << "below the others, so painted first";
  EXPECT_EQ(circles()[3].pen.color(), theme.sets[0]);
}

TEST_F(PaintedStability, ManyParametersStandBesideEachOtherAtASize)
{
  for (int i = 0; i < 12; ++i) add("k" + std::to_string(i), true, {0.5, 0.5, 0.5});
  const StabilityPicture shown = picture();
  ASSERT_EQ(shown.parameters().size(), 8u) << "the first ones, as the command has them";
  for (std::size_t size = 0; size < 3; ++size)
    for (std::size_t i = 1; i < 8; ++i)
      EXPECT_GT(shown.placeOf({i, size}).x(), shown.placeOf({i - 1, size}).x() + 3.0);
  EXPECT_LT(shown.placeOf({7, 0}).x(), shown.placeOf({0, 1}).x()) << "sizes stay apart";
  EXPECT_GT(shown.placeOf({0, 0}).x(), shown.frame().plot().left());
  EXPECT_LT(shown.placeOf({7, 2}).x(), shown.frame().plot().right());
}

TEST_F(PaintedStability, NamesDoNotTouchEachOther)
{
  for (int i = 0; i < 8; ++i) add("parameter " + std::to_string(i), true, {0.5, 0.5, 0.5});
  const Painting record = painted();
  std::vector<double> places = {placeOf(record, "noise floor").center().y()};
  for (int i = 0; i < 8; ++i) places.push_back(placeOf(record, QString("parameter %1").arg(i)).center().y());
  std::sort(places.begin(), places.end());
  for (std::size_t i = 1; i < places.size(); ++i)
    EXPECT_GT(places[i] - places[i - 1], QFontMetricsF(theme.font).ascent());
}

TEST_F(PaintedStability, TheNoiseIsAnAreaBelowTheFloors)
{
  add("k", true, {0.5, 0.5, 0.5});
  const StabilityPicture shown = picture();
  const auto areas = painted().of(Drawn::Kind::Polygon);
  ASSERT_EQ(areas.size(), 1u);
  for (auto const& [share, floor] : {std::pair{0.1, 0.4}, {0.5, 0.2}, {1.0, 0.1}}) {
    const QPointF corner = shown.frame().at(share, floor);
    EXPECT_TRUE(std::any_of(areas[0].points.begin(), areas[0].points.end(),
                            [&](QPointF const& point) { return isNear(point, corner); }));
  }
  stability.sizes[1].noiseFloor = std::nan("");
  EXPECT_TRUE(painted().of(Drawn::Kind::Polygon).empty()) << "which is not known";
}

TEST_F(PaintedStability, SharesAndNumbersOfRunsStandBelow)
{
  add("k", true, {0.5, 0.5, 0.5});
  const Painting record = painted();
  for (char const* text :
       {"10 %", "50 %", "all", "10 + 30", "50 + 150", "100 + 300", "share of the runs, passing + others"})
    EXPECT_THAT(wordsOf(record), Contains(text));
  EXPECT_NEAR(placeOf(record, "10 %").center().x(), placeOf(record, "10 + 30").center().x(), 2.0);
  size = {240, 160};
  for (ComparisonAtSize& part : stability.sizes) part.others = 123456;
  EXPECT_THAT(wordsOf(painted()), Not(Contains("10 + 123456"))) << "no room";
  EXPECT_THAT(wordsOf(painted()), Contains("share of the runs"));
}

TEST_F(PaintedStability, SharesDoNotTouchEachOther)
{
  add("k", true, {0.5, 0.5, 0.5});
  stability.sizes[1].share = 0.8;
  for (int width = 180; width < 700; width += 40) {
    size = {width, 200};
    const Painting record = painted();
    double end = -1.0;
    for (char const* text : {"10 %", "80 %", "all"}) {
      const QRectF place = placeOf(record, text);
      if (place.isNull()) continue;
      EXPECT_GT(place.left(), end) << text << " at " << width;
      end = place.right();
    }
    EXPECT_FALSE(placeOf(record, "all").isNull());
  }
  EXPECT_FALSE(placeOf(painted(), "80 %").isNull()) << "where there is room";
}

TEST_F(PaintedStability, NothingStandsOutsideOfAnySize)
{
  add(std::string(300, 'x'), true, {0.9, 0.9, 0.9});
  for (int i = 0; i < 9; ++i) add("parameter " + std::to_string(i), i < 3, {0.5, 0.4, 0.3});
  for (QSize const& room : {QSize(180, 120), QSize(300, 200), QSize(1200, 900)}) {
    size = room;
    const QRectF whole = QRectF(QPointF(), QSizeF(room)).adjusted(-1.0, -1.0, 1.0, 1.0);
    for (Drawn const& one : painted().all)
      EXPECT_TRUE(whole.contains(one.points.boundingRect().center()))
          << room.width() << ": " << one.text.toStdString();
    for (Drawn const& one : painted().of(Drawn::Kind::Text)) {
      EXPECT_GE(one.points.boundingRect().left(), -0.5) << one.text.toStdString();
      EXPECT_LE(one.points.boundingRect().right(), room.width() + 0.5) << one.text.toStdString();
    }
  }
}

TEST_F(PaintedStability, ThePointUnderThePointerIsFound)
{
  add("k1", true, {0.5, 0.5, 0.5});
  add("k2", true, {0.5, 0.5, 0.5});
  const StabilityPicture shown = picture();
  const auto found = shown.pointAt(shown.placeOf({1, 2}) + QPointF(1.0, 1.0), 9.0);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->parameter, 1u);
  EXPECT_EQ(found->size, 2u);
  EXPECT_FALSE(shown.pointAt({0.0, 0.0}, 9.0));
}

TEST_F(PaintedStability, WithoutSizesNothingIsPainted)
{
  stability.sizes.clear();
  EXPECT_TRUE(painted().all.empty());
}

} // namespace
} // namespace runsieve::test
