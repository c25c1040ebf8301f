#include "Mouse.h"
#include "RunsScene.h"
#include "Snapshot.h"

#include "app/explorer/charts/RoundedValue.h"

#include <gmock/gmock.h>

#include <QScrollArea>
#include <QScrollBar>

#include <QComboBox>
#include <QDialog>
#include <QFocusEvent>
#include <QImage>
#include <QSignalSpy>
#include <QToolButton>

namespace runsieve::test {
namespace {

using app::RunsPane;
using app::RunsView;

/// Three runs at a single time.
std::shared_ptr<Scan const> steadyScan()
{
  auto scan = std::make_shared<Scan>();
  scan->times = {7.0};
  for (int run = 1; run <= 3; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  double* values = scan->addOutput({"A", "", "", ""});
  for (double const value : {2.0, 3.0, 5.0}) *values++ = value;
  return scan;
}

/// Pictures of the charts.
struct RunsViewScene : RunsScene
{
  void drawGate(double firstTime, double low, double lastTime, double high)
  {
    Mouse(view()).drag(at(firstTime, low), at(lastTime, high));
  }
  [[nodiscard]] std::vector<std::size_t> runsWithK0(double low, double high)
  {
    std::vector<std::size_t> runs;
    for (std::size_t run = 0; run < 40; ++run)
      if (scattered(0, run) >= low && scattered(0, run) <= high) runs.push_back(run);
    return runs;
  }
  /// Pixels in the colour of a gate's side.
  static int pixelsOfGates(RunsView& chart)
  {
    const QImage shot = chart.grab().toImage();
    const QColor wanted = app::Theme::ofPalette(chart.palette(), chart.font()).gate;
    int count = 0;
    for (int y = 0; y < shot.height(); ++y)
      for (int x = 0; x < shot.width(); ++x) count += shot.pixelColor(x, y) == wanted ? 1 : 0;
    return count;
  }
  [[nodiscard]] QColor colorAt(QPointF const& place)
  {
    const QImage shot = view().grab().toImage();
    return shot.pixelColor((place * shot.devicePixelRatio()).toPoint());
  }
};

TEST_F(RunsViewScene, RoomForTheNumbersOfOtherChartsIsMadeAtOnce)
{
  const double own = view().frame().plot().left();
  view().setLeastLeft(own + 60.0);
  EXPECT_GT(view().frame().plot().left(), own + 50.0);
}

TEST_F(RunsViewScene, NumbersOfADrawnGateHaveTheDigitsThatPixelsTell)
{
  drawGate(2.0, 0.512345678, 4.0, 0.912345678);
  const double pixel = view().frame().yValue(10.0) - view().frame().yValue(11.0);
  for (double const value : {gate().range.low, gate().range.high})
    EXPECT_EQ(value, app::roundedValue(value, pixel)) << value;
}

TEST_F(RunsViewScene, TheLegendFollowsANameThatChangesNoCurve)
{
  document.change("Set", [](app::State& state) {
    RunSet some(40);
    some.set(3, true);
    state.sets = {{"some", some, 0, true, "typed"}};
  });
  ASSERT_TRUE(settlePane());
  QSignalSpy told(&view(), &RunsView::legendChanged);
  document.change("Rename", [](app::State& state) { state.sets[0].name = "others"; });
  EXPECT_GE(told.count(), 1);
}

TEST_F(RunsViewScene, ADragDrawsAGateThatRunsMustPass)
{
  drawGate(2.0, 0.5, 4.0, 0.9);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().column, "A");
  EXPECT_NEAR(*gate().span->first, 2.0, 0.02);
  EXPECT_NEAR(*gate().span->last, 4.0, 0.02);
  EXPECT_NEAR(gate().range.low, 0.5, 0.005);
  EXPECT_NEAR(gate().range.high, 0.9, 0.005);
  EXPECT_EQ(document.passing().members(), runsWithK0(gate().range.low, gate().range.high));
}

TEST_F(RunsViewScene, TheRightButtonDrawsAGateWhateverTheToolIs)
{
  pane.setTool(app::RunsTool::Pan);
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9), Qt::RightButton);
  EXPECT_EQ(document.state().gates.size(), 1u);
}

TEST_F(RunsViewScene, WithShiftTheOtherRunsPass)
{
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9), Qt::LeftButton, Qt::ShiftModifier);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_TRUE(gate().negated);
  EXPECT_EQ(document.passing().count(), 40u - runsWithK0(gate().range.low, gate().range.high).size());
}

TEST_F(RunsViewScene, NumbersOfAGateHaveNoMoreDigitsThanPixelsCanTell)
{
  drawGate(2.0, 0.5, 4.0, 0.9);
  EXPECT_LE(QString::number(gate().range.low, 'g', 12).size(), 6);
  EXPECT_LE(QString::number(*gate().span->first, 'g', 12).size(), 5);
}

TEST_F(RunsViewScene, AGateReachesNoFurtherThanTheTimesOfTheScan)
{
  drawGate(8.0, 0.1, 30.0, 0.9);
  EXPECT_EQ(*gate().span->last, 10.0);
}

TEST_F(RunsViewScene, ADragOverNoRunChangesNothing)
{
  drawGate(2.0, -0.035, 4.0, -0.02);
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_FALSE(document.undoStack().canUndo());
}

TEST_F(RunsViewScene, EscapeGivesADragUp)
{
  Mouse mouse(view());
  mouse.press(at(2.0, 0.5));
  mouse.move(at(4.0, 0.9));
  EXPECT_LT(document.passing().count(), 40u);
  QTest::keyClick(&view(), Qt::Key_Escape);
  EXPECT_EQ(document.passing().count(), 40u);
  mouse.move(at(5.0, 0.9));
  mouse.release(at(5.0, 0.9));
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(RunsViewScene, ADragWhoseReleaseIsNeverSeenIsGivenUp)
{
  auto const begin = [this](Mouse& mouse) {
    mouse.press(at(2.0, 0.5), Qt::RightButton);
    mouse.move(at(4.0, 0.9));
    EXPECT_NE(document.previewedGate(), nullptr);
  };
  auto const expectGivenUp = [this](Mouse& mouse, char const* by) {
    EXPECT_EQ(document.previewedGate(), nullptr) << by;
    EXPECT_EQ(document.passing().count(), 40u) << by;
    mouse.release(at(5.0, 0.9));
    EXPECT_TRUE(document.state().gates.empty()) << by;
  };
  Mouse mouse(view());
  begin(mouse);
  QDialog dialog(&pane);
  dialog.setModal(true);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  expectGivenUp(mouse, "a dialog");
  dialog.close();
  begin(mouse);
  pane.hide();
  expectGivenUp(mouse, "hiding");
  pane.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  begin(mouse);
  QFocusEvent lost(QEvent::FocusOut);
  QApplication::sendEvent(&view(), &lost);
  expectGivenUp(mouse, "the keyboard");
  begin(mouse);
  QEvent other(QEvent::WindowDeactivate);
  QApplication::sendEvent(&pane, &other);
  expectGivenUp(mouse, "another window");
  begin(mouse);
  QMouseEvent without(QEvent::MouseMove, at(4.5, 0.9), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(&view(), &without);
  expectGivenUp(mouse, "a release elsewhere");
}

TEST_F(RunsViewScene, WhileAGateIsDrawnTheRunsThatWouldPassAreCounted)
{
  QStringList told;
  QObject::connect(&pane, &RunsPane::told, [&](QString const& text) { told << text; });
  Mouse mouse(view());
  mouse.press(at(2.0, 0.5));
  mouse.move(at(3.0, 0.95));
  ASSERT_FALSE(told.isEmpty());
  EXPECT_EQ(told.last(), QString("%1 of 40 runs pass").arg(document.passing().count()));
  mouse.release(at(3.0, 0.95));
  EXPECT_EQ(told.last(), "");
}

TEST_F(RunsViewScene, AGateIsMovedByItsMiddle)
{
  drawGate(2.0, 0.2, 4.0, 0.6);
  const Gate before = gate();
  Mouse(view()).drag(at(3.0, 0.4), at(4.0, 0.5));
  EXPECT_NEAR(*gate().span->first, *before.span->first + 1.0, 0.03);
  EXPECT_NEAR(*gate().span->last, *before.span->last + 1.0, 0.03);
  EXPECT_NEAR(gate().range.low, before.range.low + 0.1, 0.01);
  EXPECT_NEAR(gate().range.high, before.range.high + 0.1, 0.01);
  EXPECT_EQ(document.undoStack().undoText(), "Move gate");
  EXPECT_EQ(document.state().gates.size(), 1u);
}

TEST_F(RunsViewScene, AGateIsResizedByASide)
{
  drawGate(2.0, 0.2, 4.0, 0.6);
  const Gate before = gate();
  Mouse(view()).drag(at(3.0, before.range.high), at(3.0, 0.8));
  EXPECT_NEAR(gate().range.high, 0.8, 0.01);
  EXPECT_EQ(gate().range.low, before.range.low);
  EXPECT_EQ(*gate().span->first, *before.span->first);
  EXPECT_EQ(document.undoStack().undoText(), "Resize gate");
}

TEST_F(RunsViewScene, ASideDraggedBeyondTheOtherTurnsTheGateOver)
{
  drawGate(2.0, 0.2, 4.0, 0.6);
  Mouse(view()).drag(at(3.0, gate().range.high), at(3.0, 0.1));
  EXPECT_LT(gate().range.low, gate().range.high);
  EXPECT_NEAR(gate().range.low, 0.1, 0.01);
  EXPECT_NEAR(gate().range.high, 0.2, 0.01);
}

TEST_F(RunsViewScene, OpenEndsOfAGateStayOpenWhenItIsMoved)
{
  Gate open = gateOnA(0.3, std::numeric_limits<double>::infinity());
  open.span = GateSpan{2.0, std::nullopt};
  addGate(open);
  document.selectGate(0);
  Mouse(view()).drag(at(6.0, 0.7), at(7.0, 0.8));
  EXPECT_FALSE(gate().span->last);
  EXPECT_TRUE(std::isinf(gate().range.high));
  EXPECT_NEAR(gate().range.low, 0.4, 0.01);
}

TEST_F(RunsViewScene, AClickPinsARunAndASecondFreesIt)
{
  const double value = scattered(0, 7);
  Mouse(view()).click(at(5.5, value));
  EXPECT_THAT(document.pinnedRuns(), testing::ElementsAre(7u));
  Mouse(view()).click(at(5.5, value));
  EXPECT_TRUE(document.pinnedRuns().empty());
}

TEST_F(RunsViewScene, ADragLeavesItsGateToBeSeenUntilThePointerMoves)
{
  drawGate(2.0, 0.5, 4.0, scattered(0, 5));
  EXPECT_FALSE(document.hoveredRun());
  Mouse(view()).move(at(6.0, scattered(0, 5)));
  EXPECT_EQ(document.hoveredRun(), 5u);
}

TEST_F(RunsViewScene, ThePointerTellsOfTheRunBelowIt)
{
  Mouse(view()).move(at(5.0, scattered(0, 11)));
  EXPECT_EQ(document.hoveredRun(), 11u);
  Mouse(view()).move(at(5.0, 1.02));
  EXPECT_EQ(document.hoveredRun(), std::nullopt);
}

TEST_F(RunsViewScene, TheWheelZoomsAboutThePointer)
{
  const double value = view().frame().yValue(at(5.0, 0.5).y());
  const QPointF place = at(5.0, 0.5);
  Mouse(view()).wheel(place, 2);
  EXPECT_LT(view().frame().horizontal().high() - view().frame().horizontal().low(), 8.0);
  EXPECT_NEAR(view().frame().yValue(place.y()), value, 1e-9);
  EXPECT_NEAR(view().frame().xValue(place.x()), 5.0, 1e-9);
}

TEST_F(RunsViewScene, OverAnAxisTheWheelZoomsThatAxisAlone)
{
  const app::AxisMap values = view().frame().vertical();
  Mouse(view()).wheel(QPointF(at(5.0, 0.5).x(), view().frame().plot().bottom() + 10.0), 1);
  EXPECT_EQ(view().frame().vertical(), values);
  EXPECT_GT(view().frame().horizontal().low(), 0.0);
}

TEST_F(RunsViewScene, ADoubleClickShowsEverythingAndPinsNothing)
{
  Mouse(view()).wheel(at(5.0, 0.5), 3);
  Mouse(view()).doubleClick(at(5.0, scattered(0, 3)));
  EXPECT_TRUE(pane.zoom().isAll());
  EXPECT_TRUE(document.pinnedRuns().empty());
}

TEST_F(RunsViewScene, KeysZoomMoveAndReset)
{
  QTest::keyClick(&view(), Qt::Key_Plus);
  const app::AxisMap zoomed = view().frame().horizontal();
  EXPECT_GT(zoomed.low(), 0.0);
  QTest::keyClick(&view(), Qt::Key_Right);
  EXPECT_GT(view().frame().horizontal().low(), zoomed.low());
  QTest::keyClick(&view(), Qt::Key_0);
  EXPECT_EQ(view().frame().horizontal().low(), 0.0);
}

TEST_F(RunsViewScene, ZoomsAreGoneBackAndForwardThrough)
{
  pane.setTool(app::RunsTool::Zoom);
  Mouse(view()).drag(at(2.0, 0.2), at(8.0, 0.8));
  const app::AxisMap first = view().frame().horizontal();
  EXPECT_NEAR(first.low(), 2.0, 1e-6);
  EXPECT_NEAR(first.high(), 8.0, 1e-6);
  pane.zoom().back();
  EXPECT_EQ(view().frame().horizontal().low(), 0.0);
  EXPECT_FALSE(pane.zoom().canGoBack());
  pane.zoom().forward();
  EXPECT_EQ(view().frame().horizontal(), first);
}

TEST_F(RunsViewScene, PanningMovesBothAxesByWhatTheHandMoved)
{
  pane.setTool(app::RunsTool::Pan);
  const QPointF from = at(5.0, 0.5);
  Mouse(view()).drag(from, from + QPointF(-60.0, 30.0));
  EXPECT_NEAR(view().frame().xValue(from.x() - 60.0), 5.0, 1e-6);
  EXPECT_NEAR(view().frame().yValue(from.y() + 30.0), 0.5, 1e-6);
}

TEST_F(RunsViewScene, ChartsOfSeveralOutputsShareTheTimesAndLineUp)
{
  ASSERT_TRUE(pane.addOutput());
  ASSERT_NE(pane.view(1), nullptr);
  EXPECT_EQ(pane.view(1)->shownOutput(), 1u);
  QApplication::processEvents();
  EXPECT_EQ(pane.view(0)->frame().plot().left(), pane.view(1)->frame().plot().left());
  EXPECT_EQ(pane.view(0)->frame().plot().width(), pane.view(1)->frame().plot().width());
  Mouse(*pane.view(1)).wheel(pane.view(1)->frame().plot().center(), 2);
  EXPECT_EQ(pane.view(0)->frame().horizontal(), pane.view(1)->frame().horizontal());
  EXPECT_FALSE(pane.addOutput()) << "there are no more outputs";
}

TEST_F(RunsViewScene, PlotsOfSeveralOutputsAreEquallyHigh)
{
  ASSERT_TRUE(pane.addOutput());
  for (QSize const size : {QSize(800, 600), QSize(700, 433), QSize(900, 1000)}) {
    pane.resize(size);
    QApplication::processEvents();
    const double upper = pane.view(0)->frame().plot().height();
    EXPECT_NEAR(upper, pane.view(1)->frame().plot().height(), 1.0) << size.height();
    EXPECT_GT(upper, 0.25 * size.height());
  }
}

TEST_F(RunsViewScene, TheLegendSaysWhatColoursAndShadesMean)
{
  auto* legend = pane.findChild<app::RunsLegend*>();
  ASSERT_NE(legend, nullptr);
  auto const text = [&] { return legend->accessibleDescription().toStdString(); };
  EXPECT_EQ(text(), "all runs: 1 run at a point");
  auto const look = [&](app::RunsLook wanted) {
    document.change("Look", [=](app::State& state) { state.view.runsLook = wanted; });
    EXPECT_TRUE(settlePane());
    return text();
  };
  EXPECT_EQ(look(app::RunsLook::Lines), "") << "a single colour needs none";
  addGate(gateOnA(0.5, 0.999));
  EXPECT_EQ(look(app::RunsLook::Lines), "all runs; passing");
  EXPECT_THAT(look(app::RunsLook::Bands), testing::MatchesRegex("the others; passing; median, 25.*"));
  EXPECT_EQ(look(app::RunsLook::WholeBands), "the others; passing; deepest run, deeper half, not outlying");
}

TEST_F(RunsViewScene, TellsThatALogarithmicAxisLacksValuesFromZeroDown)
{
  auto const tells = [&](std::size_t output, bool logarithmic) {
    document.change("Show", [&](app::State& state) {
      state.view.outputs = {output};
      state.view.logOutputs[output] = logarithmic;
    });
    EXPECT_TRUE(settlePane());
    return !Snapshot::of(view()).filter(QString::fromUtf8("values \u2264 0 are not drawn")).isEmpty();
  };
  EXPECT_FALSE(tells(1, false));
  EXPECT_TRUE(tells(1, true)) << "B begins at 0";
  EXPECT_FALSE(tells(0, true)) << "A is above 0";
}

TEST_F(RunsViewScene, TheLegendCountsOutlyingRuns)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  for (int run = 0; run < 40; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 2});
  double* values = scan->addOutput({"C", "", "", ""});
  for (int run = 0; run < 40; ++run)
    for (int time = 0; time < 2; ++time) *values++ = run < 3 ? 100.0 : 0.1 * run;
  document.open(scan, {});
  document.change("Look", [](app::State& state) { state.view.runsLook = app::RunsLook::WholeBands; });
  ASSERT_TRUE(settlePane());
  EXPECT_THAT(pane.findChild<app::RunsLegend*>()->accessibleDescription().toStdString(),
              testing::StartsWith("all runs, 3 outlying;"));
}

TEST_F(RunsViewScene, RunsOfASingleTimeAreDashes)
{
  document.open(steadyScan(), {});
  ASSERT_TRUE(settlePane());
  for (double const value : {2.0, 3.0, 5.0}) {
    EXPECT_NE(colorAt(at(7.0, value)), QColor(Qt::white)) << value;
    EXPECT_EQ(colorAt(at(7.0, value) + QPointF(0.2 * view().frame().plot().width(), 0.0)), QColor(Qt::white));
  }
  EXPECT_EQ(colorAt(at(7.0, 4.0)), QColor(Qt::white));
  Mouse(view()).move(at(7.0, 3.0) + QPointF(0.02 * view().frame().plot().width(), 0.0));
  EXPECT_EQ(document.hoveredRun(), 1u) << "also beside the time";
}

TEST_F(RunsViewScene, BandsOfASingleTimeAreAsWideAsItsRuns)
{
  document.open(steadyScan(), {});
  document.change("Look", [](app::State& state) { state.view.runsLook = app::RunsLook::WholeBands; });
  ASSERT_TRUE(settlePane());
  EXPECT_NE(colorAt(at(7.0, 2.5)), QColor(Qt::white)) << "between two of the runs";
  EXPECT_EQ(colorAt(at(7.0, 2.5) + QPointF(0.1 * view().frame().plot().width(), 0.0)), QColor(Qt::white));
}

TEST_F(RunsViewScene, SetsLieBelowThePassingRuns)
{
  addGate(gateOnA(0.5, 0.999));
  document.change("Keep", [&](app::State& state) {
    state.sets.push_back({"kept", document.passing(), 0, true, ""});
    state.view.runsLook = app::RunsLook::Lines;
  });
  ASSERT_TRUE(settlePane());
  EXPECT_EQ(pane.findChild<app::RunsLegend*>()->accessibleDescription(), "all runs; kept; passing");
  std::size_t run = 0;
  while (scattered(0, run) < 0.55) ++run;
  const QColor seen = colorAt(at(8.0, scattered(0, run)));
  EXPECT_GT(seen.red(), seen.blue());
}

TEST_F(RunsViewScene, ManyChartsScrollInASmallWindowAndKeepPlotsOfOneHeight)
{
  ASSERT_TRUE(pane.addOutput());
  EXPECT_LT(pane.minimumSizeHint().height(), 200) << "the window is as small as the user makes it";
  pane.resize(500, 150);
  ASSERT_TRUE(settlePane());
  const double first = view(0).frame().plot().height();
  const double second = view(1).frame().plot().height();
  EXPECT_GE(first, 45.0);
  EXPECT_NEAR(first, second, 1.5);
  auto* scroll = pane.findChild<QScrollArea*>();
  EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
  document.change("One", [](app::State& state) { state.view.outputs = {0}; });
  ASSERT_TRUE(settlePane());
  ASSERT_TRUE(pane.addOutput());
  ASSERT_TRUE(waitFor([&] { return scroll->verticalScrollBar()->value() > 0; })) << "a new one is seen";
  pane.resize(500, 700);
  ASSERT_TRUE(settlePane());
  EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
  EXPECT_NEAR(view(0).frame().plot().height(), view(1).frame().plot().height(), 1.5);
}

TEST_F(RunsViewScene, AnAddedChartStaysInSightOnlyUntilTheUserScrollsOrDoesSomethingElse)
{
  pane.resize(500, 150);
  ASSERT_TRUE(pane.addOutput() && settlePane());
  QScrollBar* bar = pane.findChild<QScrollArea*>()->verticalScrollBar();
  ASSERT_TRUE(waitFor([&] { return bar->value() > 0 && bar->value() == bar->maximum(); }));
  const auto resize = [&](int height) {
    const int before = bar->maximum();
    pane.resize(500, height);
    return waitFor([&] { return bar->maximum() != before; });
  };
  ASSERT_TRUE(resize(140));
  EXPECT_EQ(bar->value(), bar->maximum());
  bar->triggerAction(QAbstractSlider::SliderToMinimum);
  ASSERT_TRUE(resize(150));
  EXPECT_EQ(bar->value(), 0);
  document.undoStack().undo();
  ASSERT_TRUE(settlePane());
  ASSERT_TRUE(pane.addOutput() && settlePane());
  ASSERT_TRUE(waitFor([&] { return bar->value() > 0 && bar->value() == bar->maximum(); }));
  addGate(gateOnA(0.5, 0.999));
  bar->setValue(0);
  ASSERT_TRUE(resize(140));
  EXPECT_EQ(bar->value(), 0);
}

TEST_F(RunsViewScene, AChartThatGoesDoesNotScrollTheOthers)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  scan->runs.push_back({"1", RunStatus::Complete, 2});
  for (char const* name : {"A", "B", "C"}) std::fill_n(scan->addOutput({name, "", "", ""}), 2, 1.0);
  document.open(scan, {});
  pane.resize(500, 150);
  ASSERT_TRUE(pane.addOutput() && pane.addOutput() && settlePane());
  QScrollBar* bar = pane.findChild<QScrollArea*>()->verticalScrollBar();
  ASSERT_TRUE(waitFor([&] { return bar->value() > 0 && bar->value() == bar->maximum(); }));
  bar->setValue(0);
  const int before = bar->maximum();
  document.change("Remove chart", [](app::State& state) { state.view.outputs.pop_back(); });
  ASSERT_TRUE(settlePane() && waitFor([&] { return bar->maximum() < before; }));
  EXPECT_GT(bar->maximum(), 0);
  EXPECT_EQ(bar->value(), 0);
}

TEST_F(RunsViewScene, BandsOfFadedOthersArePale)
{
  addGate(gateOnA(0.5, 0.999));
  auto const inkBelow = [&](app::Focus focus) {
    document.change("Focus", [=](app::State& state) {
      state.view.runsLook = app::RunsLook::Bands;
      state.view.focus = focus;
    });
    EXPECT_TRUE(settlePane());
    return 255 - colorAt(at(8.0, 0.25)).lightness();
  };
  const int whole = inkBelow(app::Focus::All);
  const int pale = inkBelow(app::Focus::Faded);
  EXPECT_GT(pale, 0);
  EXPECT_LT(2 * pale, whole);
  EXPECT_EQ(inkBelow(app::Focus::Hidden), 0);
}

TEST_F(RunsViewScene, TheLineOfBandsOfWholeRunsIsARun)
{
  document.change("Look", [](app::State& state) { state.view.runsLook = app::RunsLook::WholeBands; });
  ASSERT_TRUE(settlePane());
  std::vector<double> values;
  for (std::size_t run = 0; run < 40; ++run) values.push_back(scattered(0, run));
  std::sort(values.begin(), values.end());
  // Levels: the deepest is one of the two in the middle, the first of them.
  const QColor all = app::Theme::ofPalette(pane.palette(), pane.font()).all;
  auto const isLineAt = [&](double value) {
    for (double const down : {-1.0, 0.0, 1.0})
      if (colorAt(at(8.0, value) + QPointF(0.0, down)) == all) return true;
    return false;
  };
  EXPECT_NE(isLineAt(values[19]), isLineAt(values[20]));
  EXPECT_FALSE(isLineAt(values[18]));
  EXPECT_FALSE(isLineAt(0.5 * (values[19] + values[20])));
}

TEST_F(RunsViewScene, AChartCanBeClosedAndUndoBringsItBack)
{
  ASSERT_TRUE(pane.addOutput());
  QApplication::processEvents();
  auto buttons = pane.findChildren<QToolButton*>();
  buttons.erase(std::remove_if(buttons.begin(), buttons.end(), [](auto* b) { return !b->isVisible(); }),
                buttons.end());
  ASSERT_EQ(buttons.size(), 2);
  buttons[0]->click();
  EXPECT_EQ(document.state().view.outputs, std::vector<std::size_t>{1});
  document.undoStack().undo();
  EXPECT_EQ(document.state().view.outputs, (std::vector<std::size_t>{0, 1}));
}

TEST_F(RunsViewScene, AnotherOutputIsChosenByName)
{
  auto* box = pane.findChild<QComboBox*>();
  ASSERT_EQ(box->count(), 2);
  box->setCurrentIndex(1);
  Q_EMIT box->activated(1);
  EXPECT_EQ(view().shownOutput(), 1u);
  document.undoStack().undo();
  EXPECT_EQ(view().shownOutput(), 0u);
}

TEST_F(RunsViewScene, GatesShowOnTheirOutputAlone)
{
  ASSERT_TRUE(pane.addOutput());
  drawGate(2.0, 0.5, 4.0, 0.9);
  QApplication::processEvents();
  EXPECT_GT(pixelsOfGates(*pane.view(0)), 100);
  EXPECT_EQ(pixelsOfGates(*pane.view(1)), 0);
}

TEST_F(RunsViewScene, RunsShowWhereTheyAre)
{
  const QPointF on = at(5.0, scattered(0, 5));
  EXPECT_NE(colorAt(on), QColor(Qt::white));
  EXPECT_EQ(colorAt(at(5.0, -0.035)), QColor(Qt::white));
}

TEST_F(RunsViewScene, HiddenOthersLeaveThePassingRunsAlone)
{
  drawGate(2.0, 0.5, 4.0, 0.999);
  document.selectGate(std::nullopt);
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Hidden; });
  ASSERT_TRUE(settlePane());
  std::size_t below = 0;
  while (scattered(0, below) > 0.45) ++below;
  EXPECT_EQ(colorAt(at(8.0, scattered(0, below))), QColor(Qt::white));
  std::size_t above = 0;
  while (scattered(0, above) < 0.55) ++above;
  EXPECT_NE(colorAt(at(8.0, scattered(0, above))), QColor(Qt::white));
}

TEST_F(RunsViewScene, LogarithmicAxesLeaveOutWhatIsNotPositive)
{
  document.change("Show output", [](app::State& state) {
    state.view.outputs = {1};
    state.view.logOutputs[1] = true;
  });
  ASSERT_TRUE(settlePane());
  EXPECT_TRUE(view().frame().vertical().isLogarithmic());
  EXPECT_GT(view().frame().vertical().low(), 0.0);
}

} // namespace
} // namespace runsieve::test
