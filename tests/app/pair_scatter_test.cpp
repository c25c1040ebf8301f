#include "app/view/PairScatter.h"

#include "core/compare/ParameterScan.h"
#include "support/RecordingDevice.h"

#include <vtkContextScene.h>
#include <vtkNew.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace runsieve::test {
namespace {

using app::PairScatter;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct PairDrawing : testing::Test
{
  int width = 600;
  int height = 450;
  bool opaque = false;
  std::vector<Stroke> strokes;

  void paint(Scan const& scan, std::vector<ParameterPair> const& pairs, RunSet const& passing,
             RunSet const& eligible)
  {
    vtkNew<PairScatter> scatter;
    scatter->show(scan, pairs, passing, eligible);
    scatter->setTitle("the gates");
    scatter->setOpaque(opaque);
    vtkNew<vtkContextScene> scene;
    scene->SetGeometry(width, height);
    scene->AddItem(scatter);
    vtkNew<RecordingDevice> device;
    vtkNew<vtkContext2D> painter;
    painter->Begin(device);
    scatter->Paint(painter);
    painter->End();
    strokes = device->strokes;
  }

  static ParameterPair pair(std::string const& first, std::size_t x, std::string const& second, std::size_t y)
  {
    ParameterPair result;
    result.first = first;
    result.second = second;
    result.firstParameter = x;
    result.secondParameter = y;
    result.rPassing = 0.426;
    result.rOthers = -0.0204;
    result.p = 0.002;
    result.significant = true;
    return result;
  }

  /// The points of charts; those of the legend stand alone.
  [[nodiscard]] std::vector<Stroke> points() const
  {
    std::vector<Stroke> found;
    for (Stroke const& stroke : strokes)
      if (stroke.kind == Stroke::Points) found.push_back(stroke);
    found.erase(found.begin(), found.begin() + 2);
    return found;
  }

  [[nodiscard]] std::vector<std::string> texts() const
  {
    std::vector<std::string> found;
    for (Stroke const& stroke : strokes)
      if (stroke.kind == Stroke::Text) found.push_back(stroke.text.substr(1, stroke.text.size() - 2));
    return found;
  }
};

TEST_F(PairDrawing, PassingRunsAreDrawnAboveTheOthers)
{
  const Scan scan = parameterScan({{"k1", {1, 2, 3, 4, 5}}, {"k2", {1, 3, 2, 5, 4}}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(5, {1, 2}), RunSet(5, true));
  const std::vector<Stroke> drawn = points();
  ASSERT_EQ(drawn.size(), 2u);
  EXPECT_EQ(drawn[0].points.size(), 3u);
  EXPECT_EQ(drawn[1].points.size(), 2u);
  for (int c = 0; c < 3; ++c) {
    EXPECT_EQ(drawn[0].pen[c], (std::array<int, 3>{60, 70, 90}[c]));
    EXPECT_EQ(drawn[1].pen[c], (std::array<int, 3>{255, 51, 0}[c]));
  }
  EXPECT_GT(drawn[1].width, drawn[0].width);
}

TEST_F(PairDrawing, APointStandsWhereItsValuesAre)
{
  const Scan scan = parameterScan({{"k1", {0, 10, 5}}, {"k2", {0, 1, 1}}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(3, {2}), RunSet(3, true));
  const Point first = points()[0].points[0];
  const Point second = points()[0].points[1];
  const Point passing = points()[1].points[0];
  EXPECT_LT(first.first, second.first);
  EXPECT_LT(first.second, second.second);
  EXPECT_NEAR(passing.first, (first.first + second.first) / 2.0, 0.01);
  EXPECT_EQ(passing.second, second.second);
}

TEST_F(PairDrawing, NamesNumbersAndCountsAreTold)
{
  const Scan scan = parameterScan({{"k1", {1, 2, 3, 4, 5}}, {"k2", {1, 3, 2, 5, 4}}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(5, {1, 2}), RunSet(5, true));
  for (char const* text :
       {"the gates", "2 passing", "3 others", "k1", "k2", "r = +0.43 (others -0.02), p = 0.002 *"})
    EXPECT_THAT(texts(), Contains(text));
}

TEST_F(PairDrawing, RunsWithoutAFiniteValueAndThoseThatTakeNoPartAreLeftOut)
{
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Scan scan = parameterScan({{"k1", {1, nan, 3, 4, 5, 6}}, {"k2", {1, 3, infinity, 5, 4, 9}}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(6, {1, 3}), runSet(6, {0, 1, 2, 3, 4}));
  EXPECT_EQ(points()[0].points.size(), 2u);
  EXPECT_EQ(points()[1].points.size(), 1u);
  EXPECT_THAT(texts(), Contains("2 passing")) << "those without a value pass all the same";
}

TEST_F(PairDrawing, ManyRunsAreSmallAndFaint)
{
  std::vector<Stroke> few;
  for (std::size_t const runs : {100, 100000}) {
    Values x;
    Values y;
    for (std::size_t i = 0; i < runs; ++i) {
      x.push_back(static_cast<double>(i * 7919 % runs));
      y.push_back(static_cast<double>(i * 104729 % runs));
    }
    const Scan scan = parameterScan({{"k1", x}, {"k2", y}});
    paint(scan, {pair("k1", 0, "k2", 1)}, runSet(runs, {1, 2, 3}), RunSet(runs, true));
    if (few.empty()) few = points();
  }
  EXPECT_LT(points()[0].width, few[0].width);
  EXPECT_LT(points()[0].pen[3], few[0].pen[3]);
  EXPECT_EQ(points()[1].pen[3], few[1].pen[3]) << "the few that pass stay clear";
}

TEST_F(PairDrawing, DocumentsHaveNoTranslucencyAndSomeOfManyRuns)
{
  opaque = true;
  const std::size_t runs = 40000;
  Values x;
  for (std::size_t i = 0; i < runs; ++i) x.push_back(static_cast<double>(i));
  const Scan scan = parameterScan({{"k1", x}, {"k2", x}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(runs, {1, 2, 3}), RunSet(runs, true));
  EXPECT_EQ(points()[0].pen[3], 255);
  EXPECT_GT(points()[0].pen[0], 60) << "as on white";
  EXPECT_NEAR(static_cast<double>(points()[0].points.size()), 10000.0, 100.0);
  EXPECT_EQ(points()[1].points.size(), 3u);
}

TEST_F(PairDrawing, ChartsStandBesideAndAboveEachOtherWithinThePicture)
{
  std::vector<std::pair<std::string, Values>> parameters;
  for (int i = 0; i < 7; ++i) parameters.emplace_back("k" + std::to_string(i), Values{1.0 * i, 3.0, 2.0});
  const Scan scan = parameterScan(parameters);
  std::vector<ParameterPair> pairs;
  for (std::size_t i = 0; i < 6; ++i) pairs.push_back(pair("k0", 0, "k" + std::to_string(i + 1), i + 1));
  paint(scan, pairs, runSet(3, {0}), RunSet(3, true));
  EXPECT_EQ(points().size(), 12u);
  for (Stroke const& stroke : strokes)
    for (Point const& point : stroke.points) {
      EXPECT_GE(point.first, 0.0f);
      EXPECT_LE(point.first, 600.0f);
      EXPECT_GE(point.second, 0.0f);
      EXPECT_LE(point.second, 450.0f);
    }
}

TEST_F(PairDrawing, ALongNameLosesItsMiddle)
{
  const std::string name(300, 'x');
  const Scan scan = parameterScan({{name, {1, 2, 3}}, {"k2", {1, 3, 2}}});
  paint(scan, {pair(name, 0, "k2", 1)}, runSet(3, {1}), RunSet(3, true));
  EXPECT_THAT(texts(), Not(Contains(name)));
  EXPECT_THAT(texts(), Contains(HasSubstr("xx\u2026xx")));
}

TEST_F(PairDrawing, WithoutPairsNothingIsDrawn)
{
  const Scan scan = parameterScan({{"k1", {1, 2}}});
  paint(scan, {}, runSet(2, {0}), RunSet(2, true));
  EXPECT_THAT(strokes, IsEmpty());
}

TEST_F(PairDrawing, APictureOfNoSizeIsNoHarm)
{
  width = 1;
  height = 1;
  const Scan scan = parameterScan({{"k1", {1, 2, 3}}, {"k2", {1, 3, 2}}});
  paint(scan, {pair("k1", 0, "k2", 1)}, runSet(3, {1}), RunSet(3, true));
  EXPECT_EQ(points().size(), 2u);
}

} // namespace
} // namespace runsieve::test
