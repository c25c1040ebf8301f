#include "Mouse.h"
#include "PaintRecorder.h"
#include "RunsScene.h"

#include "app/explorer/controls/SearchableBox.h"
#include "app/explorer/runs/RunsLegend.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>

#include <limits>

namespace runsieve::test {
namespace {

using app::AxisMap;
using app::RunsPane;
using app::RunsTool;
using app::RunsView;
using testing::ElementsAre;

/// Hands on the charts of a scan of lines.
struct RunsHands : RunsScene
{
  [[nodiscard]] Qt::CursorShape cursorAt(double time, double value)
  {
    Mouse(view()).move(at(time, value));
    return view().cursor().shape();
  }
  [[nodiscard]] double shownTime() const
  {
    const AxisMap time = const_cast<RunsPane&>(pane).zoom().time();
    return time.high() - time.low();
  }
  [[nodiscard]] double shownValues()
  {
    const AxisMap values = pane.zoom().value(0);
    return values.high() - values.low();
  }
  [[nodiscard]] QImage shot() { return view().grab().toImage().convertToFormat(QImage::Format_RGB32); }
};

TEST_F(RunsHands, TheCursorTellsWhatADragWouldDo)
{
  EXPECT_EQ(cursorAt(5.0, 1.02), Qt::CrossCursor);
  addGate(gateOnA(0.25, 0.75));
  EXPECT_EQ(cursorAt(3.0, 0.5), Qt::SizeAllCursor);
  EXPECT_EQ(cursorAt(2.0, 0.5), Qt::SizeHorCursor);
  EXPECT_EQ(cursorAt(4.0, 0.5), Qt::SizeHorCursor);
  EXPECT_EQ(cursorAt(3.0, 0.25), Qt::SizeVerCursor);
  EXPECT_EQ(cursorAt(3.0, 0.75), Qt::SizeVerCursor);
  EXPECT_EQ(cursorAt(2.0, 0.75), Qt::SizeFDiagCursor);
  EXPECT_EQ(cursorAt(4.0, 0.25), Qt::SizeFDiagCursor);
  EXPECT_EQ(cursorAt(4.0, 0.75), Qt::SizeBDiagCursor);
  EXPECT_EQ(cursorAt(2.0, 0.25), Qt::SizeBDiagCursor);
  EXPECT_EQ(cursorAt(7.0, 0.5), Qt::CrossCursor);
  pane.setTool(RunsTool::Pan);
  EXPECT_EQ(view().cursor().shape(), Qt::OpenHandCursor);
  EXPECT_EQ(cursorAt(3.0, 0.5), Qt::OpenHandCursor) << "gates stay where they are while the chart is moved";
  pane.setTool(RunsTool::Zoom);
  EXPECT_EQ(cursorAt(3.0, 0.5), Qt::CrossCursor);
}

TEST_F(RunsHands, OfGatesOverOneAnotherTheSelectedOneIsHeldElseTheLast)
{
  addGate(gateOnA(0.2, 0.8));
  addGate(gateOnA(0.1, 0.9));
  document.selectGate(0);
  Mouse(view()).drag(at(3.0, 0.5), at(5.0, 0.5));
  EXPECT_NEAR(*gate(0).span->first, 4.0, 0.05);
  EXPECT_EQ(*gate(1).span->first, 2.0);
  document.undoStack().undo();
  document.selectGate(std::nullopt);
  Mouse(view()).drag(at(3.0, 0.5), at(5.0, 0.5));
  EXPECT_EQ(*gate(0).span->first, 2.0);
  EXPECT_NEAR(*gate(1).span->first, 4.0, 0.05);
  EXPECT_EQ(document.selectedGate(), 1u);
}

TEST_F(RunsHands, APressThatHardlyMovesIsAClick)
{
  Mouse mouse(view());
  const QPointF from = at(5.0, scattered(0, 7));
  mouse.press(from);
  mouse.move(from + QPointF(2.0, 1.0));
  EXPECT_EQ(document.previewedGate(), nullptr);
  mouse.release(from + QPointF(2.0, 1.0));
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(7u));
}

TEST_F(RunsHands, AClickOnNothingSelectsNoGate)
{
  addGate(gateOnA(0.25, 0.75));
  document.selectGate(0);
  Mouse(view()).click(at(8.0, 1.02));
  EXPECT_EQ(document.selectedGate(), std::nullopt);
  EXPECT_TRUE(document.pinnedRuns().empty());
}

TEST_F(RunsHands, AClickOnAGateSelectsItAndPinsNothing)
{
  addGate(gateOnA(0.0, 1.0));
  document.selectGate(std::nullopt);
  Mouse(view()).click(at(3.0, scattered(0, 7)));
  EXPECT_EQ(document.selectedGate(), 0u);
  EXPECT_TRUE(document.pinnedRuns().empty());
  EXPECT_EQ(document.undoStack().count(), 1) << "the gate has not moved";
}

TEST_F(RunsHands, NothingBeginsOutsideOfThePlot)
{
  Mouse(view()).drag({5.0, 300.0}, at(4.0, 0.5));
  EXPECT_TRUE(document.state().gates.empty());
  Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9), Qt::BackButton);
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(RunsHands, ADragMayBeginJustOutsideAndStopsAtThePlot)
{
  const QRectF plot = view().frame().plot();
  Mouse(view()).drag({plot.left() - 4.0, at(0, 0.4).y()}, {plot.right() + 50.0, plot.top() - 50.0});
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(*gate().span->first, 0.0);
  EXPECT_EQ(*gate().span->last, 10.0);
  EXPECT_NEAR(gate().range.high, view().frame().vertical().high(), 0.01);
}

TEST_F(RunsHands, WhileAGateIsDrawnNoRunIsToldOf)
{
  Mouse mouse(view());
  mouse.move(at(5.0, scattered(0, 7)));
  ASSERT_TRUE(document.hoveredRun());
  mouse.press(at(5.0, scattered(0, 7)));
  mouse.move(at(6.0, 0.95));
  EXPECT_EQ(document.hoveredRun(), std::nullopt);
  mouse.press(at(6.0, 0.2), Qt::RightButton);
  EXPECT_NE(document.previewedGate(), nullptr) << "another button does not begin anew";
  QTest::keyClick(&view(), Qt::Key_Escape);
  EXPECT_EQ(document.previewedGate(), nullptr);
}

TEST_F(RunsHands, APointerThatLeavesTellsOfNoRun)
{
  Mouse(view()).move(at(5.0, scattered(0, 7)));
  ASSERT_TRUE(document.hoveredRun());
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&view(), &leave);
  EXPECT_EQ(document.hoveredRun(), std::nullopt);
}

TEST_F(RunsHands, OfHiddenRunsNoneIsToldOf)
{
  addGate(gateOnA(0.5, 1.0));
  std::size_t other = 0;
  while (scattered(0, other) > 0.45) ++other;
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Hidden; });
  Mouse(view()).move(at(8.0, scattered(0, other)));
  EXPECT_NE(document.hoveredRun(), other);
  document.change("Focus", [](app::State& state) { state.view.focus = app::Focus::Faded; });
  Mouse(view()).move(at(8.0, scattered(0, other)));
  EXPECT_EQ(document.hoveredRun(), other);
}

TEST_F(RunsHands, ADragOverNothingIsTold)
{
  QSignalSpy told(&pane, &RunsPane::told);
  Mouse(view()).drag(at(2.0, -0.035), at(4.0, -0.02));
  EXPECT_EQ(told.last()[0].toString(), "No run passes there: nothing has changed");
}

TEST_F(RunsHands, WithinAGateTheRightButtonDrawsANewOne)
{
  addGate(gateOnA(0.0, 1.0));
  Mouse(view()).drag(at(2.5, 0.3), at(3.5, 0.9), Qt::RightButton);
  EXPECT_EQ(document.state().gates.size(), 2u);
  EXPECT_EQ(gate(0), gateOnA(0.0, 1.0));
}

TEST_F(RunsHands, ARightClickOffersTheMenuOfTheGateThereIfThereIsOne)
{
  QSignalSpy wanted(&pane, &RunsPane::gateMenuWanted);
  Mouse(view()).click(at(3.0, 0.5), Qt::RightButton);
  QApplication::processEvents();
  EXPECT_EQ(wanted.count(), 0);
  addGate(gateOnA(0.25, 0.75));
  document.selectGate(std::nullopt);
  Mouse(view()).click(at(3.0, 0.5), Qt::RightButton);
  ASSERT_TRUE(waitFor([&] { return wanted.count() == 1; }));
  EXPECT_EQ(wanted[0][0].toPoint(), view().mapToGlobal(at(3.0, 0.5).toPoint()));
  EXPECT_EQ(document.selectedGate(), 0u);
}

TEST_F(RunsHands, TheMiddleButtonPansWhateverTheToolIs)
{
  Mouse(view()).drag(at(5.0, 0.5), at(6.0, 0.6), Qt::MiddleButton);
  EXPECT_NEAR(pane.zoom().time().low(), -1.0, 1e-6);
  EXPECT_TRUE(document.state().gates.empty());
  pane.zoom().back();
  EXPECT_TRUE(pane.zoom().isAll()) << "a drag is one step";
}

TEST_F(RunsHands, ARectangleThatIsTooSmallDoesNotZoom)
{
  pane.setTool(RunsTool::Zoom);
  const QPointF from = at(5.0, 0.5);
  Mouse(view()).drag(from, from + QPointF(100.0, 2.0));
  EXPECT_TRUE(pane.zoom().isAll());
  Mouse(view()).drag(from, from + QPointF(2.0, 100.0));
  EXPECT_TRUE(pane.zoom().isAll());
  Mouse(view()).drag(from, from + QPointF(100.0, 100.0));
  EXPECT_FALSE(pane.zoom().isAll());
}

TEST_F(RunsHands, ARectangleZoomsIntoBothAxesFromWhateverCornerItIsDrawn)
{
  pane.setTool(RunsTool::Zoom);
  Mouse(view()).drag(at(8.0, 0.8), at(2.0, 0.2));
  EXPECT_NEAR(pane.zoom().time().low(), 2.0, 1e-6);
  EXPECT_NEAR(pane.zoom().time().high(), 8.0, 1e-6);
  EXPECT_NEAR(pane.zoom().value(0).low(), 0.2, 1e-6);
  EXPECT_NEAR(pane.zoom().value(0).high(), 0.8, 1e-6);
}

TEST_F(RunsHands, TheRectangleToZoomIntoIsShownWhileItIsDrawn)
{
  pane.setTool(RunsTool::Zoom);
  const QImage before = shot();
  Mouse mouse(view());
  mouse.press(at(2.0, 0.2));
  mouse.move(at(8.0, 0.8));
  EXPECT_NE(shot(), before);
  QTest::keyClick(&view(), Qt::Key_Escape);
  EXPECT_EQ(shot(), before);
  mouse.release(at(8.0, 0.8));
  EXPECT_TRUE(pane.zoom().isAll());
}

TEST_F(RunsHands, TheWheelZoomsInForwardsAndOutBackwards)
{
  Mouse(view()).wheel(at(5.0, 0.5), 1);
  EXPECT_NEAR(shownTime(), 8.3, 1e-6);
  Mouse(view()).wheel(at(5.0, 0.5), -1);
  EXPECT_NEAR(shownTime(), 10.0, 1e-6);
}

TEST_F(RunsHands, WithControlTheWheelZoomsTimesAndWithShiftValues)
{
  const double values = shownValues();
  Mouse(view()).wheel(at(5.0, 0.5), 1, Qt::ControlModifier);
  EXPECT_LT(shownTime(), 9.0);
  EXPECT_EQ(shownValues(), values);
  pane.zoom().reset();
  Mouse(view()).wheel(at(5.0, 0.5), 1, Qt::ShiftModifier);
  EXPECT_EQ(shownTime(), 10.0);
  EXPECT_LT(shownValues(), 0.9 * values);
}

TEST_F(RunsHands, OverTheValuesTheWheelZoomsValuesAlone)
{
  const QRectF plot = view().frame().plot();
  const double values = shownValues();
  Mouse(view()).wheel({plot.left() - 10.0, plot.center().y()}, 1);
  EXPECT_EQ(shownTime(), 10.0);
  EXPECT_LT(shownValues(), 0.9 * values);
}

TEST_F(RunsHands, WhileTheMouseDragsTheWheelDoesNothing)
{
  Mouse mouse(view());
  mouse.press(at(2.0, 0.2));
  mouse.move(at(8.0, 0.8));
  mouse.wheel(at(5.0, 0.5), 2);
  EXPECT_TRUE(pane.zoom().isAll());
  mouse.release(at(8.0, 0.8));
}

TEST_F(RunsHands, KeysZoomAboutTheMiddleAndMoveATenth)
{
  const AxisMap values = pane.zoom().value(0);
  auto const press = [this](Qt::Key key) {
    pane.zoom().reset();
    QTest::keyClick(&view(), key);
  };
  for (Qt::Key key : {Qt::Key_Plus, Qt::Key_Equal}) {
    press(key);
    EXPECT_NEAR(shownTime(), 8.3, 1e-6);
    EXPECT_NEAR(pane.zoom().time().low(), 0.85, 1e-6);
    EXPECT_NEAR(shownValues(), 0.83 * (values.high() - values.low()), 1e-6);
  }
  press(Qt::Key_Minus);
  EXPECT_NEAR(shownTime(), 10.0 / 0.83, 1e-6);
  press(Qt::Key_Left);
  EXPECT_NEAR(pane.zoom().time().low(), -1.0, 1e-6);
  EXPECT_NEAR(shownTime(), 10.0, 1e-6);
  press(Qt::Key_Right);
  EXPECT_NEAR(pane.zoom().time().low(), 1.0, 1e-6);
  const double tenth = 0.1 * (values.high() - values.low());
  press(Qt::Key_Up);
  EXPECT_NEAR(pane.zoom().value(0).low(), values.low() + tenth, 1e-6);
  EXPECT_NEAR(pane.zoom().value(0).high(), values.high() + tenth, 1e-6);
  EXPECT_NEAR(pane.zoom().time().low(), 0.0, 1e-6);
  press(Qt::Key_Down);
  EXPECT_NEAR(pane.zoom().value(0).low(), values.low() - tenth, 1e-6);
  press(Qt::Key_0);
  EXPECT_TRUE(pane.zoom().isAll());
}

TEST_F(RunsHands, EscapeSelectsNoGateAndOtherKeysAreLeftToTheWindow)
{
  addGate(gateOnA(0.25, 0.75));
  document.selectGate(0);
  QTest::keyClick(&view(), Qt::Key_Escape);
  EXPECT_EQ(document.selectedGate(), std::nullopt);
  QKeyEvent other(QEvent::KeyPress, Qt::Key_F9, Qt::NoModifier);
  QApplication::sendEvent(&view(), &other);
  EXPECT_FALSE(other.isAccepted());
}

TEST_F(RunsHands, ADoubleClickOnAGateOrWithAnotherButtonShowsNotEverything)
{
  addGate(gateOnA(0.25, 0.75));
  pane.zoom().show(AxisMap(1.0, 9.0), 0, std::nullopt);
  Mouse(view()).doubleClick(at(3.0, 0.5));
  EXPECT_FALSE(pane.zoom().isAll());
  QMouseEvent right(QEvent::MouseButtonDblClick, at(7.0, 1.02), Qt::RightButton, Qt::RightButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&view(), &right);
  EXPECT_FALSE(pane.zoom().isAll());
  Mouse(view()).doubleClick(at(7.0, 1.02));
  EXPECT_TRUE(pane.zoom().isAll());
}

TEST_F(RunsHands, ADoubleClickOnAPinnedRunLeavesItPinned)
{
  document.pin({7});
  Mouse(view()).doubleClick(at(5.0, scattered(0, 7)));
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(7u));
}

TEST_F(RunsHands, GatesOnATimeAreRoundedAsTimes)
{
  Gate time;
  time.kind = GateKind::TimeOfMax;
  time.column = "A";
  time.range = {2.0, 4.0};
  addGate(time);
  document.selectGate(0);
  Mouse(view()).drag(at(3.0, 0.5), at(5.0, 0.9));
  EXPECT_NEAR(gate().range.low, 4.0, 0.05);
  EXPECT_NEAR(gate().range.high, 6.0, 0.05);
  EXPECT_LE(QString::number(gate().range.low, 'g', 12).size(), 5);
}

TEST_F(RunsHands, TheAxisOfAnOutputIsLogarithmicIfSo)
{
  auto* log = pane.findChild<QCheckBox*>();
  EXPECT_FALSE(log->isChecked());
  log->click();
  EXPECT_TRUE(document.state().view.logOutputs.at(0));
  EXPECT_EQ(document.undoStack().undoText(), "Logarithmic axis");
  EXPECT_TRUE(view().frame().vertical().isLogarithmic());
  log->click();
  EXPECT_EQ(document.undoStack().undoText(), "Linear axis");
  EXPECT_FALSE(view().frame().vertical().isLogarithmic());
  document.undoStack().undo();
  EXPECT_TRUE(log->isChecked());
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  EXPECT_FALSE(log->isChecked()) << "the other output has its own axis";
  EXPECT_EQ(document.undoStack().count(), 2) << "showing it changes nothing";
}

TEST_F(RunsHands, ATextThatIsNoOutputGoesBackToTheOneThatIsShown)
{
  auto* box = pane.findChild<app::SearchableBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->currentText(), "A");
  box->lineEdit()->setText("no such");
  QFocusEvent out(QEvent::FocusOut);
  QApplication::sendEvent(box, &out);
  EXPECT_EQ(box->currentText(), "A");
  EXPECT_EQ(box->count(), 2);
}

TEST_F(RunsHands, OnlyAmongSeveralChartsOneCanBeClosed)
{
  auto const closing = [this] {
    QApplication::processEvents();
    int shown = 0;
    for (QToolButton* each : pane.findChildren<QToolButton*>()) shown += each->isVisible() ? 1 : 0;
    return shown;
  };
  EXPECT_EQ(closing(), 0);
  ASSERT_TRUE(pane.addOutput());
  EXPECT_EQ(closing(), 2);
  document.undoStack().undo();
  EXPECT_EQ(closing(), 0);
}

TEST_F(RunsHands, OfSeveralChartsOnlyTheLowestHasNumbersOfTimes)
{
  ASSERT_TRUE(pane.addOutput());
  QApplication::processEvents();
  EXPECT_GT(view(1).height() - view(1).frame().plot().bottom(),
            view(0).height() - view(0).frame().plot().bottom() + view().fontMetrics().height());
}

TEST_F(RunsHands, ANewChartHasTheFirstOutputThatIsNotShownAndTheToolOfTheOthers)
{
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  pane.setTool(RunsTool::Pan);
  ASSERT_TRUE(pane.addOutput());
  EXPECT_THAT(document.state().view.outputs, ElementsAre(1u, 0u));
  EXPECT_EQ(document.undoStack().undoText(), "Add chart");
  EXPECT_EQ(view(1).cursor().shape(), Qt::OpenHandCursor);
  EXPECT_EQ(pane.view(2), nullptr);
}

TEST_F(RunsHands, SixChartsAreTheMost)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 1.0};
  scan->runs.push_back({"1", RunStatus::Complete, 2});
  for (int i = 0; i < 8; ++i) std::fill_n(scan->addOutput({"O" + std::to_string(i), "", "", ""}), 2, 0.5 * i);
  document.open(scan, {});
  int added = 0;
  while (pane.addOutput()) ++added;
  EXPECT_EQ(added, 5);
  document.close();
  EXPECT_FALSE(pane.addOutput());
  EXPECT_EQ(pane.view(), nullptr);
  EXPECT_TRUE(pane.isSettled());
}

TEST_F(RunsHands, ChartsTellTheirOutputWithItsUnitToThoseWhoCannotSeeThem)
{
  EXPECT_EQ(view().accessibleDescription(), "A");
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  EXPECT_EQ(view().accessibleDescription(), "B (nM)");
}

TEST_F(RunsHands, AnotherPaletteReachesTheChart)
{
  QPalette dark = pane.palette();
  dark.setColor(QPalette::Window, QColor(40, 42, 46));
  pane.setPalette(dark);
  ASSERT_TRUE(settlePane());
  EXPECT_LT(shot().pixelColor(3, 3).lightness(), 60);
}

TEST_F(RunsHands, KeysThatLeadToTheChartAreSeenThere)
{
  auto const frames = [this](Qt::FocusReason reason) {
    QFocusEvent in(QEvent::FocusIn, reason);
    QApplication::sendEvent(&view(), &in);
    PaintRecorder paper(view().size());
    view().render(&paper, QPoint(), QRegion(), QWidget::RenderFlags());
    int count = 0;
    for (Drawn const& each : paper.painting().of(Drawn::Kind::Rectangle))
      count += each.pen.style() == Qt::SolidLine && each.box().width() > view().width() - 3.0 ? 1 : 0;
    QFocusEvent out(QEvent::FocusOut, reason);
    QApplication::sendEvent(&view(), &out);
    return count;
  };
  EXPECT_EQ(frames(Qt::TabFocusReason), 1);
  EXPECT_EQ(frames(Qt::BacktabFocusReason), 1);
  EXPECT_EQ(frames(Qt::MouseFocusReason), 0) << "the pointer shows where it is";
}

TEST_F(RunsHands, FadedOthersArePaleAndHiddenOnesAreGone)
{
  addGate(gateOnA(0.5, 1.0));
  std::size_t other = 0;
  while (scattered(0, other) > 0.45) ++other;
  auto const inkAt = [&](app::Focus focus) {
    document.change("Focus", [=](app::State& state) { state.view.focus = focus; });
    EXPECT_TRUE(settlePane());
    return 255 - shot().pixelColor(at(8.0, scattered(0, other)).toPoint()).lightness();
  };
  const int all = inkAt(app::Focus::All);
  const int faded = inkAt(app::Focus::Faded);
  EXPECT_GT(all, 25);
  EXPECT_GT(faded, 0);
  EXPECT_LT(2 * faded, all);
  EXPECT_EQ(inkAt(app::Focus::Hidden), 0);
}

TEST_F(RunsHands, SetsThatAreShownHaveTheirColour)
{
  RunSet one(40);
  one.set(7);
  document.change("Set", [&](app::State& state) { state.sets.push_back({"mine", one, 3, true, ""}); });
  ASSERT_TRUE(settlePane());
  auto* legend = pane.findChild<app::RunsLegend*>();
  EXPECT_TRUE(legend->accessibleDescription().contains("mine"));
  const QColor wanted = app::Theme::ofPalette(pane.palette(), pane.font()).sets[3];
  auto const hue = [this] { return shot().pixelColor(at(8.0, scattered(0, 7)).toPoint()).hsvHue(); };
  EXPECT_NEAR(hue(), wanted.hsvHue(), 15);
  document.change("Hide", [](app::State& state) { state.sets[0].shown = false; });
  ASSERT_TRUE(settlePane());
  EXPECT_FALSE(legend->accessibleDescription().contains("mine"));
}

TEST_F(RunsHands, TheBoxOfARunShowsWhereThePointerIs)
{
  const QImage before = shot();
  Mouse(view()).move(at(5.0, scattered(0, 7)));
  const QImage after = shot();
  EXPECT_NE(after, before);
  Mouse(view()).move(at(5.0, 1.03));
  EXPECT_EQ(shot(), before);
}

TEST_F(RunsHands, AnotherOutputEndsADragOnTheFormer)
{
  Mouse mouse(view());
  mouse.press(at(2.0, 0.5));
  mouse.move(at(4.0, 0.9));
  ASSERT_NE(document.previewedGate(), nullptr);
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  EXPECT_EQ(document.previewedGate(), nullptr);
  mouse.release(at(4.0, 0.9));
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(RunsHands, WithoutAScanHandsDoNothing)
{
  RunsView alone(document, pane.zoom(), 0);
  alone.resize(400, 300);
  alone.show();
  document.close();
  Mouse mouse(alone);
  mouse.drag({100, 100}, {200, 200});
  mouse.wheel({100, 100}, 1);
  EXPECT_EQ(alone.neededLeft(), 0.0);
  EXPECT_FALSE(document.isOpen());
}

TEST_F(RunsHands, BesideThePlotTheWheelZoomsAboutItsEnd)
{
  const QRectF plot = view().frame().plot();
  Mouse(view()).wheel({plot.right() + 8.0, plot.center().y()}, 1);
  EXPECT_NEAR(pane.zoom().time().high(), 10.0, 1e-6);
  pane.zoom().reset();
  const double high = pane.zoom().value(0).high();
  Mouse(view()).wheel({plot.center().x(), plot.top() - 5.0}, 1);
  EXPECT_NEAR(pane.zoom().value(0).high(), high, 1e-6);
}

TEST_F(RunsHands, TheFirstOutputCanBeChosenAgain)
{
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  auto* box = pane.findChild<app::SearchableBox*>();
  box->setCurrentIndex(0);
  Q_EMIT box->activated(0);
  EXPECT_EQ(view().shownOutput(), 0u);
  EXPECT_EQ(document.undoStack().undoText(), "Show output");
}

} // namespace
} // namespace runsieve::test
