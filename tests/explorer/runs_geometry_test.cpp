#include "DocumentScene.h"

#include "app/explorer/runs/Extents.h"
#include "app/explorer/runs/GateShapes.h"
#include "app/explorer/runs/RunFinder.h"
#include "app/explorer/runs/RunsZoom.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::ChartFrame;
using app::GateGrip;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A chart with times from 0 to 10 and values from 0 to 1, or from 0.001 to 1 on a logarithmic axis.
struct GateGeometry : testing::Test
{
  app::Theme theme = app::Theme::ofPaper(QFont());
  ChartFrame frame{{0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "A"}, theme};
  ChartFrame logarithmic{{0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0.001, 1, true), "A"}, theme};

  [[nodiscard]] QPointF pixels(double times, double values) const
  {
    return {times / 10.0 * frame.plot().width(), -values * frame.plot().height()};
  }
  static GateGrip grip(bool left, bool right, bool top, bool bottom)
  {
    GateGrip grip;
    grip.left = left;
    grip.right = right;
    grip.top = top;
    grip.bottom = bottom;
    return grip;
  }
};

TEST_F(GateGeometry, OpenEndsReachBeyondThePlotSoThatNoSideIsSeenThere)
{
  Gate gate = gateOnA(-infinity, infinity);
  gate.span = GateSpan();
  for (int round = 0; round < 2; ++round) {
    const QRectF shape = *app::shapeOf(gate, frame);
    EXPECT_LT(shape.left(), frame.plot().left() - 1.0);
    EXPECT_GT(shape.right(), frame.plot().right() + 1.0);
    EXPECT_LT(shape.top(), frame.plot().top() - 1.0);
    EXPECT_GT(shape.bottom(), frame.plot().bottom() + 1.0);
    gate.span.reset();
  }
}

TEST_F(GateGeometry, EachEndMayBeOpenByItself)
{
  Gate gate = gateOnA(0.25, infinity);
  gate.span = GateSpan{std::nullopt, 4.0};
  QRectF shape = *app::shapeOf(gate, frame);
  EXPECT_LT(shape.left(), frame.plot().left());
  EXPECT_EQ(shape.right(), frame.xAt(4.0));
  EXPECT_LT(shape.top(), frame.plot().top());
  EXPECT_EQ(shape.bottom(), frame.yAt(0.25));
  gate.span = GateSpan{4.0, std::nullopt};
  gate.range = {-infinity, 0.25};
  shape = *app::shapeOf(gate, frame);
  EXPECT_EQ(shape.left(), frame.xAt(4.0));
  EXPECT_GT(shape.right(), frame.plot().right());
  EXPECT_EQ(shape.top(), frame.yAt(0.25));
  EXPECT_GT(shape.bottom(), frame.plot().bottom());
}

TEST_F(GateGeometry, ALowEndThatALogarithmicAxisDoesNotHaveLiesBelowIt)
{
  const QRectF shape = *app::shapeOf(gateOnA(-1.0, 0.1), logarithmic);
  EXPECT_GT(shape.bottom(), logarithmic.plot().bottom());
  EXPECT_EQ(shape.top(), logarithmic.yAt(0.1));
  const QRectF none = *app::shapeOf(gateOnA(-2.0, -1.0), logarithmic);
  EXPECT_GT(none.top(), logarithmic.plot().bottom()) << "nothing of it is on the axis";
  EXPECT_EQ(none.height(), 0.0);
}

TEST_F(GateGeometry, GatesOnATimeStandOverThatTimeFromTopToBottom)
{
  Gate gate;
  gate.column = "A";
  for (GateKind kind : {GateKind::TimeOfMax, GateKind::TimeOfMin}) {
    gate.kind = kind;
    gate.range = {2.0, 4.0};
    const QRectF shape = *app::shapeOf(gate, frame);
    EXPECT_EQ(shape.left(), frame.xAt(2.0));
    EXPECT_EQ(shape.right(), frame.xAt(4.0));
    EXPECT_LT(shape.top(), frame.plot().top());
    EXPECT_GT(shape.bottom(), frame.plot().bottom());
    gate.range = {-infinity, infinity};
    const QRectF open = *app::shapeOf(gate, frame);
    EXPECT_LT(open.left(), frame.plot().left());
    EXPECT_GT(open.right(), frame.plot().right());
    EXPECT_LT(open.width(), frame.plot().width() + 20.0);
  }
}

TEST_F(GateGeometry, GatesThatAreNoRectanglesHaveNoShape)
{
  Gate gate = gateOnA(0.1, 0.2);
  for (GateKind kind : {GateKind::Is, GateKind::Status, GateKind::Runs, GateKind::Cluster}) {
    gate.kind = kind;
    EXPECT_FALSE(app::shapeOf(gate, frame));
  }
  for (GateKind kind : {GateKind::Inside, GateKind::Ever, GateKind::Never, GateKind::Crosses, GateKind::Max,
                        GateKind::Min, GateKind::Mean, GateKind::Last}) {
    gate.kind = kind;
    EXPECT_TRUE(app::shapeOf(gate, frame));
  }
}

TEST_F(GateGeometry, APointerHoldsTheSidesThatItIsNearTo)
{
  const QRectF shape(100, 100, 200, 100);
  struct Case
  {
    QPointF at;
    GateGrip expected;
  };
  for (Case const& each :
       {Case{{200, 150}, grip(false, false, false, false)}, Case{{103, 150}, grip(true, false, false, false)},
        Case{{95, 150}, grip(true, false, false, false)}, Case{{297, 150}, grip(false, true, false, false)},
        Case{{305, 150}, grip(false, true, false, false)}, Case{{200, 103}, grip(false, false, true, false)},
        Case{{200, 95}, grip(false, false, true, false)}, Case{{200, 197}, grip(false, false, false, true)},
        Case{{200, 205}, grip(false, false, false, true)}, Case{{98, 98}, grip(true, false, true, false)},
        Case{{302, 202}, grip(false, true, false, true)},
        Case{{110, 150}, grip(false, false, false, false)}}) {
    auto const found = app::gripAt(shape, each.at, 7.0);
    ASSERT_TRUE(found) << each.at.x() << ' ' << each.at.y();
    EXPECT_EQ(found->left, each.expected.left) << each.at.x() << ' ' << each.at.y();
    EXPECT_EQ(found->right, each.expected.right) << each.at.x() << ' ' << each.at.y();
    EXPECT_EQ(found->top, each.expected.top) << each.at.x() << ' ' << each.at.y();
    EXPECT_EQ(found->bottom, each.expected.bottom) << each.at.x() << ' ' << each.at.y();
  }
  for (QPointF const& beyond : {QPointF(90, 150), QPointF(310, 150), QPointF(200, 90), QPointF(200, 210)})
    EXPECT_FALSE(app::gripAt(shape, beyond, 7.0)) << beyond.x() << ' ' << beyond.y();
}

TEST_F(GateGeometry, ASmallShapeCanStillBeMovedByItsMiddle)
{
  EXPECT_TRUE(app::gripAt(QRectF(100, 100, 10, 10), {105, 105}, 7.0)->isWhole());
  EXPECT_TRUE(app::gripAt(QRectF(100, 100, 10, 10), {107, 103}, 7.0)->isWhole());
  EXPECT_TRUE(app::gripAt(QRectF(100, 100, 10, 10), {101, 105}, 7.0)->left);
  EXPECT_TRUE(app::gripAt(QRectF(100, 100, 10, 10), {105, 109}, 7.0)->bottom);
  for (auto const& [place, isFirst, isLast] :
       {std::tuple(103.0, true, false), {103.1, false, false}, {108.9, false, false}, {109.0, false, true}}) {
    const QRectF narrow(100, 100, 12, 12); // a quarter is 3
    EXPECT_EQ(app::gripAt(narrow, {place, 106.0}, 7.0)->left, isFirst) << place;
    EXPECT_EQ(app::gripAt(narrow, {place, 106.0}, 7.0)->right, isLast) << place;
    EXPECT_EQ(app::gripAt(narrow, {106.0, place}, 7.0)->top, isFirst) << place;
    EXPECT_EQ(app::gripAt(narrow, {106.0, place}, 7.0)->bottom, isLast) << place;
  }
}

TEST_F(GateGeometry, OnlyTheHeldSidesOfAGateMove)
{
  Gate const gate = gateOnA(0.25, 0.75);
  const QPointF by = pixels(1.0, 0.1);
  struct Case
  {
    GateGrip grip;
    double first;
    double last;
    double low;
    double high;
  };
  for (Case const& each : {Case{grip(true, false, false, false), 3.0, 4.0, 0.25, 0.75},
                           Case{grip(false, true, false, false), 2.0, 5.0, 0.25, 0.75},
                           Case{grip(false, false, true, false), 2.0, 4.0, 0.25, 0.85},
                           Case{grip(false, false, false, true), 2.0, 4.0, 0.35, 0.75},
                           Case{grip(true, false, true, false), 3.0, 4.0, 0.25, 0.85},
                           Case{grip(false, true, false, true), 2.0, 5.0, 0.35, 0.75},
                           Case{grip(false, false, false, false), 3.0, 5.0, 0.35, 0.85}}) {
    const Gate moved = app::draggedGate(gate, frame, each.grip, by);
    EXPECT_NEAR(*moved.span->first, each.first, 1e-9);
    EXPECT_NEAR(*moved.span->last, each.last, 1e-9);
    EXPECT_NEAR(moved.range.low, each.low, 1e-9);
    EXPECT_NEAR(moved.range.high, each.high, 1e-9);
  }
}

TEST_F(GateGeometry, SidesThatAreDraggedBeyondTheOtherChangePlaces)
{
  Gate const gate = gateOnA(0.25, 0.75);
  const Gate moved =
      app::draggedGate(gate, frame, grip(true, false, false, true), pixels(3.0, 0.6)); // left and bottom
  EXPECT_NEAR(*moved.span->first, 4.0, 1e-9);
  EXPECT_NEAR(*moved.span->last, 5.0, 1e-9);
  EXPECT_NEAR(moved.range.low, 0.75, 1e-9);
  EXPECT_NEAR(moved.range.high, 0.85, 1e-9);
}

TEST_F(GateGeometry, ASingleTimeIsPulledApartToTheSideToWhichItIsDragged)
{
  Gate gate = gateOnA(0.25, 0.75);
  gate.span = GateSpan{5.0, 5.0};
  for (GateGrip const& held : {grip(true, false, false, false), grip(false, true, false, false)}) {
    const Gate right = app::draggedGate(gate, frame, held, pixels(1.0, 0.0));
    EXPECT_NEAR(*right.span->first, 5.0, 1e-9);
    EXPECT_NEAR(*right.span->last, 6.0, 1e-9);
    const Gate left = app::draggedGate(gate, frame, held, pixels(-1.0, 0.0));
    EXPECT_NEAR(*left.span->first, 4.0, 1e-9);
    EXPECT_NEAR(*left.span->last, 5.0, 1e-9);
  }
  const Gate moved = app::draggedGate(gate, frame, {}, pixels(1.0, 0.0));
  EXPECT_NEAR(*moved.span->first, 6.0, 1e-9);
  EXPECT_EQ(*moved.span->first, *moved.span->last) << "by its middle it stays a single time";
}

TEST_F(GateGeometry, OpenEndsStayOpenWhateverIsDragged)
{
  Gate gate = gateOnA(-infinity, infinity);
  gate.span = GateSpan();
  for (GateGrip const& held :
       {grip(false, false, false, false), grip(true, false, true, false), grip(false, true, false, true)}) {
    const Gate moved = app::draggedGate(gate, frame, held, pixels(1.0, 0.1));
    EXPECT_FALSE(moved.span->first);
    EXPECT_FALSE(moved.span->last);
    EXPECT_EQ(moved.range.low, -infinity);
    EXPECT_EQ(moved.range.high, infinity);
  }
  gate.span.reset();
  EXPECT_FALSE(app::draggedGate(gate, frame, {}, pixels(1.0, 0.1)).span);
}

TEST_F(GateGeometry, AnEndThatALogarithmicAxisDoesNotHaveStays)
{
  const Gate moved = app::draggedGate(gateOnA(-1.0, 0.01), logarithmic, {}, {0.0, -0.1 * 600});
  EXPECT_EQ(moved.range.low, -1.0);
  EXPECT_GT(moved.range.high, 0.011);
}

TEST_F(GateGeometry, GatesOnATimeAreDraggedSidewaysAlone)
{
  Gate gate;
  gate.kind = GateKind::TimeOfMax;
  gate.column = "A";
  gate.range = {2.0, 4.0};
  const QPointF by = pixels(1.0, 0.3);
  const Gate whole = app::draggedGate(gate, frame, {}, by);
  EXPECT_NEAR(whole.range.low, 3.0, 1e-9);
  EXPECT_NEAR(whole.range.high, 5.0, 1e-9);
  const Gate left = app::draggedGate(gate, frame, grip(true, false, false, false), pixels(3.0, 0.0));
  EXPECT_NEAR(left.range.low, 4.0, 1e-9);
  EXPECT_NEAR(left.range.high, 5.0, 1e-9);
  const Gate right = app::draggedGate(gate, frame, grip(false, true, false, false), by);
  EXPECT_NEAR(right.range.low, 2.0, 1e-9);
  EXPECT_NEAR(right.range.high, 5.0, 1e-9);
  gate.range = {-infinity, infinity};
  const Gate open = app::draggedGate(gate, frame, {}, by);
  EXPECT_EQ(open.range.low, -infinity);
  EXPECT_EQ(open.range.high, infinity);
}

TEST_F(GateGeometry, ANewGateSpansItsRectangle)
{
  const QRectF rectangle(frame.at(2.0, 0.75), frame.at(4.0, 0.25));
  const Gate gate = app::gateOver(rectangle, frame, "Molecule: A");
  EXPECT_EQ(gate.kind, GateKind::Inside);
  EXPECT_EQ(gate.column, "Molecule: A");
  EXPECT_FALSE(gate.negated);
  EXPECT_NEAR(*gate.span->first, 2.0, 1e-9);
  EXPECT_NEAR(*gate.span->last, 4.0, 1e-9);
  EXPECT_NEAR(gate.range.low, 0.25, 1e-9);
  EXPECT_NEAR(gate.range.high, 0.75, 1e-9);
}

/// Three runs at times 0, 4 and 10: one that rises, one that stands still and one with a missing value.
struct RunAtPointer : testing::Test
{
  Scan scan;
  RunSet all{3, true};
  app::Theme theme = app::Theme::ofPaper(QFont());
  ChartFrame frame{{0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "A"}, theme};

  RunAtPointer()
  {
    scan.times = {0.0, 4.0, 10.0};
    for (char const* key : {"1", "2", "3"}) scan.runs.push_back({key, RunStatus::Complete, 3});
    const double values[] = {0.0, 0.8, 0.2, 0.5, 0.5, 0.5, 0.9, nan, 0.9};
    std::copy(std::begin(values), std::end(values), scan.addOutput({"A", "", "", ""}));
  }
  [[nodiscard]] std::optional<app::FoundRun> at(double time, double value, double reach = 7.0) const
  {
    return app::findRun(scan, 0, frame, frame.at(time, value), reach, all);
  }
};

TEST_F(RunAtPointer, IsTheOneWhoseLineIsNearest)
{
  ASSERT_TRUE(at(2.0, 0.4));
  EXPECT_EQ(at(2.0, 0.4)->run, 0u);
  EXPECT_EQ(at(2.0, 0.5)->run, 1u);
  EXPECT_EQ(at(6.9, 0.51)->run, 0u);
  EXPECT_EQ(at(7.2, 0.5)->run, 1u) << "behind the place at which both lines cross";
  EXPECT_EQ(at(3.0, 0.6)->run, 0u) << "between two times the line counts";
}

TEST_F(RunAtPointer, IsToldWithTheNearestTimeOfTheScanAndItsValue)
{
  EXPECT_EQ(at(1.0, 0.2)->time, 0.0);
  EXPECT_EQ(at(1.0, 0.2)->value, 0.0);
  EXPECT_EQ(at(3.0, 0.6)->time, 4.0);
  EXPECT_EQ(at(3.0, 0.6)->value, 0.8);
  EXPECT_EQ(at(6.0, 0.6)->time, 4.0);
  EXPECT_EQ(at(8.0, 0.4)->time, 10.0);
  EXPECT_EQ(at(8.0, 0.4)->value, 0.2);
  EXPECT_EQ(at(4.0, 0.8)->time, 4.0);
  EXPECT_EQ(at(0.0, 0.5)->time, 0.0);
}

TEST_F(RunAtPointer, IsNoneFurtherAwayThanTheReach)
{
  const double pixel = 1.0 / frame.plot().height();
  EXPECT_TRUE(at(0.5, 0.5 + 6.5 * pixel));
  EXPECT_FALSE(at(0.5, 0.5 + 8.0 * pixel));
  EXPECT_TRUE(at(0.5, 0.5 - 6.5 * pixel));
  EXPECT_FALSE(at(0.5, 0.5 - 8.0 * pixel));
  EXPECT_FALSE(at(2.0, 0.9)) << "no line goes through a missing value";
}

TEST_F(RunAtPointer, IsOneOfThoseThatAreShown)
{
  all.set(1, false);
  EXPECT_FALSE(at(0.5, 0.5));
  EXPECT_TRUE(at(2.0, 0.4));
}

TEST_F(RunAtPointer, IsNoneOutsideOfThePlotOrOfTheTimes)
{
  EXPECT_FALSE(at(-0.1, 0.5));
  EXPECT_FALSE(at(10.1, 0.5));
  frame = ChartFrame({0, 0, 800, 600}, {AxisMap(-5, 20), "time"}, {AxisMap(0, 1), "A"}, theme);
  EXPECT_FALSE(at(-2.0, 0.5)) << "before the first time";
  EXPECT_FALSE(at(12.0, 0.5)) << "behind the last time";
  EXPECT_TRUE(at(0.0, 0.5));
  EXPECT_TRUE(at(10.0, 0.5));
}

TEST_F(RunAtPointer, IsFoundInAScanOfASingleTime)
{
  Scan single;
  single.times = {5.0};
  single.runs.push_back({"1", RunStatus::Complete, 1});
  single.addOutput({"A", "", "", ""})[0] = 0.5;
  auto const found = app::findRun(single, 0, frame, frame.at(5.0, 0.5), 7.0, RunSet(1, true));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->time, 5.0);
}

TEST_F(RunAtPointer, OnALogarithmicAxisLinesAreStraightOnTheScreen)
{
  frame = ChartFrame({0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0.01, 1, true), "A"}, theme);
  const double middle = std::sqrt(0.8 * 0.2);
  ASSERT_TRUE(at(7.0, middle));
  EXPECT_EQ(at(7.0, middle)->run, 0u);
}

std::shared_ptr<Scan> scanOf(std::vector<double> const& values, std::vector<double> const& times)
{
  auto scan = std::make_shared<Scan>();
  scan->times = times;
  for (std::size_t run = 0; run < values.size() / times.size(); ++run)
    scan->runs.push_back({std::to_string(run), RunStatus::Complete, times.size()});
  std::copy(values.begin(), values.end(), scan->addOutput({"A", "", "", ""}));
  return scan;
}

TEST(Extents, AreTheFiniteValuesWithALittleRoom)
{
  app::Extents extents;
  extents.reset(scanOf({-2.0, nan, 8.0, infinity, 0.5, 3.0}, {0.0, 1.0}));
  EXPECT_EQ(extents.of(0).low, -2.0);
  EXPECT_EQ(extents.of(0).high, 8.0);
  EXPECT_EQ(extents.of(0).lowestPositive, 0.5);
  const AxisMap axis = extents.axis(0, false);
  EXPECT_LT(axis.low(), -2.1);
  EXPECT_GT(axis.low(), -3.0);
  EXPECT_GT(axis.high(), 8.1);
  EXPECT_LT(axis.high(), 9.0);
  EXPECT_EQ(extents.timeAxis(), AxisMap(0.0, 1.0)) << "times have no room";
}

TEST(Extents, OfALogarithmicAxisBeginAtTheSmallestPositiveValue)
{
  app::Extents extents;
  extents.reset(scanOf({-2.0, 0.0, 100.0, 0.1}, {0.0, 1.0}));
  const AxisMap axis = extents.axis(0, true);
  EXPECT_TRUE(axis.isLogarithmic());
  EXPECT_LT(axis.low(), 0.1);
  EXPECT_GT(axis.low(), 0.05);
  EXPECT_GT(axis.high(), 100.0);
}

TEST(Extents, ValuesThatOnlyJustMissZeroDoNotFillALogarithmicAxis)
{
  app::Extents extents;
  extents.reset(scanOf({1e-300, 1.0}, {0.0, 1.0}));
  EXPECT_GT(extents.axis(0, true).low(), 1e-14);
  EXPECT_LT(extents.axis(0, true).low(), 1e-11);
}

TEST(Extents, WithoutPositiveValuesAnAxisStaysLinear)
{
  app::Extents extents;
  extents.reset(scanOf({-2.0, 0.0}, {0.0, 1.0}));
  EXPECT_FALSE(extents.axis(0, true).isLogarithmic());
  EXPECT_EQ(extents.of(0).lowestPositive, 0.0);
}

TEST(Extents, OfNothingAreThoseOfAnEmptyChart)
{
  app::Extents extents;
  EXPECT_EQ(extents.of(0).low, 0.0);
  EXPECT_EQ(extents.of(0).high, 1.0);
  EXPECT_EQ(extents.timeAxis(), AxisMap());
  extents.reset(scanOf({nan, nan}, {0.0, 1.0}));
  EXPECT_EQ(extents.of(0).low, 0.0);
  EXPECT_EQ(extents.of(0).high, 1.0);
  EXPECT_EQ(extents.of(1).high, 1.0) << "an output that is not there";
}

TEST(Extents, AnotherScanHasItsOwn)
{
  app::Extents extents;
  extents.reset(scanOf({1.0, 2.0}, {0.0, 1.0}));
  (void)extents.of(0);
  extents.reset(scanOf({5.0, 6.0}, {0.0, 1.0}));
  EXPECT_EQ(extents.of(0).low, 5.0);
}

struct RunsZoomScene : DocumentScene
{
  app::RunsZoom zoom{document};
  int changes = 0;

  RunsZoomScene()
  {
    QObject::connect(&zoom, &app::RunsZoom::changed, [this] { ++changes; });
  }
};

TEST_F(RunsZoomScene, ShowsAllFirst)
{
  EXPECT_TRUE(zoom.isAll());
  EXPECT_EQ(zoom.time(), AxisMap(0.0, 10.0));
  EXPECT_FALSE(zoom.canGoBack());
  EXPECT_FALSE(zoom.canGoForward());
  zoom.back();
  zoom.forward();
  zoom.reset();
  EXPECT_EQ(changes, 0) << "there is nothing to go to";
}

TEST_F(RunsZoomScene, WhatIsLeftOutStays)
{
  const AxisMap values = zoom.value(0);
  zoom.show(AxisMap(2.0, 4.0), 0, std::nullopt);
  EXPECT_EQ(zoom.time(), AxisMap(2.0, 4.0));
  EXPECT_EQ(zoom.value(0), values);
  EXPECT_FALSE(zoom.isAll());
  zoom.show(std::nullopt, 0, AxisMap(0.25, 0.5));
  EXPECT_EQ(zoom.time(), AxisMap(2.0, 4.0));
  EXPECT_EQ(zoom.value(0), AxisMap(0.25, 0.5));
  EXPECT_NE(zoom.value(1), AxisMap(0.25, 0.5)) << "another output has its own values";
  EXPECT_EQ(changes, 2);
}

TEST_F(RunsZoomScene, APartOfTheValuesAloneIsNotAll)
{
  zoom.show(std::nullopt, 0, AxisMap(0.25, 0.5));
  EXPECT_FALSE(zoom.isAll());
  zoom.reset();
  EXPECT_TRUE(zoom.isAll());
}

TEST_F(RunsZoomScene, StepsOfAWheelAreTakenBackAsOne)
{
  zoom.show(AxisMap(1.0, 9.0), 0, std::nullopt);
  zoom.show(AxisMap(2.0, 8.0), 0, std::nullopt);
  zoom.show(AxisMap(3.0, 7.0), 0, std::nullopt);
  zoom.back();
  EXPECT_TRUE(zoom.isAll());
  EXPECT_FALSE(zoom.canGoBack());
  zoom.forward();
  EXPECT_EQ(zoom.time(), AxisMap(3.0, 7.0));
  EXPECT_FALSE(zoom.canGoForward());
}

TEST_F(RunsZoomScene, AResetIsAStepOfItsOwnThatIsTakenBack)
{
  zoom.show(AxisMap(1.0, 9.0), 0, std::nullopt);
  zoom.reset();
  zoom.show(AxisMap(2.0, 3.0), 0, std::nullopt);
  zoom.back();
  EXPECT_TRUE(zoom.isAll());
  zoom.back();
  EXPECT_EQ(zoom.time(), AxisMap(1.0, 9.0));
  zoom.back();
  EXPECT_TRUE(zoom.isAll());
  EXPECT_FALSE(zoom.canGoBack());
}

TEST_F(RunsZoomScene, ANewZoomForgetsThoseThatWereGoneBackFrom)
{
  zoom.show(AxisMap(1.0, 9.0), 0, std::nullopt);
  zoom.back();
  ASSERT_TRUE(zoom.canGoForward());
  zoom.show(AxisMap(2.0, 3.0), 0, std::nullopt);
  EXPECT_FALSE(zoom.canGoForward());
  zoom.back();
  EXPECT_TRUE(zoom.isAll());
}

TEST_F(RunsZoomScene, AHundredStepsAreKept)
{
  for (int step = 0; step < 80; ++step) {
    zoom.show(AxisMap(1.0, 9.0), 0, std::nullopt);
    zoom.reset();
  }
  int steps = 0;
  while (zoom.canGoBack()) {
    zoom.back();
    ++steps;
  }
  EXPECT_EQ(steps, 100);
}

TEST_F(RunsZoomScene, TypedLimitsHoldUntilAPartIsShown)
{
  document.change("Limits", [](app::State& state) {
    state.view.timeRange = app::TypedRange{1.0, 5.0};
    state.view.outputRanges[0] = {0.1, 0.2};
  });
  EXPECT_EQ(zoom.time(), AxisMap(1.0, 5.0));
  EXPECT_EQ(zoom.value(0), AxisMap(0.1, 0.2));
  EXPECT_TRUE(zoom.isAll());
  zoom.show(AxisMap(2.0, 3.0), 0, AxisMap(0.12, 0.13));
  EXPECT_EQ(zoom.time(), AxisMap(2.0, 3.0));
  EXPECT_EQ(zoom.value(0), AxisMap(0.12, 0.13));
  zoom.reset();
  EXPECT_EQ(zoom.time(), AxisMap(1.0, 5.0));
}

TEST_F(RunsZoomScene, ALogarithmicAxisIsLogarithmicHoweverItsEndsAreFound)
{
  auto const setLog = [&](bool on) {
    document.change("Log", [on](app::State& state) { state.view.logOutputs[0] = on; });
  };
  setLog(true);
  EXPECT_TRUE(zoom.value(0).isLogarithmic());
  EXPECT_FALSE(zoom.value(1).isLogarithmic());
  document.change("Limits", [](app::State& state) { state.view.outputRanges[0] = {0.1, 0.2}; });
  EXPECT_EQ(zoom.value(0), AxisMap(0.1, 0.2, true));
  zoom.show(std::nullopt, 0, AxisMap(0.12, 0.13, true));
  EXPECT_EQ(zoom.value(0), AxisMap(0.12, 0.13, true));
  setLog(false);
  EXPECT_EQ(zoom.value(0), AxisMap(0.12, 0.13));
}

TEST_F(RunsZoomScene, AnotherScanIsShownWhole)
{
  zoom.show(AxisMap(1.0, 9.0), 0, std::nullopt);
  zoom.back();
  zoom.forward();
  document.open(lineScan(10), {});
  EXPECT_TRUE(zoom.isAll());
  EXPECT_FALSE(zoom.canGoBack());
  EXPECT_FALSE(zoom.canGoForward());
}

} // namespace
} // namespace runsieve::test
