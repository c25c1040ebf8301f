// What becomes of a gate on a parameter while the pointer drags it.

#include "DocumentScene.h"

#include "app/explorer/parameters/SpanHold.h"

#include <QApplication>

#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::SpanHold;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The axis of k1 from 0 to 100, a pixel each.
struct SpanHolding : DocumentScene
{
  app::SpanAxis axis{1, AxisMap(0.0, 100.0), 0.0, 100.0};

  [[nodiscard]] SpanHold hold(double at, bool excludes = false, bool across = true) const
  {
    return {document, app::spansOf(document), axis, across, across ? QPointF(at, 7.0) : QPointF(7.0, at),
            excludes};
  }
  [[nodiscard]] static GateRange dragged(SpanHold const& held, double to)
  {
    return held.dragged({to, 50.0})->range;
  }
  void addSpan(double low, double high)
  {
    Gate gate;
    gate.column = "k1";
    gate.range = {low, high};
    addGate(gate);
  }
  static void expectRange(GateRange const& range, double low, double high)
  {
    EXPECT_EQ(range.low, low);
    EXPECT_EQ(range.high, high);
  }
};

TEST_F(SpanHolding, IsADragFromHalfTheUsualDistanceOn)
{
  const double half = QApplication::startDragDistance() / 2.0;
  const SpanHold held = hold(40.0);
  EXPECT_FALSE(held.isDrag({40.0 + half - 0.1, 7.0}));
  EXPECT_TRUE(held.isDrag({40.0 + half, 7.0}));
  EXPECT_TRUE(held.isDrag({40.0 - half, 7.0}));
  EXPECT_FALSE(held.isDrag({40.0, 70.0})) << "only along the axis";
}

TEST_F(SpanHolding, OnNothingDrawsANewGateWithinTheAxis)
{
  const SpanHold held = hold(20.3);
  EXPECT_FALSE(held.gate());
  EXPECT_EQ(held.stepName(), "Draw gate");
  EXPECT_EQ(held.cursor(), Qt::CrossCursor);
  const Gate gate = *held.dragged({60.4, 0.0});
  EXPECT_EQ(gate.column, "k1");
  EXPECT_EQ(gate.kind, GateKind::Inside);
  EXPECT_FALSE(gate.negated);
  expectRange(gate.range, 20.0, 60.0);
  expectRange(dragged(held, 5.0), 5.0, 20.0);
  expectRange(dragged(held, 150.0), 20.0, 100.0);
  expectRange(dragged(held, -50.0), 0.0, 20.0);
  EXPECT_TRUE(hold(20.0, true).dragged({60.0, 0.0})->negated);
}

TEST_F(SpanHolding, OfTheMiddleMovesBothEnds)
{
  addSpan(20.0, 60.0);
  const SpanHold held = hold(40.0);
  EXPECT_EQ(held.gate(), 0u);
  EXPECT_EQ(held.stepName(), "Move gate");
  EXPECT_EQ(held.cursor(), Qt::SizeAllCursor);
  expectRange(dragged(held, 50.0), 30.0, 70.0);
  expectRange(dragged(held, 10.0), -10.0, 30.0);
}

TEST_F(SpanHolding, OfAnEndMovesThatEndAlsoBeyondTheOther)
{
  addSpan(20.0, 60.0);
  const SpanHold low = hold(20.0);
  EXPECT_EQ(low.stepName(), "Resize gate");
  EXPECT_EQ(low.cursor(), Qt::SizeHorCursor);
  expectRange(dragged(low, 30.0), 30.0, 60.0);
  expectRange(dragged(low, 80.0), 60.0, 80.0);
  const SpanHold high = hold(60.0);
  expectRange(dragged(high, 90.0), 20.0, 90.0);
  expectRange(dragged(high, 10.0), 10.0, 20.0);
  EXPECT_EQ(hold(60.0, false, false).cursor(), Qt::SizeVerCursor);
}

TEST_F(SpanHolding, LeavesOpenEndsOpen)
{
  addSpan(20.0, infinity);
  expectRange(dragged(hold(50.0), 60.0), 30.0, infinity);
  expectRange(dragged(hold(20.0), 40.0), 40.0, infinity);
}

TEST_F(SpanHolding, LeavesWhatALogarithmicAxisDoesNotHave)
{
  axis.map = AxisMap(1.0, 100.0, true);
  addSpan(-5.0, 10.0);
  const GateRange range = dragged(hold(25.0), 40.0);
  EXPECT_EQ(range.low, -5.0);
  EXPECT_NEAR(range.high, 20.0, 0.2);
}

} // namespace
} // namespace runsieve::test
