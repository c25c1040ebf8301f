#include "DocumentScene.h"
#include "PaintRecorder.h"

#include "app/explorer/charts/RunBands.h"
#include "app/explorer/charts/RunsPicture.h"
#include "app/explorer/charts/RunsRenderer.h"

#include <QPainter>

#include <random>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::RunsLayer;
using app::RunsRenderer;
using app::RunsRequest;

const auto never = [] { return false; };

RunsRequest request()
{
  RunsRequest wanted;
  wanted.scan = lineScan();
  wanted.output = 1;
  wanted.time = AxisMap(0.0, 10.0);
  wanted.value = AxisMap(0.0, 1.0);
  wanted.size = QSize(200, 120);
  wanted.layers = {{{}, Qt::darkBlue}};
  return wanted;
}

std::vector<std::uint8_t> mask(std::vector<std::size_t> const& runs)
{
  std::vector<std::uint8_t> marks(40);
  for (std::size_t const run : runs) marks[run] = 1;
  return marks;
}

QImage imageOf(RunsRequest const& wanted, std::size_t layer = 0)
{
  RunsRenderer renderer(nullptr);
  return renderer.render(wanted, never)->at(layer).image;
}

TEST(RunsRenderer, ALineCoversThePixelsItPassesThrough)
{
  RunsRequest wanted = request();
  wanted.output = 0;
  wanted.layers = {{mask({4}), Qt::darkBlue}};
  const QImage image = imageOf(wanted);
  const int row = 120 - 1 - static_cast<int>(scattered(0, 4) * 120.0);
  EXPECT_GT(qAlpha(image.pixel(100, row)), 100);
  for (int y = 0; y < 120; ++y) EXPECT_TRUE(std::abs(y - row) <= 1 || qAlpha(image.pixel(100, y)) == 0) << y;
}

TEST(RunsRenderer, RunsThatComeAndGoLeaveThePictureOfThoseThatAreIn)
{
  RunsRenderer renderer(nullptr);
  RunsRequest wanted = request();
  std::mt19937 random(3);
  for (int round = 0; round < 30; ++round) {
    std::vector<std::uint8_t> marks(40);
    for (std::uint8_t& mark : marks) mark = random() % 3 == 0 ? 1 : 0;
    wanted.layers = {{{}, Qt::darkBlue}, {marks, Qt::red}};
    const auto images = renderer.render(wanted, never);
    ASSERT_TRUE(images);
    EXPECT_EQ(images->at(1).image, imageOf(wanted, 1)) << round;
    EXPECT_EQ(images->at(0).image, imageOf(wanted, 0)) << round;
  }
}

TEST(RunsRenderer, ACancelledPictureLeavesTheNextOneWhole)
{
  RunsRenderer renderer(nullptr);
  const RunsRequest wanted = request();
  EXPECT_FALSE(renderer.render(wanted, [] { return true; }));
  EXPECT_EQ(renderer.render(wanted, never)->at(0).image, imageOf(wanted));
  RunsRequest other = wanted;
  other.layers = {{mask({1, 2, 3}), Qt::darkBlue}};
  EXPECT_FALSE(renderer.render(other, [] { return true; }));
  EXPECT_EQ(renderer.render(other, never)->at(0).image, imageOf(other));
}

TEST(RunsRenderer, OtherAxesAreCountedAnew)
{
  RunsRenderer renderer(nullptr);
  RunsRequest wanted = request();
  (void)renderer.render(wanted, never);
  wanted.value = AxisMap(0.2, 0.6);
  EXPECT_EQ(renderer.render(wanted, never)->at(0).image, imageOf(wanted));
  wanted.size = QSize(90, 300);
  EXPECT_EQ(renderer.render(wanted, never)->at(0).image, imageOf(wanted));
}

TEST(RunsRenderer, AnotherColourKeepsTheCounts)
{
  RunsRenderer renderer(nullptr);
  RunsRequest wanted = request();
  (void)renderer.render(wanted, never);
  wanted.layers[0].color = Qt::darkGreen;
  EXPECT_EQ(renderer.render(wanted, never)->at(0).image, imageOf(wanted));
}

TEST(RunsRenderer, NoRunsMakeNoImage)
{
  RunsRequest wanted = request();
  wanted.layers = {{mask({}), Qt::red}};
  EXPECT_TRUE(imageOf(wanted).isNull());
}

TEST(RunsRenderer, OnALogarithmicAxisWhatIsNotPositivePartsTheLine)
{
  RunsRequest wanted = request();
  wanted.value = AxisMap(0.001, 1.0, true);
  wanted.layers = {{mask({2}), Qt::red}};
  const QImage image = imageOf(wanted);
  // Output B is 0 at time 0, so that the line begins at time 1.
  for (int y = 0; y < 120; ++y) EXPECT_EQ(qAlpha(image.pixel(8, y)), 0);
  int covered = 0;
  for (int y = 0; y < 120; ++y) covered += qAlpha(image.pixel(100, y)) > 0 ? 1 : 0;
  EXPECT_GT(covered, 0);
}

TEST(RunsRenderer, AScanOfOneTimeOrWithoutOutputsDrawsNothing)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  scan->runs.push_back({"1", RunStatus::Complete, 1});
  RunsRequest wanted = request();
  wanted.scan = scan;
  wanted.output = 0;
  EXPECT_TRUE(imageOf(wanted).isNull());
  scan->addOutput({"A", "", "", ""})[0] = 0.5;
  (void)imageOf(wanted);
}

TEST(RunsPicture, LeavesThePainterAsItWasAndStaysWithinThePlot)
{
  app::RunsPicture picture;
  picture.request(request());
  ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  QImage page(300, 300, QImage::Format_RGB32);
  page.fill(Qt::white);
  QPainter painter(&page);
  const QRectF plot(40, 40, 200, 120);
  picture.paint(painter, plot, AxisMap(2.0, 5.0), AxisMap(0.1, 0.4), {0.5});
  EXPECT_EQ(painter.opacity(), 1.0);
  EXPECT_FALSE(painter.hasClipping());
  painter.end();
  int within = 0;
  for (int y = 0; y < 300; ++y)
    for (int x = 0; x < 300; ++x) {
      const bool isIn = plot.contains(x + 0.5, y + 0.5);
      const bool isInk = page.pixel(x, y) != qRgb(255, 255, 255);
      EXPECT_TRUE(isIn || !isInk) << x << ' ' << y;
      within += isIn && isInk ? 1 : 0;
    }
  EXPECT_GT(within, 1000);
}

TEST(RunsPicture, StandsWhereItsValuesAreUntilThoseOfOtherAxesAreMade)
{
  app::RunsPicture picture;
  picture.request(request());
  ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  const Painting painted = painting({300, 300}, [&](QPainter& painter) {
    picture.paint(painter, QRectF(40, 40, 200, 120), AxisMap(-10.0, 10.0), AxisMap(-1.0, 2.0), {1.0});
  });
  ASSERT_EQ(painted.of(Drawn::Kind::Image).size(), 1u);
  EXPECT_EQ(painted.of(Drawn::Kind::Image)[0].box(), QRectF(140, 80, 100, 40));
}

// R 4.2: quantile(c(3, 1, 4, 1, 5, 9, 2, 6), c(.05, .25, .5, .75, .95)) gives 1.00 1.75 3.50 5.25 7.95
TEST(RunBands, AreThoseOfR)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  const double values[] = {3, 1, 4, 1, 5, 9, 2, 6};
  for (int run = 0; run < 9; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 2});
  double* out = scan->addOutput({"A", "", "", ""});
  for (double const value : values) {
    *out++ = value;
    *out++ = std::nan("");
  }
  *out++ = 1000.0;
  *out++ = 7.0;
  std::vector<std::uint8_t> mask(9, 1);
  mask[8] = 0;
  const auto bands = app::bandsOf(*scan, 0, mask, app::BandsKind::Quantiles, never);
  ASSERT_TRUE(bands);
  const double expected[] = {1.0, 1.75, 3.5, 5.25, 7.95};
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_NEAR(bands->lines[i][0], expected[i], 1e-12);
    EXPECT_TRUE(std::isnan(bands->lines[i][1])) << "no run that counts has a value";
  }
}

/// Runs of one time.
std::shared_ptr<Scan const> scanOfValues(std::vector<double> const& values)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (std::size_t run = 0; run < values.size(); ++run)
    scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  double* out = scan->addOutput({"A", "", "", ""});
  for (double const value : values) *out++ = value;
  return scan;
}

TEST(RunBands, OfWholeRunsAreTheDeepestRunTheDeeperHalfAndAllThatAreNotOutlying)
{
  const auto scan = scanOfValues({1000, 5, 6, 7, 8, 9, 4, 10});
  std::vector<std::uint8_t> mask(8, 1);
  mask[7] = 0;
  const auto bands = app::bandsOf(*scan, 0, mask, app::BandsKind::WholeRuns, never);
  ASSERT_TRUE(bands);
  // In order 4 5 6 7 8 9 1000: the middle one is the deepest, those from 6 to 8 and 5 of equal depth are
  // half.
  const double expected[] = {4, 5, 7, 8, 9};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(bands->lines[i], std::vector<double>{expected[i]}) << i;
  EXPECT_EQ(bands->outlying, std::vector<std::size_t>{0});
  EXPECT_EQ(bands->outlyingValues, std::vector<std::vector<double>>{{1000.0}});
}

TEST(RunBands, OfManyOutlyingRunsTheLeastDeepAreDrawn)
{
  std::vector<double> values(300, 0.0);
  for (std::size_t i = 0; i < 60; ++i) values[i] = 1.0 + static_cast<double>(i);
  const auto bands = app::bandsOf(*scanOfValues(values), 0, std::vector<std::uint8_t>(300, 1),
                                  app::BandsKind::WholeRuns, never);
  ASSERT_TRUE(bands);
  EXPECT_EQ(bands->outlying.size(), 60u);
  ASSERT_EQ(bands->outlyingValues.size(), 50u);
  EXPECT_EQ(bands->outlyingValues.front(), std::vector<double>{60.0});
  EXPECT_EQ(bands->outlyingValues.back(), std::vector<double>{11.0});
}

TEST(RunBands, AreWhatTwoOfTheLooksShow)
{
  EXPECT_EQ(app::bandsKindOf(app::RunsLook::Bands), app::BandsKind::Quantiles);
  EXPECT_EQ(app::bandsKindOf(app::RunsLook::WholeBands), app::BandsKind::WholeRuns);
  EXPECT_FALSE(app::bandsKindOf(app::RunsLook::Density));
  EXPECT_FALSE(app::bandsKindOf(app::RunsLook::Lines));
}

TEST(RunsPicture, TheSameIsNotMadeTwice)
{
  app::RunsPicture picture;
  picture.request(request());
  const auto scan = request().scan;
  RunsRequest wanted = request();
  picture.request(wanted);
  ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  picture.request(wanted);
  EXPECT_TRUE(picture.isSettled());
  for (int change = 0; change < 6; ++change) {
    RunsRequest other = wanted;
    if (change == 0) other.output = 0;
    if (change == 1) other.time = AxisMap(1.0, 5.0);
    if (change == 2) other.value = AxisMap(0.1, 0.5);
    if (change == 3) other.width = 2.0;
    if (change == 4) other.dark = true;
    if (change == 5) other.layers[0].opacity = 0.5;
    picture.request(other);
    EXPECT_FALSE(picture.isSettled()) << change;
    ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
    picture.request(wanted);
    ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  }
}

TEST(RunsPicture, TheFormerShowsUntilTheNewOneIsReadyUnlessItIsOfOtherData)
{
  app::RunsPicture picture;
  const RunsRequest first = request();
  picture.request(first);
  EXPECT_TRUE(picture.images().empty());
  ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  ASSERT_FALSE(picture.images().empty());
  RunsRequest zoomed = first;
  zoomed.value = AxisMap(0.2, 0.4);
  picture.request(zoomed);
  EXPECT_FALSE(picture.images().empty());
  ASSERT_TRUE(waitFor([&] { return picture.isSettled(); }));
  RunsRequest other = zoomed;
  other.output = 0;
  picture.request(other);
  EXPECT_TRUE(picture.images().empty()) << "lines of one output must not stand on the axes of another";
}

} // namespace
} // namespace runsieve::test
