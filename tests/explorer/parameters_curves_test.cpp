#include "PaintRecorder.h"
#include "ParametersScene.h"

#include "app/explorer/parameters/GroupLegend.h"
#include "app/explorer/parameters/ThinnedLine.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace runsieve::test {
namespace {

struct ParameterCurves : ParametersScene
{
  /// Height of the lowest and the highest pixel of the passing runs' curve, from 0 at the bottom of a plot to
  /// 1, in a column of pixels; nothing if there is none.
  std::optional<std::pair<double, double>> curveAt(std::size_t parameter, double x)
  {
    const QImage image = shot();
    const QRectF plot = grid().plot(parameter);
    const int column = qRound(plot.left() + x * plot.width());
    std::optional<std::pair<double, double>> found;
    for (int y = qRound(plot.bottom()); y >= qRound(plot.top()); --y) {
      const QImage pixel = image.copy(column, y, 1, 1);
      if (passingPixels(pixel) == 0) continue;
      const double height = (plot.bottom() - y) / plot.height();
      if (!found) found = {height, height};
      found->second = height;
    }
    return found;
  }
};

TEST_F(ParameterCurves, StandWhereTheSharesOfTheRunsAre)
{
  addGate(gateOnA(0.3, 0.9));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(waitFor([this] { return passingPixels() > 0; }));
  document.selectGate(std::nullopt);
  std::vector<double> passing;
  for (std::size_t run = 0; run < 40; ++run)
    if (scattered(0, run) >= 0.3 && scattered(0, run) <= 0.9) passing.push_back(scattered(1, run));
  // The axis of k1 reaches from its smallest to its largest value, with some room.
  double low = 1.0;
  double high = 0.0;
  for (std::size_t run = 0; run < 40; ++run) {
    low = std::min(low, scattered(1, run));
    high = std::max(high, scattered(1, run));
  }
  for (double const x : {0.3, 0.5, 0.7, 0.85}) {
    const auto curve = curveAt(1, x);
    ASSERT_TRUE(curve) << x;
    auto const shareUpTo = [&](double value) {
      return static_cast<double>(
                 std::count_if(passing.begin(), passing.end(), [&](double v) { return v <= value; })) /
             static_cast<double>(passing.size());
    };
    const double room = 0.08 * (high - low);
    const double least = shareUpTo(low + x * (high - low) - room);
    const double most = shareUpTo(low + x * (high - low) + room);
    EXPECT_LE(curve->first, most + 0.04) << x;
    EXPECT_GE(curve->second, least - 0.04) << x;
  }
}

TEST_F(ParameterCurves, OfDensitiesAreHighestWhereMostRunsAre)
{
  setLook(app::ParameterLook::Densities);
  Gate gate = gateOnA(0.6, 0.9);
  addGate(gate);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(waitFor([this] { return passingPixels() > 0; }));
  // k0 of the passing runs lies between 0.6 and 0.9.
  const auto inside = curveAt(0, 0.75);
  ASSERT_TRUE(inside);
  EXPECT_GT(inside->second, 0.4);
  const auto outside = curveAt(0, 0.2);
  EXPECT_LT(outside ? outside->second : 0.0, 0.1);
}

/// How far a line is from points, above or below them, at the most.
double furthest(QPolygonF const& line, QPolygonF const& points)
{
  double found = 0.0;
  for (QPointF const& point : points)
    for (int i = 1; i < line.size(); ++i) {
      const QPointF a = line[i - 1];
      const QPointF b = line[i];
      if (point.x() < a.x() || point.x() > b.x() || a.x() == b.x()) continue;
      const double y = a.y() + (b.y() - a.y()) * (point.x() - a.x()) / (b.x() - a.x());
      found = std::max(found, std::fabs(y - point.y()));
    }
  return found;
}

TEST(ThinnedLine, StaysNearAllPointsWithFewerOfThem)
{
  QPolygonF wave;
  for (int i = 0; i <= 1000; ++i) wave << QPointF(0.2 * i, 40.0 * std::sin(0.02 * i));
  const QPolygonF line = app::thinned(wave, 0.1);
  EXPECT_LT(line.size(), 120);
  EXPECT_LE(furthest(line, wave), 0.1 + 1e-9);
  EXPECT_EQ(line.first(), wave.first());
  EXPECT_EQ(line.last(), wave.last());
}

TEST(ThinnedLine, KeepsStepsAndCorners)
{
  const QPolygonF steps({{0.0, 0.0}, {5.0, 0.0}, {5.0, 8.0}, {5.0, 9.0}, {12.0, 9.0}, {13.0, 0.0}});
  const QPolygonF line = app::thinned(steps, 0.1);
  EXPECT_EQ(line, steps);
}

TEST(ThinnedLine, OfPointsInARowIsItsEnds)
{
  QPolygonF row;
  for (int i = 0; i < 50; ++i) row << QPointF(i, 3.0 + 0.5 * i);
  EXPECT_EQ(app::thinned(row, 0.1).size(), 2);
  EXPECT_EQ(app::thinned(QPolygonF(), 0.1).size(), 0);
  EXPECT_EQ(app::thinned(QPolygonF({{1.0, 2.0}}), 0.1).size(), 1);
}

TEST_F(ParameterCurves, LegendOfGroupsHasShortSamplesBeforeItLeavesOneOut)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  app::GroupLegend legend(document);
  auto const texts = [&](int width) {
    legend.resize(width, 20);
    PaintRecorder paper(legend.size());
    legend.render(&paper, QPoint(), QRegion(), QWidget::RenderFlags());
    return wordsOf(paper.painting());
  };
  const int whole = legend.sizeHint().width();
  EXPECT_THAT(texts(whole), testing::ElementsAre("passing", "others", "noise floor"));
  EXPECT_THAT(texts(whole - 30), testing::ElementsAre("passing", "others", "noise floor"));
  const QFontMetrics metrics(legend.font());
  const int two = metrics.horizontalAdvance("passing") + metrics.horizontalAdvance("others");
  EXPECT_THAT(texts(two + 32), testing::ElementsAre("passing", "others"));
}

} // namespace
} // namespace runsieve::test
