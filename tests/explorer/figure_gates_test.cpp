#include "FigureScene.h"

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

using Kind = FigureShape::Kind;
using testing::SizeIs;

/// The chart of output A over times from 0 to 10.
struct FigureGates : FigureScene
{
  app::FigureContent drawn;

  FigureGates() { options.strongest = 0; }

  DrawnFigure const& drawGates()
  {
    EXPECT_TRUE(settle());
    drawn = content();
    drawn.values[0] = app::AxisMap(0.0, 2.0);
    drawn.values[1] = app::AxisMap(0.0, 2.0);
    return draw(drawn);
  }

  [[nodiscard]] double xOf(double time) const { return plot().left() + 0.1 * time * plot().width(); }
  [[nodiscard]] double yOf(double value) const { return plot().bottom() - 0.5 * value * plot().height(); }

  [[nodiscard]] std::vector<FigureShape> areas() const
  {
    return shapes(Kind::Rectangle, [&](FigureShape const& shape) {
      return shape.isFilled() && shape.brush.color().rgb() == theme().gate.rgb();
    });
  }
};

TEST_F(FigureGates, StandOverTheirTimesAndValues)
{
  addGate(gateOnA(0.5, 1.0));
  drawGates();
  const auto found = areas();
  ASSERT_THAT(found, SizeIs(1));
  const QRectF area = found[0].box();
  EXPECT_NEAR(area.left(), xOf(2.0), 3.0);
  EXPECT_NEAR(area.right(), xOf(4.0), 3.0);
  EXPECT_NEAR(area.top(), yOf(1.0), 3.0);
  EXPECT_NEAR(area.bottom(), yOf(0.5), 3.0);
  EXPECT_NEAR(found[0].brush.color().alphaF(), 0.12, 0.01) << "runs are seen through it";
  EXPECT_FALSE(found[0].isStroked());
  const auto sides = lines(theme().gate);
  ASSERT_FALSE(sides.empty());
  QRectF all;
  for (FigureShape const& side : sides) {
    all = all.united(side.box());
    EXPECT_FALSE(side.isFilled());
    EXPECT_EQ(side.pen.style(), Qt::SolidLine);
    EXPECT_NEAR(side.pen.widthF(), 1.4 * theme().line, 0.01);
  }
  EXPECT_NEAR(all.left(), area.left(), 1.0);
  EXPECT_NEAR(all.right(), area.right(), 1.0);
  EXPECT_NEAR(all.top(), area.top(), 1.0);
  EXPECT_NEAR(all.bottom(), area.bottom(), 1.0);
}

TEST_F(FigureGates, ThatRunsMustKeepOutOfAreDashed)
{
  Gate never = gateOnA(0.5, 1.0);
  never.kind = GateKind::Never;
  Gate negated = gateOnA(0.5, 1.0);
  negated.negated = true;
  Gate twice = never;
  twice.negated = true;
  for (auto const& [gate, style] :
       {std::pair(never, Qt::DashLine), {negated, Qt::DashLine}, {twice, Qt::SolidLine}}) {
    document.open(lineScan(), {});
    addGate(gate);
    drawGates();
    const auto sides = lines(theme().gate);
    ASSERT_FALSE(sides.empty());
    for (FigureShape const& side : sides) EXPECT_EQ(side.pen.style(), style);
  }
}

TEST_F(FigureGates, WithOpenEndsReachToTheEndsOfThePlotAndHaveNoSidesThere)
{
  Gate gate = gateOnA(0.5, std::numeric_limits<double>::infinity());
  gate.span.reset();
  addGate(gate);
  drawGates();
  const auto found = areas();
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_NEAR(found[0].box().left(), plot().left(), 3.0);
  EXPECT_NEAR(found[0].box().right(), plot().right(), 3.0);
  EXPECT_NEAR(found[0].box().top(), plot().top(), 3.0);
  for (FigureShape const& side : lines(theme().gate)) {
    EXPECT_NEAR(side.box().top(), yOf(0.5), 3.0);
    EXPECT_LT(side.box().height(), 1.0);
  }
}

TEST_F(FigureGates, OnASingleTimeAreAsWideAsALine)
{
  Gate gate = gateOnA(0.5, 1.0);
  gate.span = GateSpan{3.0, 3.0};
  addGate(gate);
  drawGates();
  const auto found = areas();
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_NEAR(found[0].box().width(), theme().line, 0.1);
  EXPECT_NEAR(found[0].box().center().x(), xOf(3.0), 3.0);
}

TEST_F(FigureGates, AreInTheChartOfTheirOutputAlone)
{
  Gate gate = gateOnA(0.5, 1.0);
  gate.column = "B";
  gate.range = {0.0, 1.0};
  addGate(gate);
  showOutputs({0, 1});
  drawGates();
  const auto found = areas();
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_TRUE(plot(1).adjusted(-3.0, -3.0, 3.0, 3.0).contains(found[0].box()));
  EXPECT_TRUE(plot(1).contains(textOf("Gate 1").ink));
  showOutputs({0});
  drawGates();
  EXPECT_THAT(areas(), SizeIs(0));
  EXPECT_FALSE(says("Gate 1"));
}

TEST_F(FigureGates, OnParametersAreInNoChartOfOutputs)
{
  Gate gate;
  gate.column = "k1";
  gate.range = {0.2, 0.8};
  addGate(gate);
  drawGates();
  EXPECT_THAT(areas(), SizeIs(0));
  EXPECT_TRUE(says("Gate 1: k1 in 0.2..0.8")) << "but the legend tells them";
  options.gates = false;
  draw(drawn);
  EXPECT_FALSE(says("Gate 1: k1 in 0.2..0.8"));
}

TEST_F(FigureGates, OfRunsAndOnOutputsThatAreNotShownAreToldInTheLegend)
{
  addGate(gateOnA(0.1, 0.9));
  Gate other = gateOnA(0.0, 1.0);
  other.column = "B";
  addGate(other);
  Gate few;
  few.kind = GateKind::Runs;
  few.runs = {RunKey("3"), RunKey("5")};
  addGate(few);
  options.outputs = {0};
  drawGates();
  EXPECT_TRUE(says("Gate 2: B @ 2..4 in 0..1"));
  EXPECT_TRUE(says("Gate 3: runs 3, 5"));
  EXPECT_TRUE(says("Gate 1")) << "it stands in the chart";
  options.outputs = {0, 1};
  draw(drawn);
  EXPECT_FALSE(says("Gate 2: B @ 2..4 in 0..1"));
}

TEST_F(FigureGates, ThatAreManyAreCountedInTheLegend)
{
  for (int i = 0; i < 6; ++i) {
    Gate gate;
    gate.column = "k1";
    gate.range = {0.0, 2.0 + i};
    addGate(gate);
  }
  drawGates();
  EXPECT_TRUE(says("Gate 3: k1 in 0..4"));
  EXPECT_FALSE(says("Gate 4: k1 in 0..5"));
  EXPECT_TRUE(says("and 3 more gates"));
  document.undoStack().undo();
  document.undoStack().undo();
  drawGates();
  EXPECT_TRUE(says("Gate 4: k1 in 0..5"));
}

TEST_F(FigureGates, BeyondTheTimesThatAreShownAreLeftOutAndThoseAtTheirEndAreCutOff)
{
  addGate(gateOnA(0.5, 1.0));
  EXPECT_TRUE(settle());
  drawn = content();
  drawn.time = app::AxisMap(5.0, 10.0);
  draw(drawn);
  EXPECT_THAT(areas(), SizeIs(0));
  EXPECT_FALSE(says("Gate 1"));
  drawn.time = app::AxisMap(3.0, 10.0);
  draw(drawn);
  ASSERT_THAT(areas(), SizeIs(1));
  EXPECT_NEAR(areas()[0].box().left(), plot().left(), 3.0);
  for (FigureShape const& side : lines(theme().gate))
    EXPECT_GE(side.box().left(), plot().left() - 3.0) << "no side where it goes on";
  EXPECT_TRUE(plot().contains(textOf("Gate 1").ink));
}

TEST_F(FigureGates, HaveTheirNamesAboveThemOnAPaleGround)
{
  addGate(gateOnA(0.5, 1.0));
  drawGates();
  const FigureText name = textOf("Gate 1");
  EXPECT_EQ(name.color, theme().gate);
  EXPECT_LT(name.ink.bottom(), yOf(1.0));
  EXPECT_GT(name.ink.bottom(), yOf(1.0) - QFontMetricsF(theme().font).height());
  EXPECT_NEAR(name.ink.left(), xOf(2.0), 2.0 * theme().gap);
  QColor pale = theme().paper;
  pale.setAlphaF(0.7);
  const auto grounds = fills(Kind::Rectangle, pale);
  ASSERT_THAT(grounds, SizeIs(1));
  EXPECT_TRUE(grounds[0].box().contains(name.ink));
  EXPECT_FALSE(grounds[0].isStroked());
}

TEST_F(FigureGates, AtTheTopHaveTheirNamesInsideThem)
{
  addGate(gateOnA(0.5, 2.0));
  drawGates();
  EXPECT_GT(textOf("Gate 1").ink.top(), yOf(2.0));
  EXPECT_LT(textOf("Gate 1").ink.bottom(), yOf(0.5));
}

TEST_F(FigureGates, ThatAreLowAndAtTheTopHaveTheirNamesBelowThem)
{
  addGate(gateOnA(1.95, 2.0));
  drawGates();
  EXPECT_GT(textOf("Gate 1").ink.top(), yOf(1.95));
}

TEST_F(FigureGates, OneInAnotherHaveNamesThatKeepClear)
{
  for (int i = 0; i < 4; ++i) addGate(gateOnA(0.5, 1.0));
  drawGates();
  std::vector<QRectF> names;
  for (int i = 1; i <= 4; ++i) names.push_back(textOf(QString("Gate %1").arg(i)).ink);
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_TRUE(plot().contains(names[i]));
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(names[i].intersects(names[j])) << i << ' ' << j;
  }
}

TEST_F(FigureGates, AtTheRightHaveTheirNamesWithinThePlotAndLongOnesAreCut)
{
  document.change("Add gate", [](app::State& state) {
    Gate gate = gateOnA(0.5, 1.0);
    gate.span = GateSpan{9.5, 10.0};
    state.gates.push_back(
        {"a gate with a name that goes on and on and on for more than the width of it", gate, true});
  });
  options.width = 80.0;
  drawGates();
  std::vector<FigureText> names;
  for (FigureText const& text : drawing.texts)
    if (text.color == theme().gate) names.push_back(text);
  ASSERT_THAT(names, SizeIs(1));
  EXPECT_TRUE(names[0].text.contains(QChar(0x2026)));
  EXPECT_TRUE(plot().contains(names[0].ink));
  EXPECT_GT(names[0].ink.width(), 0.4 * plot().width());
  EXPECT_LE(names[0].ink.width(), 0.6 * plot().width());
}

TEST_F(FigureGates, PinnedRunsAreLinesInColoursOfTheirOwnWithTheirKeys)
{
  document.togglePin(2);
  document.togglePin(7);
  drawGates();
  std::size_t number = 0;
  for (std::size_t const run : {2, 7}) {
    const QColor color = theme().sets[number++];
    const auto curves = lines(color);
    ASSERT_THAT(curves, SizeIs(1));
    const double y = yOf(document.scan().parameters[0].values[run]);
    EXPECT_NEAR(curves[0].box().top(), y, 3.0);
    EXPECT_NEAR(curves[0].box().left(), plot().left(), 3.0);
    EXPECT_NEAR(curves[0].box().right(), plot().right(), 3.0);
    EXPECT_EQ(curves[0].pen.widthF(), theme().curve);
    std::vector<FigureText> keys;
    for (FigureText const& text : drawing.texts)
      if (text.color == color) keys.push_back(text);
    ASSERT_THAT(keys, SizeIs(1));
    EXPECT_EQ(keys[0].text, QString::number(run + 1));
    EXPECT_LT(keys[0].ink.bottom(), y);
    EXPECT_GT(keys[0].ink.bottom(), y - 1.5 * QFontMetricsF(theme().font).height());
    EXPECT_NEAR(keys[0].ink.right(), plot().right() - theme().gap, 12.0);
  }
  EXPECT_THAT(lines(theme().paper), SizeIs(2)) << "each on a pale line";
}

TEST_F(FigureGates, PinnedRunsHaveNoMorePointsThanCanBeSeen)
{
  auto scan = std::make_shared<Scan>();
  constexpr int times = 20'001;
  for (int time = 0; time < times; ++time) scan->times.push_back(1e-3 * time);
  for (char const* key : {"1", "2"}) scan->runs.push_back({key, RunStatus::Complete, times});
  double* value = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 2; ++run)
    for (double const time : scan->times) *value++ = (1.0 + run) * time;
  document.open(scan, {});
  document.togglePin(0);
  drawGates();
  std::size_t points = 0;
  double length = 0.0;
  for (FigureShape const& part : lines(theme().sets[0])) {
    points += static_cast<std::size_t>(part.points.size());
    length += QLineF(part.points.first(), part.points.last()).length();
  }
  EXPECT_GT(points, 50u);
  constexpr double third = 0.3 * app::figureUnitsPerPoint;
  EXPECT_LE(static_cast<double>(points), length / third + 3.0);
}

TEST_F(FigureGates, KeysOfPinnedRunsKeepClearOfOneAnotherAndOfNamesOfGates)
{
  for (std::size_t run = 0; run < 8; ++run) document.togglePin(run);
  Gate gate = gateOnA(0.2, 0.8);
  gate.span = GateSpan{8.0, 10.0};
  addGate(gate);
  drawGates();
  std::vector<QRectF> names = {textOf("Gate 1").ink};
  for (std::size_t run = 0; run < 8; ++run) {
    std::vector<QRectF> keys;
    for (FigureText const& text : found(QString::number(run + 1)))
      if (text.color == theme().sets[run]) keys.push_back(text.ink);
    ASSERT_THAT(keys, SizeIs(1)) << run;
    names.push_back(keys[0]);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_TRUE(plot().contains(names[i])) << i;
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(names[i].intersects(names[j])) << i << ' ' << j;
  }
}

TEST_F(FigureGates, ChartsTellThatALogarithmicAxisLacksValuesFromZeroDown)
{
  options.outputs = {1};
  EXPECT_TRUE(settle());
  drawn = content();
  drawn.values.clear();
  QString const told = QString::fromUtf8("values \u2264 0 are not drawn");
  draw(drawn);
  EXPECT_FALSE(says(told));
  drawn.logOutputs = {{0, true}, {1, true}};
  draw(drawn);
  EXPECT_TRUE(says(told)) << "B begins at 0";
  options.outputs = {0};
  draw(drawn);
  EXPECT_FALSE(says(told)) << "A is above 0";
}

TEST_F(FigureGates, StandWhereALogarithmicAxisHasTheirValues)
{
  addGate(gateOnA(0.5, 1.0));
  EXPECT_TRUE(settle());
  drawn = content();
  drawn.logOutputs[0] = true;
  const app::AxisMap axis = drawn.valueAxis(0);
  EXPECT_TRUE(axis.isLogarithmic());
  draw(drawn);
  ASSERT_THAT(areas(), SizeIs(1));
  EXPECT_NEAR(areas()[0].box().bottom(), plot().bottom() - axis.place(0.5) * plot().height(), 3.0);
  drawn.logOutputs[0] = false;
  EXPECT_FALSE(drawn.valueAxis(0).isLogarithmic());
}

} // namespace
} // namespace runsieve::test
