#include "PaintRecorder.h"

#include "app/explorer/parameters/BoxPathChart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QRegularExpression>
#include <QToolTip>

#include <cmath>
#include <set>

namespace runsieve::test {
namespace {

using app::BoxPathPicture;
using app::Theme;
using testing::Contains;

struct PaintedPath : testing::Test
{
  BoxOfRuns box;
  Theme theme = Theme::ofPaper(QGuiApplication::font());

  /// From all runs to a box of half of the passing ones.
  PaintedPath()
  {
    for (std::size_t step = 0; step < 6; ++step) {
      BoxPathStep one;
      one.quality.coverage = 1.0 - 0.1 * static_cast<double>(step);
      one.quality.density = 0.2 + 0.1 * static_cast<double>(step);
      one.restricted = 10 + (step + 1) / 2; // numbers that no axis has
      box.path.push_back(one);
    }
    box.all.density = 0.2;
    box.chosen = 3;
    box.quality = box.path[3].quality;
    box.quality.coverage = 0.74;
  }
  [[nodiscard]] BoxPathPicture picture() const { return {box, QRectF(0.0, 0.0, 500.0, 400.0), theme}; }
  [[nodiscard]] Painting painted() const
  {
    return painting(QSize(500, 400), [this](QPainter& painter) { picture().paint(painter); });
  }
  static bool isNear(QPointF const& a, QPointF const& b)
  {
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 0.5;
  }
};

TEST_F(PaintedPath, EachStepIsAPointTheLargerTheMoreParametersItRestricts)
{
  double last = 0.0;
  std::size_t step = 0;
  for (Drawn const& circle : painted().of(Drawn::Kind::Ellipse)) {
    if (circle.brush.style() == Qt::NoBrush) continue;
    const QRectF place = circle.points.boundingRect();
    ASSERT_LT(step, box.path.size());
    BoxQuality const& quality = box.path[step++].quality;
    EXPECT_TRUE(isNear(place.center(), picture().frame().at(quality.coverage, quality.density)));
    EXPECT_GE(place.width(), last);
    last = place.width();
  }
  EXPECT_EQ(step, 6u);
}

TEST_F(PaintedPath, PointsThatWouldCoverTheOneBeforeAreLeftOutButNotWhereTheNumberChanges)
{
  for (BoxPathStep& step : box.path) step.quality.coverage = 0.5 + 0.001 * step.quality.coverage;
  for (BoxPathStep& step : box.path) step.quality.density = 0.5;
  int points = 0;
  for (Drawn const& circle : painted().of(Drawn::Kind::Ellipse))
    points += circle.brush.style() == Qt::NoBrush ? 0 : 1;
  EXPECT_EQ(points, 4) << "2 and 4 cover the one before";
}

TEST_F(PaintedPath, TheBoxIsADiamondAndItsStepHasARing)
{
  const Painting record = painted();
  const auto diamonds = record.of(Drawn::Kind::Polygon);
  ASSERT_EQ(diamonds.size(), 1u);
  EXPECT_EQ(diamonds[0].brush.color(), theme.passing);
  EXPECT_TRUE(
      isNear(diamonds[0].points.boundingRect().center(), picture().frame().at(0.74, box.quality.density)));
  const Drawn ring = record.of(Drawn::Kind::Ellipse).back();
  EXPECT_EQ(ring.pen.color(), theme.passing);
  EXPECT_TRUE(isNear(ring.points.boundingRect().center(), picture().frame().at(0.7, 0.5)));
}

TEST_F(PaintedPath, TheNumberOfRestrictedParametersStandsWhereItChanges)
{
  const auto texts = wordsOf(painted());
  for (char const* number : {"10", "11", "12", "13"}) EXPECT_THAT(texts, Contains(number));
}

TEST_F(PaintedPath, NumbersKeepClearOfEachOtherAndOfTheSigns)
{
  for (BoxPathStep& step : box.path) {
    step.quality.coverage = 0.7 + 0.04 * (step.quality.coverage - 0.7);
    step.quality.density = 0.5;
  }
  box.quality = box.path[3].quality;
  const Painting record = painted();
  std::vector<QRectF> places;
  for (Drawn const& text : record.of(Drawn::Kind::Text))
    if (text.text.size() == 2) places.push_back(text.ink);
  places.push_back(record.of(Drawn::Kind::Polygon)[0].points.boundingRect());
  EXPECT_GT(places.size(), 1u);
  EXPECT_LT(places.size(), 5u) << "not all have room";
  for (std::size_t i = 0; i < places.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) {
      const QRectF both = places[i] & places[j];
      EXPECT_LT(both.height(), 4.0) << "the descent of digits is empty";
    }
}

TEST_F(PaintedPath, NumbersKeepClearOfTheRing)
{
  box.quality.coverage = 0.2; // its sign is elsewhere
  auto const ring = [this] {
    const auto circles = painted().of(Drawn::Kind::Ellipse);
    return circles.back().points.boundingRect();
  };
  const QRectF place = ring();
  for (double across = -20.0; across <= 20.0; across += 2.0)
    for (double down = -20.0; down <= 20.0; down += 2.0) {
      app::ChartFrame const frame = picture().frame();
      const QPointF at = place.center() + QPointF(across, down);
      box.path[1].quality.coverage = frame.xValue(at.x());
      box.path[1].quality.density = frame.yValue(at.y());
      const Painting record = painted();
      if (Drawn const* number = record.text("11")) {
        EXPECT_LT((number->ink & ring()).height(), 4.0) << across << ' ' << down;
      }
    }
}

TEST_F(PaintedPath, EachStepTellsWhatItIsUnderThePointer)
{
  app::BoxPathChart chart;
  chart.resize(500, 400);
  chart.show(std::make_shared<BoxOfRuns>(box));
  std::set<std::string> told;
  for (int y = 0; y < chart.height(); y += 4)
    for (int x = 0; x < chart.width(); x += 4) {
      QHelpEvent help(QEvent::ToolTip, {x, y}, chart.mapToGlobal({x, y}));
      QApplication::sendEvent(&chart, &help);
      told.insert(QRegularExpression("step \\d:").match(QToolTip::text()).captured().toStdString());
    }
  EXPECT_THAT(told,
              testing::ElementsAre("", "step 0:", "step 1:", "step 2:", "step 3:", "step 4:", "step 5:"));
  QToolTip::hideText();
}

TEST_F(PaintedPath, HalvesAreACrossIfThereAreSome)
{
  auto const crosses = [this] {
    int lines = 0;
    for (Drawn const& line : painted().of(Drawn::Kind::Line)) lines += line.pen.color() == theme.gate ? 1 : 0;
    return lines;
  };
  EXPECT_EQ(crosses(), 0);
  EXPECT_FALSE(picture().hasHalves());
  box.coverage = {10, 0.5, 0.6, 0.7};
  box.density = {10, 0.3, 0.4, 0.45};
  EXPECT_EQ(crosses(), 2);
}

TEST_F(PaintedPath, ABoxWithoutAnyDensityIsNoHarm)
{
  box.quality = BoxQuality();
  box.path.front().quality = BoxQuality();
  box.all = BoxQuality();
  for (Drawn const& one : painted().all)
    for (QPointF const& point : one.points) EXPECT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
}

} // namespace
} // namespace runsieve::test
