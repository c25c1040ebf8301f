#include "ParametersScene.h"

#include <gmock/gmock.h>

#include <QHelpEvent>
#include <QMenu>
#include <QTimer>
#include <QToolTip>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

/// Parameter k2 has texts.
struct TextGates : ParametersScene
{
  void SetUp() override
  {
    ParametersScene::SetUp();
    openTexts({"wild type", "mutant A", "mutant B", "deletion"});
  }
  void openTexts(std::vector<std::string> const& texts)
  {
    auto scan = lineScan();
    ScanParameter& parameter = const_cast<Scan&>(*scan).parameters[2];
    parameter.texts = texts;
    for (std::size_t run = 0; run < parameter.values.size(); ++run)
      parameter.values[run] = static_cast<double>(run % texts.size());
    openScan(scan);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] QPointF onBar(std::size_t text) { return grid().row(2, text).center(); }
  void clickBar(std::size_t text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    Mouse mouse(*grid().viewport());
    mouse.press(onBar(text), Qt::LeftButton, modifiers);
    mouse.release(onBar(text), modifiers);
  }
};

TEST_F(TextGates, AreMadeByAClickOnABar)
{
  clickBar(1);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().kind, GateKind::Is);
  EXPECT_EQ(gate().column, "k2");
  EXPECT_THAT(gate().texts, ElementsAre("mutant A"));
  EXPECT_FALSE(gate().negated);
  EXPECT_EQ(document.passing().count(), 10u);
  EXPECT_EQ(document.selectedGate(), 0u);
  EXPECT_EQ(pane->large(), nullptr);
  EXPECT_EQ(document.undoStack().undoText(), "Draw gate");
  document.undoStack().undo();
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(TextGates, OfSeveralTextsAreDraggedOverTheirBars)
{
  Mouse mouse(*grid().viewport());
  mouse.press(onBar(3));
  EXPECT_EQ(document.passing().count(), 10u) << "shown while the button is down";
  mouse.move(onBar(1));
  EXPECT_EQ(document.passing().count(), 30u);
  mouse.move(onBar(2));
  EXPECT_EQ(document.passing().count(), 20u);
  EXPECT_TRUE(document.state().gates.empty());
  mouse.release(onBar(2));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_THAT(gate().texts, ElementsAre("mutant B", "deletion"));
}

TEST_F(TextGates, LetTheOthersPassWithShift)
{
  clickBar(0, Qt::ShiftModifier);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_TRUE(gate().negated);
  EXPECT_EQ(document.passing().count(), 30u);
}

TEST_F(TextGates, TakeAndLoseTextsWithControlButKeepOne)
{
  clickBar(0);
  clickBar(2, Qt::ControlModifier);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_THAT(gate().texts, ElementsAre("wild type", "mutant B"));
  EXPECT_EQ(document.undoStack().undoText(), "Change texts of gate");
  clickBar(0, Qt::ControlModifier);
  EXPECT_THAT(gate().texts, ElementsAre("mutant B"));
  clickBar(2, Qt::ControlModifier);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_THAT(gate().texts, ElementsAre("mutant B"));
  document.undoStack().undo();
  EXPECT_THAT(gate().texts, ElementsAre("wild type", "mutant B"));
}

TEST_F(TextGates, AreSelectedByAClickAndGrowByADrag)
{
  clickBar(0);
  document.selectGate(std::nullopt);
  clickBar(0);
  EXPECT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.selectedGate(), 0u);
  Mouse(*grid().viewport()).drag(onBar(0), onBar(1));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_THAT(gate().texts, ElementsAre("wild type", "mutant A"));
}

TEST_F(TextGates, AreGivenUpByEscape)
{
  Mouse mouse(*grid().viewport());
  mouse.press(onBar(0));
  mouse.move(onBar(2));
  QTest::keyClick(&grid(), Qt::Key_Escape);
  EXPECT_EQ(document.previewedGate(), nullptr);
  mouse.release(onBar(2));
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_FALSE(document.undoStack().canUndo());
  EXPECT_EQ(document.passing().count(), 40u);
}

TEST_F(TextGates, OfATextThatNoRunHasChangeNothing)
{
  auto scan = lineScan();
  ScanParameter& parameter = const_cast<Scan&>(*scan).parameters[2];
  parameter.texts = {"wild type", "never grown"};
  std::fill(parameter.values.begin(), parameter.values.end(), 0.0);
  openScan(scan);
  clickBar(1);
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_FALSE(document.undoStack().canUndo());
}

TEST_F(TextGates, TakeTheFullNameWhereAnOutputHasTheSame)
{
  auto scan = lineScan();
  ScanParameter& parameter = const_cast<Scan&>(*scan).parameters[2];
  parameter.label.name = "B";
  parameter.texts = {"x", "y"};
  for (std::size_t run = 0; run < 40; ++run) parameter.values[run] = run < 10 ? 0.0 : 1.0;
  openScan(scan);
  clickBar(0);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_TRUE(document.outcomes()[0].error.empty()) << document.outcomes()[0].error;
  EXPECT_EQ(document.passing().count(), 10u);
}

TEST_F(TextGates, OnTheBarOfTheOthersAskForEachOfThem)
{
  std::vector<std::string> texts;
  for (int i = 0; i < 20; ++i) texts.push_back("strain " + std::to_string(i + 1));
  openTexts(texts);
  clickBar(19);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_GT(gate().texts.size(), 1u);
  EXPECT_EQ(gate().texts.back(), "strain 20");
  EXPECT_EQ(document.passing().count(), 2 * gate().texts.size());
}

TEST_F(TextGates, LeaveTheNameOfTheChartToOpenItLarge)
{
  Mouse(*grid().viewport()).click(grid().cell(2).topLeft() + QPointF(30.0, 8.0));
  EXPECT_TRUE(document.state().gates.empty());
  ASSERT_NE(pane->large(), nullptr);
  EXPECT_EQ(pane->large()->shownParameter(), 2u);
}

TEST_F(TextGates, AreMadeInTheLargeChartToo)
{
  pane->openLarge(2);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(pane->large()));
  app::LargeChartView& view = *pane->large()->view();
  Mouse(view).drag(view.row(0).center(), view.row(1).center());
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_THAT(gate().texts, ElementsAre("wild type", "mutant A"));
}

struct ParallelTextGates : TextGates
{
  void SetUp() override
  {
    TextGates::SetUp();
    pane->showPage(app::ParametersPane::Page::Parallel);
    QCoreApplication::processEvents();
  }
  /// The place of one of the four texts on its axis, the first at the bottom.
  [[nodiscard]] QPointF on(std::size_t text, double across = 0.0) const
  {
    return pane->parallel()->axisLine(2).pointAt((static_cast<double>(text) + 0.5) / 4.0) +
           QPointF(across, 0.0);
  }
  [[nodiscard]] Mouse mouse() const { return Mouse(*pane->parallel()->viewport()); }
};

TEST_F(ParallelTextGates, AreDraggedOverTheTextsOfAnAxis)
{
  mouse().drag(on(1), on(2));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().kind, GateKind::Is);
  EXPECT_EQ(gate().column, "k2");
  EXPECT_THAT(gate().texts, ElementsAre("mutant A", "mutant B"));
  EXPECT_EQ(document.passing().count(), 20u);
}

TEST_F(ParallelTextGates, TakeTheLowestTextAtTheLowEndAndTheHighestAtTheOther)
{
  mouse().click(on(0), Qt::LeftButton);
  EXPECT_THAT(gate().texts, ElementsAre("wild type"));
  mouse().click(on(3), Qt::LeftButton);
  ASSERT_EQ(document.state().gates.size(), 2u);
  EXPECT_THAT(gate(1).texts, ElementsAre("deletion"));
}

TEST_F(ParallelTextGates, LeaveTheNameOverTheAxis)
{
  const QLineF axis = pane->parallel()->axisLine(2);
  mouse().click(axis.p2() - QPointF(0.0, 8.0), Qt::LeftButton);
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_NE(pane->large(), nullptr);
}

TEST_F(ParallelTextGates, AreFramesBesideTheTexts)
{
  mouse().drag(on(1), on(2));
  const QImage shot = pane->parallel()->viewport()->grab().toImage();
  const QRect left(on(2, -12.0).toPoint(), on(1, 0.0).toPoint());
  const QRect right(on(2, 6.0).toPoint(), on(1, 40.0).toPoint());
  EXPECT_GT(pixelsOf(shot.copy(left), theme().gate), 20);
  EXPECT_EQ(pixelsOf(shot.copy(right), theme().gate), 0);
}

TEST_F(TextGates, AreSeenAsFramesAroundTheirBars)
{
  const int before = pixelsOf(shot(), theme().gate);
  clickBar(1);
  EXPECT_GT(pixelsOf(shot(), theme().gate), before + 100);
}

TEST_F(TextGates, AreExplainedInTheTooltip)
{
  const QPoint at = onBar(1).toPoint();
  QHelpEvent event(QEvent::ToolTip, at, grid().viewport()->mapToGlobal(at));
  QApplication::sendEvent(grid().viewport(), &event);
  EXPECT_THAT(QToolTip::text().toStdString(), testing::HasSubstr("Click a bar"));
  EXPECT_THAT(QToolTip::text().toStdString(), testing::HasSubstr("mutant A: 25 % of the runs"));
  QToolTip::hideText();
}

TEST_F(TextGates, AreSwitchedOffInTheContextMenu)
{
  clickBar(1);
  QTimer::singleShot(0, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
      if (action->text() == "Switch Gate 1 off") action->trigger();
    menu->close();
  });
  const QPoint at = onBar(1).toPoint();
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid().viewport()->mapToGlobal(at));
  QApplication::sendEvent(grid().viewport(), &event);
  EXPECT_FALSE(document.state().gates.at(0).on);
}

} // namespace
} // namespace runsieve::test
