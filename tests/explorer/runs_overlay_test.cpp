#include "DocumentScene.h"
#include "PaintRecorder.h"

#include "app/explorer/runs/RunsOverlay.h"

#include <gmock/gmock.h>

#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::ChartFrame;
using app::RunsOverlay;
using app::Theme;

constexpr double infinity = std::numeric_limits<double>::infinity();
using Kind = Drawn::Kind;

/// A chart of output A of a scan of lines, with times from 0 to 10 and values from 0 to 1.
struct RunsOverlayScene : DocumentScene
{
  Theme theme = Theme::ofPaper(QFont());
  ChartFrame frame{{0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "A"}, theme};
  std::size_t output = 0;

  [[nodiscard]] RunsOverlay overlay() const { return {document, output, frame, theme}; }

  template <class Paint> Painting painted(Paint const& paint) const
  {
    PaintRecorder paper;
    QPainter painter(&paper);
    paint(overlay(), painter);
    EXPECT_TRUE(isAsNew(painter)) << "what is drawn next must not depend on it";
    return paper.painting();
  }
  [[nodiscard]] Painting gates(bool handles = false) const
  {
    return painted([=](RunsOverlay const& each, QPainter& painter) { each.paintGates(painter, handles); });
  }
  [[nodiscard]] Painting runs() const
  {
    return painted([](RunsOverlay const& each, QPainter& painter) { each.paintRuns(painter); });
  }
  [[nodiscard]] Painting hover(app::FoundRun const& found) const
  {
    return painted([&](RunsOverlay const& each, QPainter& painter) { each.paintHover(painter, found); });
  }
  /// Rectangles that have an outline: gates and handles, not the grounds of names.
  [[nodiscard]] std::vector<Drawn> outlines(bool handles = false) const
  {
    std::vector<Drawn> found = gates(handles).of(Kind::Rectangle);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](Drawn const& each) { return each.pen.style() == Qt::NoPen; }),
                found.end());
    return found;
  }
  [[nodiscard]] Drawn gateShape() const { return outlines().at(0); }
  /// The squares to pull at.
  [[nodiscard]] std::vector<QPointF> handles() const
  {
    std::vector<QPointF> places;
    for (Drawn const& each : outlines(true))
      if (each.pen.color() == theme.paper) places.push_back(each.box().center());
    return places;
  }
  /// A gate of some pixels about the middle of the chart.
  void addGateOfPixels(double width, double height)
  {
    const QPointF middle = frame.plot().center();
    Gate gate = gateOnA(frame.yValue(middle.y() + 0.5 * height), frame.yValue(middle.y() - 0.5 * height));
    gate.span = GateSpan{frame.xValue(middle.x() - 0.5 * width), frame.xValue(middle.x() + 0.5 * width)};
    addGate(gate);
    document.selectGate(document.state().gates.size() - 1);
  }
};

TEST_F(RunsOverlayScene, AGateStandsOverItsTimesAndValuesInTheColourOfGates)
{
  addGate(gateOnA(0.25, 0.75));
  const Drawn shape = gateShape();
  EXPECT_NEAR(shape.box().left(), frame.xAt(2.0), 1e-6);
  EXPECT_NEAR(shape.box().right(), frame.xAt(4.0), 1e-6);
  EXPECT_NEAR(shape.box().top(), frame.yAt(0.75), 1e-6);
  EXPECT_NEAR(shape.box().bottom(), frame.yAt(0.25), 1e-6);
  EXPECT_EQ(shape.pen.color(), theme.gate);
  EXPECT_EQ(shape.pen.style(), Qt::SolidLine);
  EXPECT_GT(shape.brush.color().alphaF(), 0.0);
  EXPECT_LT(shape.brush.color().alphaF(), 0.3) << "runs are seen through it";
}

TEST_F(RunsOverlayScene, TheSelectedGateStandsOut)
{
  addGate(gateOnA(0.25, 0.75));
  const Drawn before = gateShape();
  document.selectGate(0);
  const Drawn after = gateShape();
  EXPECT_GT(after.pen.widthF(), before.pen.widthF());
  EXPECT_GT(after.brush.color().alphaF(), before.brush.color().alphaF());
}

TEST_F(RunsOverlayScene, AGateThatIsOffIsFaintAndDashed)
{
  addGate(gateOnA(0.25, 0.75));
  document.change("Off", [](app::State& state) { state.gates[0].on = false; });
  EXPECT_EQ(gateShape().pen.color(), theme.faint);
  EXPECT_EQ(gateShape().pen.style(), Qt::DashLine);
}

TEST_F(RunsOverlayScene, GatesThatKeepRunsOutAreDashed)
{
  Gate gate = gateOnA(0.25, 0.75);
  addGate(gate);
  auto const styleOf = [&](GateKind kind, bool negated) {
    document.change("Kind", [&](app::State& state) {
      state.gates[0].gate.kind = kind;
      state.gates[0].gate.negated = negated;
    });
    return gateShape().pen.style();
  };
  EXPECT_EQ(styleOf(GateKind::Inside, true), Qt::DashLine);
  EXPECT_EQ(styleOf(GateKind::Never, false), Qt::DashLine);
  EXPECT_EQ(styleOf(GateKind::Never, true), Qt::SolidLine) << "runs that are there at some time pass";
  EXPECT_EQ(styleOf(GateKind::Ever, false), Qt::SolidLine);
}

TEST_F(RunsOverlayScene, AGateAtASingleTimeCanBeSeen)
{
  Gate gate = gateOnA(0.25, 0.75);
  gate.span = GateSpan{5.0, 5.0};
  addGate(gate);
  EXPECT_GE(gateShape().box().width(), 2.0);
  EXPECT_LE(gateShape().box().width(), 6.0);
  EXPECT_NEAR(gateShape().box().center().x(), frame.xAt(5.0), 1e-6);
}

TEST_F(RunsOverlayScene, GatesAreCutOffAtThePlot)
{
  addGate(gateOnA(0.25, infinity));
  const QRectF clip = gateShape().clip;
  EXPECT_TRUE(clip.contains(frame.plot()));
  EXPECT_TRUE(frame.plot().adjusted(-2, -2, 2, 2).contains(clip));
}

TEST_F(RunsOverlayScene, TheNameStandsAboveTheGateOrWithinItBelowTheTopOfThePlot)
{
  addGate(gateOnA(0.25, 0.75));
  Drawn name = *gates().text("Gate 1");
  EXPECT_LT(name.box().top(), frame.yAt(0.75));
  EXPECT_GT(name.box().top(), frame.yAt(0.75) - 8.0);
  EXPECT_GE(name.box().left(), frame.xAt(2.0));
  EXPECT_EQ(name.pen.color(), theme.gate);
  const double ascent = QFontMetricsF(theme.font).ascent();
  for (double high : {0.999, 1.5, infinity}) {
    document.change("High", [&](app::State& state) { state.gates[0].gate.range.high = high; });
    name = *gates().text("Gate 1");
    EXPECT_GE(name.box().top() - ascent, frame.plot().top()) << high;
    EXPECT_LT(name.box().top() - ascent, frame.plot().top() + 20.0) << high;
  }
}

TEST_F(RunsOverlayScene, TheNameStaysWithinThePlotAndIsCutInItsMiddle)
{
  addGate(gateOnA(0.25, 0.75));
  document.change("Name", [](app::State& state) {
    state.gates[0].name = "early rise of the marker that was seen in the second series of experiments";
    state.gates[0].gate.span = GateSpan{9.9, 10.0};
  });
  const Drawn name = gates().of(Kind::Text).at(0);
  EXPECT_TRUE(name.text.startsWith("ear")) << name.text.toStdString();
  EXPECT_TRUE(name.text.endsWith("nts"));
  EXPECT_LE(name.box().right(), frame.plot().right() + 0.5);
  EXPECT_LE(name.box().width(), 0.65 * frame.plot().width());
  document.change("Left", [](app::State& state) { state.gates[0].gate.span = GateSpan{-1.0, 0.5}; });
  EXPECT_GE(gates().of(Kind::Text).at(0).box().left(), frame.plot().left());
}

TEST_F(RunsOverlayScene, NamesOfGatesHaveAGroundOnWhichTheyCanBeReadAmongRuns)
{
  addGate(gateOnA(0.25, 0.75));
  const Painting paper = gates();
  const QRectF name = paper.text("Gate 1")->box();
  bool hasGround = false;
  for (Drawn const& each : paper.of(Kind::Rectangle))
    hasGround |= each.pen.style() == Qt::NoPen && each.brush.color().rgb() == theme.paper.rgb() &&
                 each.brush.color().alphaF() > 0.5 && each.box().top() < name.top() - 5.0 &&
                 each.box().contains(name.center());
  EXPECT_TRUE(hasGround);
}

TEST_F(RunsOverlayScene, TheNameOfASelectedGateKeepsClearOfItsHandles)
{
  addGate(gateOnA(0.25, 0.75));
  document.selectGate(0);
  const double descent = QFontMetricsF(theme.font).descent();
  EXPECT_LE(gates(true).text("Gate 1")->box().top(), frame.yAt(0.75) - 3.5);
  EXPECT_LT(gates(true).text("Gate 1")->box().top(), gates(false).text("Gate 1")->box().top());
  EXPECT_GT(gates(true).text("Gate 1")->box().top() + descent, frame.yAt(0.75) - 15.0);
}

TEST_F(RunsOverlayScene, AGateThatIsBeingDrawnIsShownAsANewOne)
{
  document.previewGate(0, gateOnA(0.25, 0.75));
  EXPECT_NE(gates().text("new gate"), nullptr);
  document.cancelPreview();
  EXPECT_TRUE(gates().all.empty());
}

TEST_F(RunsOverlayScene, AGateThatIsBeingMovedIsShownWhereItWouldBe)
{
  addGate(gateOnA(0.25, 0.75));
  addGate(gateOnA(0.1, 0.2));
  document.previewGate(1, gateOnA(0.4, 0.5));
  const Painting paper = gates();
  const std::vector<Drawn> shapes = outlines();
  ASSERT_EQ(shapes.size(), 2u);
  EXPECT_NEAR(shapes[0].box().top(), frame.yAt(0.75), 1e-6);
  EXPECT_NEAR(shapes[1].box().top(), frame.yAt(0.5), 1e-6);
  EXPECT_EQ(paper.texts(), (QStringList{"Gate 1", "Gate 2"}));
}

TEST_F(RunsOverlayScene, OnlyGatesOnTheOutputAreShown)
{
  addGate(gateOnA(0.25, 0.75));
  Gate onB = gateOnA(0.1, 0.2);
  onB.column = "B";
  addGate(onB);
  Gate onParameter;
  onParameter.column = "k1";
  onParameter.range = {0.1, 0.9};
  addGate(onParameter);
  EXPECT_EQ(gates().texts(), QStringList{"Gate 1"});
  output = 1;
  EXPECT_EQ(gates().texts(), QStringList{"Gate 2"});
}

TEST_F(RunsOverlayScene, OnlyTheSelectedGateHasHandlesAndOnlyOnTheScreen)
{
  addGateOfPixels(200.0, 200.0);
  EXPECT_EQ(outlines(true).size(), 1u + 8u);
  EXPECT_EQ(outlines(false).size(), 1u);
  document.selectGate(std::nullopt);
  EXPECT_EQ(outlines(true).size(), 1u);
}

TEST_F(RunsOverlayScene, HandlesStandAtCornersAndInTheMiddleOfSides)
{
  addGateOfPixels(200.0, 100.0);
  const QPointF middle = frame.plot().center();
  std::vector<QPointF> const found = handles();
  ASSERT_EQ(found.size(), 8u);
  for (double x : {-100.0, 0.0, 100.0})
    for (double y : {-50.0, 0.0, 50.0}) {
      if (x == 0.0 && y == 0.0) continue;
      const bool isThere = std::any_of(found.begin(), found.end(), [&](QPointF const& place) {
        return (place - middle - QPointF(x, y)).manhattanLength() < 0.01;
      });
      EXPECT_TRUE(isThere) << x << ' ' << y;
    }
}

TEST_F(RunsOverlayScene, HandlesNeverLieOverOneAnother)
{
  for (double width : {0.0, 6.0, 30.0, 200.0})
    for (double height : {0.0, 6.0, 30.0, 200.0}) {
      addGateOfPixels(width, height);
      std::vector<QPointF> const found = handles();
      EXPECT_GE(found.size(), 2u) << width << " x " << height;
      const bool isTiny = width < 10.0 && height < 10.0;
      for (std::size_t i = 0; i < found.size() && !isTiny; ++i)
        for (std::size_t k = i + 1; k < found.size(); ++k) {
          const QPointF apart = found[i] - found[k];
          if (width < 10.0 && std::fabs(apart.y()) < 1.0) continue; // both sides of a narrow gate
          if (height < 10.0 && std::fabs(apart.x()) < 1.0) continue;
          EXPECT_GE(std::max(std::fabs(apart.x()), std::fabs(apart.y())), 7.0) << width << " x " << height;
        }
    }
}

TEST_F(RunsOverlayScene, ANarrowGateHasNoHandlesAtItsCorners)
{
  addGateOfPixels(8.0, 200.0);
  EXPECT_EQ(handles().size(), 4u);
  addGateOfPixels(200.0, 8.0);
  EXPECT_EQ(handles().size(), 2u) << "above and below";
  for (QPointF const& place : handles()) EXPECT_NEAR(place.x(), frame.plot().center().x(), 1e-6);
  addGateOfPixels(8.0, 8.0);
  EXPECT_EQ(handles().size(), 2u) << "left and right";
  for (QPointF const& place : handles()) EXPECT_NEAR(place.y(), frame.plot().center().y(), 1e-6);
}

TEST_F(RunsOverlayScene, PinnedRunsHaveColoursOfTheirOwnAndTheirKeysAtTheEnd)
{
  document.pin({3, 8});
  const Painting paper = runs();
  for (auto const& [key, run, color] : {std::tuple{"4", 3, 0}, {"9", 8, 1}}) {
    Drawn const* label = paper.text(key);
    ASSERT_NE(label, nullptr) << key;
    EXPECT_EQ(label->pen.color(), theme.sets[static_cast<std::size_t>(color)]);
    EXPECT_LT(label->box().right(), frame.plot().right());
    EXPECT_GT(label->box().right(), frame.plot().right() - 20.0);
    const double line = frame.yAt(scattered(0, static_cast<std::size_t>(run)));
    EXPECT_LT(label->box().top(), line) << "above the line";
    EXPECT_GT(label->box().top(), line - 40.0);
  }
}

TEST_F(RunsOverlayScene, APinnedRunKeepsItsColourWhenAnotherIsPinned)
{
  document.pin({8});
  const QColor before = runs().text("9")->pen.color();
  document.pin({3, 8});
  const Painting paper = runs();
  EXPECT_EQ(paper.text("9")->pen.color(), before);
  EXPECT_NE(paper.text("4")->pen.color(), before);
}

TEST_F(RunsOverlayScene, MoreRunsThanColoursBeginTheColoursAnew)
{
  std::set<std::size_t> many;
  for (std::size_t run = 0; run <= theme.sets.size(); ++run) many.insert(run);
  document.pin(many);
  const Painting paper = runs();
  EXPECT_EQ(paper.text(QString::number(theme.sets.size() + 1))->pen.color(), theme.sets[0]);
}

TEST_F(RunsOverlayScene, AKeyStaysBelowTheTopOfThePlot)
{
  document.pin({3});
  frame = ChartFrame({0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0, scattered(0, 3) + 1e-4), "A"},
                     theme);
  const Painting paper = runs();
  ASSERT_NE(paper.text("4"), nullptr);
  EXPECT_GE(paper.text("4")->box().top(), frame.plot().top() + QFontMetricsF(theme.font).ascent());
}

TEST_F(RunsOverlayScene, TheKeyOfARunThatLeavesTheChartStandsWhereItWasLastSeen)
{
  document.pin({3});
  output = 1; // rises from 0
  const double end = scattered(1, 3);
  frame = ChartFrame({0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(0, 0.55 * end), "B"}, theme);
  const Painting paper = runs();
  ASSERT_NE(paper.text("4"), nullptr);
  EXPECT_NEAR(paper.text("4")->box().right(), frame.xAt(5.0), 10.0);
}

TEST_F(RunsOverlayScene, ARunOutsideOfTheChartHasNoKeyThere)
{
  document.pin({3});
  frame = ChartFrame({0, 0, 800, 600}, {AxisMap(0, 10), "time"}, {AxisMap(5, 6), "A"}, theme);
  EXPECT_TRUE(runs().texts().isEmpty());
}

TEST_F(RunsOverlayScene, TheRunUnderThePointerIsAboveAllOthersAndHasNoKey)
{
  document.pin({3});
  document.hover(5);
  const Painting paper = runs();
  const std::vector<Drawn> paths = paper.of(Kind::Path);
  ASSERT_EQ(paths.size(), 4u) << "each with a rim";
  EXPECT_EQ(paths[3].pen.color(), theme.hover);
  EXPECT_NEAR(paths[3].points.first().y(), frame.yAt(scattered(0, 5)), 1e-6);
  EXPECT_EQ(paper.texts(), QStringList{"4"});
}

TEST_F(RunsOverlayScene, LinesHaveARimOfThePaperThatTellsThemFromTheRunsBelow)
{
  document.hover(5);
  const std::vector<Drawn> paths = runs().of(Kind::Path);
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(paths[0].pen.color().rgb(), theme.paper.rgb());
  EXPECT_GT(paths[0].pen.widthF(), paths[1].pen.widthF());
  EXPECT_EQ(paths[0].points, paths[1].points);
  EXPECT_EQ(paths[1].clip, frame.plot());
}

TEST_F(RunsOverlayScene, MissingValuesPartALine)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0, 1, 2, 3, 4};
  scan->runs.push_back({"1", RunStatus::Failed, 5});
  double* a = scan->addOutput({"A", "", "", ""});
  const double values[] = {0.1, 0.2, std::nan(""), 0.4, 0.5};
  std::copy(std::begin(values), std::end(values), a);
  document.open(scan, {});
  document.hover(0);
  const std::vector<Drawn> paths = runs().of(Kind::Path);
  ASSERT_EQ(paths.size(), 2u);
  QPolygonF expected;
  for (int t : {0, 1, 3, 4}) expected << frame.at(t, values[t]);
  EXPECT_EQ(paths[1].points, expected);
}

TEST_F(RunsOverlayScene, TheBoxTellsOfTheRunBesideItsPlace)
{
  const Painting paper = hover({4, 5.0, scattered(0, 4)});
  ASSERT_EQ(paper.of(Kind::Ellipse).size(), 1u);
  const QPointF dot = paper.of(Kind::Ellipse)[0].box().center();
  EXPECT_NEAR(dot.x(), frame.xAt(5.0), 1e-6);
  EXPECT_NEAR(dot.y(), frame.yAt(scattered(0, 4)), 1e-6);
  const QRectF box = paper.of(Kind::Path).at(0).box();
  EXPECT_FALSE(box.contains(dot));
  EXPECT_GT(box.left(), dot.x());
  EXPECT_EQ(paper.texts().first(), "Run 5");
  double last = box.top();
  for (Drawn const& line : paper.of(Kind::Text)) {
    EXPECT_TRUE(box.adjusted(2, 2, -2, -2).contains(line.box().topLeft())) << line.text.toStdString();
    EXPECT_LE(line.box().right(), box.right());
    EXPECT_GE(line.box().top() - last, QFontMetricsF(theme.font).ascent()) << "lines do not touch";
    last = line.box().top();
    EXPECT_EQ(line.pen.color(), theme.ink);
  }
  EXPECT_GT(paper.of(Kind::Path).at(0).brush.color().alphaF(), 0.8) << "texts can be read";
}

TEST_F(RunsOverlayScene, TheBoxStaysInTheChartWhereverTheRunIs)
{
  for (double time : {0.0, 5.0, 10.0})
    for (double value : {0.0, 0.5, 1.0}) {
      const Painting paper = hover({4, time, value});
      const QRectF box = paper.of(Kind::Path).at(0).box();
      EXPECT_TRUE(QRectF(0, 0, frame.plot().right() + 1, frame.plot().bottom() + 1).contains(box))
          << time << ' ' << value;
      EXPECT_FALSE(box.contains(frame.at(time, value))) << time << ' ' << value;
    }
}

TEST_F(RunsOverlayScene, ASmallChartTellsTheFirstLinesOnly)
{
  frame = ChartFrame({0, 0, 300, 110}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "A"}, theme);
  const QStringList told = hover({4, 5.0, 0.5}).texts();
  ASSERT_GE(told.size(), 3);
  EXPECT_LT(told.size(), 8);
  EXPECT_EQ(told.first(), "Run 5");
  EXPECT_EQ(told.last(), QString::fromUtf8("\u2026"));
}

TEST_F(RunsOverlayScene, HoweverSmallTheChartIsTheBoxTellsRunAndValue)
{
  frame = ChartFrame({0, 0, 200, 60}, {AxisMap(0, 10), "time"}, {AxisMap(0, 1), "A"}, theme);
  EXPECT_THAT(hover({4, 5.0, 0.5}).texts(),
              testing::ElementsAre("Run 5", "A at 5 = 0.5", QString::fromUtf8("\u2026")));
}

TEST_F(RunsOverlayScene, ARunWithoutAValueThereHasNoBox)
{
  EXPECT_TRUE(hover({4, 5.0, std::nan("")}).all.empty());
}

TEST_F(RunsOverlayScene, LongLinesAreCut)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 10.0};
  scan->runs.push_back({std::string(200, 'k'), RunStatus::Complete, 2});
  std::fill_n(scan->addOutput({"A", "", "", ""}), 2, 0.5);
  document.open(scan, {});
  const Painting paper = hover({0, 0.0, 0.5});
  EXPECT_LT(paper.of(Kind::Path).at(0).box().width(), 350.0);
  EXPECT_TRUE(paper.texts().first().contains(QString::fromUtf8("\u2026")));
}

TEST_F(RunsOverlayScene, ARunIsToldByItsKeyStatusPlaceAndParameters)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 2.5};
  scan->runs.push_back({"a", RunStatus::Complete, 2});
  scan->runs.push_back({"b", RunStatus::Failed, 2});
  std::fill_n(scan->addOutput({"A", "nM", "", ""}), 4, 0.5);
  for (int p = 0; p < 14; ++p) {
    ScanParameter parameter;
    parameter.label.name = "k" + std::to_string(p);
    parameter.values = {1.0 + p, 2.0 + p};
    scan->parameters.push_back(std::move(parameter));
  }
  scan->parameters[0].texts = {"LB", "M9"};
  scan->parameters[0].values = {1.0, std::nan("")};
  document.open(scan, {});
  const QStringList first = app::runLines(document, 0, {0, 2.5, 0.5});
  ASSERT_EQ(first.size(), 2 + 12 + 1);
  EXPECT_EQ(first[0], "Run a");
  EXPECT_EQ(first[1], "A at 2.5 = 0.5");
  EXPECT_EQ(first[2], "k0 = M9");
  EXPECT_EQ(first[3], "k1 = 2");
  EXPECT_EQ(first[13], "k11 = 12");
  EXPECT_EQ(first[14], "and 2 more parameters");
  const QStringList second = app::runLines(document, 0, {1, 2.5, std::nan("")});
  EXPECT_EQ(second[0], "Run b (failed)");
  EXPECT_EQ(second[1], "A at 2.5 = -");
  EXPECT_EQ(second[2], "k0 = -") << "a text that is missing";
}

TEST_F(RunsOverlayScene, ParametersOfARunStandInTheOrderOfTheComparison)
{
  Gate gate;
  gate.column = "k4";
  gate.range = {0.5, 1.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  const QStringList told = app::runLines(document, 0, {0, 0.0, 0.5});
  EXPECT_TRUE(told[2].startsWith("k4 = "));
  EXPECT_EQ(told.size(), 2 + 6) << "none is left out, none is told of twice";
}

} // namespace
} // namespace runsieve::test
