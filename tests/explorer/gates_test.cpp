#include "DocumentScene.h"

#include "app/explorer/gates/GateCounts.h"
#include "app/explorer/gates/GateEdits.h"
#include "app/explorer/gates/GateForm.h"
#include "app/explorer/gates/GateListModel.h"
#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/gates/LiveCounts.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

namespace runsieve::test {
namespace {

using app::GateListModel;
using testing::ElementsAre;
using testing::Optional;

struct GatesScene : DocumentScene
{
  app::GatesPane pane{document};

  void SetUp() override
  {
    pane.resize(420, 320);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  }

  [[nodiscard]] QString cell(int row, int column) const
  {
    return pane.list()->model()->index(row, column).data().toString();
  }
  [[nodiscard]] int rows() const { return pane.list()->model()->rowCount(); }
  void click(int row, int column)
  {
    const QRect place = pane.list()->visualRect(pane.list()->model()->index(row, column));
    QTest::mouseClick(pane.list()->viewport(), Qt::LeftButton, {}, place.center());
  }
  [[nodiscard]] std::vector<std::string> names() const
  {
    std::vector<std::string> names;
    for (app::NamedGate const& gate : document.state().gates) names.push_back(gate.name);
    return names;
  }
  [[nodiscard]] QToolButton* button(QString const& tip) const
  {
    for (QToolButton* button : pane.findChildren<QToolButton*>())
      if (button->toolTip().startsWith(tip)) return button;
    return nullptr;
  }
  [[nodiscard]] QString total() const
  {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->accessibleName() == "Passing runs" && label->isVisible()) return label->text();
    return {};
  }
  /// The text over the list without gates, if it shows.
  [[nodiscard]] QString hint() const
  {
    auto const* label = pane.list()->viewport()->findChild<QLabel*>();
    return label && label->isVisible() ? label->text() : QString();
  }
  /// What is told of the selected gate below the list, if anything.
  [[nodiscard]] QLabel* details() const
  {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->isVisible() && label->wordWrap() && !label->text().isEmpty()) return label;
    return nullptr;
  }
  /// The entries of the menu of the list, those that cannot be chosen in brackets. \param choose one of them
  QStringList menuOf(QString const& choose = {})
  {
    QStringList entries;
    QTimer::singleShot(0, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      QAction* chosen = nullptr;
      for (QAction* action : menu->actions()) {
        if (action->isSeparator()) continue;
        entries << (action->isEnabled() ? action->text() : "(" + action->text() + ")");
        if (action->text() == choose) chosen = action;
      }
      if (chosen) menu->setActiveAction(chosen);
      QTest::keyClick(menu, chosen ? Qt::Key_Return : Qt::Key_Escape);
    });
    Q_EMIT pane.list()->customContextMenuRequested({5, 5});
    return entries;
  }
  [[nodiscard]] QVariant role(int row, int column, int role) const
  {
    return pane.list()->model()->index(row, column).data(role);
  }
};

TEST_F(GatesScene, AnEmptyListSaysPalelyHowGatesAreMade)
{
  QLabel* words = nullptr;
  for (auto* label : pane.list()->viewport()->findChildren<QLabel*>())
    if (label->text().startsWith("No gates yet")) words = label;
  ASSERT_NE(words, nullptr);
  EXPECT_TRUE(words->isVisible());
  EXPECT_FALSE(words->isEnabled());
  EXPECT_TRUE(words->testAttribute(Qt::WA_TransparentForMouseEvents));
  EXPECT_EQ(words->alignment(), Qt::AlignCenter);
  EXPECT_EQ(words->geometry(), pane.list()->viewport()->rect());
  pane.resize(600, 500);
  QCoreApplication::processEvents();
  EXPECT_EQ(words->geometry(), pane.list()->viewport()->rect());
  addGate(gateOnA(0.2, 0.9));
  EXPECT_FALSE(words->isVisible());
}

TEST_F(GatesScene, TheMenuClosesWhenAnotherScanOpens)
{
  addGate(gateOnA(0.5, 1.0));
  document.selectGate(0);
  bool closed = false;
  QTimer::singleShot(0, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    document.open(lineScan(20), {});
    closed = !menu->isVisible();
    menu->close();
  });
  Q_EMIT pane.list()->customContextMenuRequested({5, 5});
  EXPECT_TRUE(closed);
}

TEST_F(GatesScene, EachGateHasARowWithWhatItAsksForAndTheRunsLeftAfterIt)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  ASSERT_EQ(rows(), 2);
  EXPECT_EQ(cell(0, GateListModel::Name), "Gate 1");
  EXPECT_EQ(cell(0, GateListModel::AsksFor), "A @ 2..4 in 0.5..1");
  EXPECT_EQ(cell(0, GateListModel::Left).toInt(), static_cast<int>(document.outcomes()[0].left));
  EXPECT_EQ(cell(1, GateListModel::Left).toInt(), static_cast<int>(document.passing().count()));
}

TEST_F(GatesScene, AClickSelectsTheGateAndASelectedGateIsMarked)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  click(1, GateListModel::AsksFor);
  EXPECT_EQ(document.selectedGate(), 1u);
  document.selectGate(0);
  ASSERT_EQ(pane.list()->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(pane.list()->selectionModel()->selectedRows().first().row(), 0);
  document.selectGate(std::nullopt);
  EXPECT_FALSE(pane.list()->selectionModel()->hasSelection());
}

TEST_F(GatesScene, TheSwitchOfARowSwitchesTheGate)
{
  addGate(gateOnA(0.5, 1.0));
  const QRect place = pane.list()->visualRect(pane.list()->model()->index(0, 0));
  QTest::mouseClick(pane.list()->viewport(), Qt::LeftButton, {}, {place.left() + 10, place.center().y()});
  EXPECT_FALSE(document.state().gates[0].on);
  EXPECT_EQ(cell(0, GateListModel::Left), "off");
  document.undoStack().undo();
  EXPECT_TRUE(document.state().gates[0].on);
}

TEST_F(GatesScene, SpaceSwitchesAndDeleteTakesAway)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  click(0, GateListModel::AsksFor);
  QTest::keyClick(pane.list(), Qt::Key_Space);
  EXPECT_FALSE(document.state().gates[0].on);
  QTest::keyClick(pane.list(), Qt::Key_Delete);
  EXPECT_THAT(names(), ElementsAre("Gate 2"));
  EXPECT_EQ(document.undoStack().undoText(), "Delete gate");
  document.undoStack().undo();
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2"));
}

TEST_F(GatesScene, ANameIsTypedInItsPlace)
{
  addGate(gateOnA(0.5, 1.0));
  const QPoint place = pane.list()->visualRect(pane.list()->model()->index(0, 0)).center();
  QTest::mouseClick(pane.list()->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(pane.list()->viewport(), Qt::LeftButton, {}, place);
  auto* editor = pane.list()->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(editor, "<b>early</b>");
  QTest::keyClick(editor, Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return names().front() == "<b>early</b>"; }));
  document.undoStack().undo();
  EXPECT_THAT(names(), ElementsAre("Gate 1"));
}

TEST_F(GatesScene, AnEmptyNameLeavesTheFormer)
{
  addGate(gateOnA(0.5, 1.0));
  EXPECT_TRUE(pane.list()->model()->setData(pane.list()->model()->index(0, 0), "  ", Qt::EditRole));
  EXPECT_THAT(names(), ElementsAre("Gate 1"));
  EXPECT_EQ(document.undoStack().count(), 1);
}

TEST_F(GatesScene, KeysAndButtonsMoveAGate)
{
  for (double low : {0.1, 0.2, 0.3}) addGate(gateOnA(low, 1.0));
  click(0, GateListModel::AsksFor);
  QTest::keyClick(pane.list(), Qt::Key_Down, Qt::AltModifier);
  EXPECT_THAT(names(), ElementsAre("Gate 2", "Gate 1", "Gate 3"));
  EXPECT_EQ(document.selectedGate(), 1u);
  QTest::mouseClick(button("Move the selected gate down"), Qt::LeftButton);
  EXPECT_THAT(names(), ElementsAre("Gate 2", "Gate 3", "Gate 1"));
  EXPECT_FALSE(button("Move the selected gate down")->isEnabled());
  QTest::keyClick(pane.list(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_THAT(names(), ElementsAre("Gate 2", "Gate 1", "Gate 3"));
  for (int step = 0; step < 3; ++step) document.undoStack().undo();
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3"));
}

TEST_F(GatesScene, ADroppedGateStandsWhereItWasDropped)
{
  for (double low : {0.1, 0.2, 0.3}) addGate(gateOnA(low, 1.0));
  QAbstractItemModel* model = pane.list()->model();
  auto const drop = [&](int from, int before) {
    const std::unique_ptr<QMimeData> data(model->mimeData({model->index(from, 0)}));
    model->dropMimeData(data.get(), Qt::MoveAction, before, 0, {});
  };
  drop(0, 3);
  EXPECT_THAT(names(), ElementsAre("Gate 2", "Gate 3", "Gate 1"));
  drop(2, 0);
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3"));
  drop(1, 1);
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3"));
}

TEST_F(GatesScene, AnInvertedGateLetsTheOtherRunsThroughAndACopyHasANameOfItsOwn)
{
  addGate(gateOnA(0.5, 1.0));
  const RunSet before = document.passing();
  click(0, GateListModel::AsksFor);
  QTest::mouseClick(button("Let through exactly the other runs"), Qt::LeftButton);
  EXPECT_EQ(document.passing(), before.complement());
  document.undoStack().undo();
  EXPECT_EQ(document.passing(), before);
  pane.duplicateSelected();
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2"));
  EXPECT_EQ(document.state().gates[0].gate, document.state().gates[1].gate);
  EXPECT_EQ(document.selectedGate(), 1u);
}

TEST_F(GatesScene, AllOrAnyIsChosenAbove)
{
  addGate(gateOnA(0.0, 0.2));
  addGate(gateOnA(0.8, 1.0));
  auto* join = pane.findChild<QComboBox*>();
  join->setFocus();
  QTest::keyClick(join, Qt::Key_Down);
  EXPECT_EQ(document.state().join, GateJoin::Any);
  EXPECT_GT(document.passing().count(), 0u);
  document.undoStack().undo();
  EXPECT_EQ(join->currentIndex(), 0);
}

TEST_F(GatesScene, CountsFollowAGateThatIsBeingMoved)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  document.previewGate(0, gateOnA(0.25, 1.0));
  std::size_t first = 0;
  std::size_t both = 0;
  for (std::size_t run = 0; run < 40; ++run) {
    const double value = scattered(0, run);
    first += value >= 0.25 ? 1 : 0;
    both += value >= 0.25 && value <= 0.75 ? 1 : 0;
  }
  EXPECT_THAT(app::runsLeft(document), ElementsAre(Optional(first), Optional(both)));
  EXPECT_EQ(cell(0, GateListModel::AsksFor), "A @ 2..4 in 0.25..1");
  EXPECT_EQ(cell(0, GateListModel::Left).toInt(), static_cast<int>(first));
  document.cancelPreview();
  EXPECT_EQ(cell(0, GateListModel::AsksFor), "A @ 2..4 in 0.5..1");
}

TEST_F(GatesScene, CountsOfMovedGatesFollowWhenAnyGateIsEnough)
{
  addGate(gateOnA(0.0, 0.1));
  addGate(gateOnA(0.9, 1.0));
  app::joinGates(document, GateJoin::Any);
  document.previewGate(0, gateOnA(0.0, 0.5));
  std::size_t first = 0;
  std::size_t both = 0;
  for (std::size_t run = 0; run < 40; ++run) {
    first += scattered(0, run) <= 0.5 ? 1 : 0;
    both += scattered(0, run) <= 0.5 || scattered(0, run) >= 0.9 ? 1 : 0;
  }
  EXPECT_THAT(app::runsLeft(document), ElementsAre(Optional(first), Optional(both)));
}

TEST_F(GatesScene, AGateThatIsBeingDrawnIsARowUntilItIsGivenUp)
{
  document.previewGate(0, gateOnA(0.5, 1.0));
  ASSERT_EQ(rows(), 1);
  EXPECT_EQ(cell(0, GateListModel::Name), "Gate 1");
  EXPECT_EQ(cell(0, GateListModel::Left).toInt(), static_cast<int>(document.passing().count()));
  document.cancelPreview();
  EXPECT_EQ(rows(), 0);
}

TEST_F(GatesScene, WhatWasMovedToTheGridAndWhatDoesNotFitIsTold)
{
  Gate between = gateOnA(0.5, 1.0);
  between.span = GateSpan{2.2, 2.2};
  addGate(between);
  Gate unknown = gateOnA(0.5, 1.0);
  unknown.column = "nothing";
  addGate(unknown);
  EXPECT_THAT(app::gateDetails(document, 0).toStdString(), testing::HasSubstr("time 2.2 -> 2"));
  EXPECT_THAT(app::gateDetails(document, 1).toStdString(), testing::HasSubstr("no output \"nothing\""));
  EXPECT_EQ(cell(1, GateListModel::Left), "error");
  document.selectGate(1);
  bool told = false;
  for (QLabel* label : pane.findChildren<QLabel*>())
    told |= label->isVisible() && label->text().contains("no output");
  EXPECT_TRUE(told);
}

TEST_F(GatesScene, ASwitchedOffGateAndOneThatDoesNotFitSaySoWhileAnotherIsMoved)
{
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  app::switchGate(document, 1, false);
  Gate unknown = gateOnA(0.5, 1.0);
  unknown.column = "nothing";
  addGate(unknown);
  document.previewGate(0, gateOnA(0.25, 1.0));
  EXPECT_EQ(cell(0, GateListModel::Left).toInt(), static_cast<int>(document.passing().count()));
  EXPECT_EQ(cell(1, GateListModel::Left), "off");
  EXPECT_EQ(cell(2, GateListModel::Left), "error");
}

TEST_F(GatesScene, NothingHappensWithoutAScanOrASelectedGate)
{
  addGate(gateOnA(0.5, 1.0));
  document.selectGate(std::nullopt);
  for (auto slot :
       {&app::GatesPane::editSelected, &app::GatesPane::toggleSelected, &app::GatesPane::invertSelected,
        &app::GatesPane::duplicateSelected, &app::GatesPane::deleteSelected, &app::GatesPane::moveSelectedUp,
        &app::GatesPane::moveSelectedDown})
    (pane.*slot)();
  EXPECT_EQ(document.undoStack().count(), 1);
  document.close();
  pane.typeGate();
  EXPECT_EQ(rows(), 0);
}

TEST_F(GatesScene, WithoutGatesItIsToldHowToMakeOne)
{
  EXPECT_TRUE(hint().contains("Drag over the runs"));
  EXPECT_EQ(total(), "40 of 40 runs pass");
  addGate(gateOnA(0.5, 1.0));
  EXPECT_EQ(hint(), "");
  document.undoStack().undo();
  EXPECT_NE(hint(), "");
  document.previewGate(0, gateOnA(0.5, 1.0));
  EXPECT_EQ(hint(), "") << "the gate that is being drawn is a row";
  document.close();
  EXPECT_EQ(hint(), "") << "there is nothing to draw over";
  EXPECT_EQ(total(), "");
}

TEST_F(GatesScene, TheHintFillsTheList)
{
  pane.resize(600, 500);
  auto const* label = pane.list()->viewport()->findChild<QLabel*>();
  EXPECT_EQ(label->geometry(), pane.list()->viewport()->rect());
}

TEST_F(GatesScene, ThePassingRunsAreCountedBelow)
{
  addGate(gateOnA(0.5, 1.0));
  EXPECT_EQ(total(), QString("%1 of 40 runs pass").arg(document.passing().count()));
  document.previewGate(0, gateOnA(0.9, 1.0));
  EXPECT_EQ(total(), QString("%1 of 40 runs pass").arg(document.passing().count()));
  document.cancelPreview();
  app::switchGate(document, 0, false);
  EXPECT_EQ(total(), "40 of 40 runs pass; no gate asks for anything");
}

TEST_F(GatesScene, OnlyWhatCanBeDoneIsOffered)
{
  for (double low : {0.1, 0.2, 0.3}) addGate(gateOnA(low, 1.0));
  document.selectGate(std::nullopt);
  char const* const ofSelected[] = {"Change the selected", "Let through exactly", "Move the selected gate up",
                                    "Move the selected gate down", "Take the selected"};
  for (char const* tip : ofSelected) EXPECT_FALSE(button(tip)->isEnabled()) << tip;
  EXPECT_TRUE(button("Type a new gate")->isEnabled());
  EXPECT_TRUE(pane.findChild<QComboBox*>()->isEnabled());
  document.selectGate(1);
  for (char const* tip : ofSelected) EXPECT_TRUE(button(tip)->isEnabled()) << tip;
  document.selectGate(0);
  EXPECT_FALSE(button("Move the selected gate up")->isEnabled());
  EXPECT_TRUE(button("Move the selected gate down")->isEnabled());
  document.selectGate(2);
  EXPECT_TRUE(button("Move the selected gate up")->isEnabled());
  EXPECT_FALSE(button("Move the selected gate down")->isEnabled());
  document.close();
  for (char const* tip : ofSelected) EXPECT_FALSE(button(tip)->isEnabled()) << tip;
  EXPECT_FALSE(button("Type a new gate")->isEnabled());
  EXPECT_FALSE(pane.findChild<QComboBox*>()->isEnabled());
}

TEST_F(GatesScene, TheFirstAndTheLastGateStayWhereTheyAre)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  document.selectGate(0);
  pane.moveSelectedUp();
  document.selectGate(1);
  pane.moveSelectedDown();
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2"));
  EXPECT_EQ(document.undoStack().count(), 2);
}

TEST_F(GatesScene, TheGateBehindADeletedOneIsSelectedThen)
{
  for (double low : {0.1, 0.2, 0.3}) addGate(gateOnA(low, 1.0));
  document.selectGate(1);
  pane.deleteSelected();
  EXPECT_EQ(document.selectedGate(), 1u);
  EXPECT_EQ(document.state().gates[1].name, "Gate 3");
  pane.deleteSelected();
  EXPECT_EQ(document.selectedGate(), 0u) << "of the last one that before it";
  pane.deleteSelected();
  EXPECT_EQ(document.selectedGate(), std::nullopt);
}

TEST_F(GatesScene, StepsAreNamedAfterWhatWasDone)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  auto const last = [this] { return document.undoStack().undoText().toStdString(); };
  app::switchGate(document, 0, false);
  EXPECT_EQ(last(), "Switch gate off");
  app::switchGate(document, 0, true);
  EXPECT_EQ(last(), "Switch gate on");
  app::renameGate(document, 0, "x");
  EXPECT_EQ(last(), "Rename gate");
  app::invertGate(document, 0);
  EXPECT_EQ(last(), "Invert gate");
  app::moveGate(document, 0, 1);
  EXPECT_EQ(last(), "Move gate in the list");
  app::duplicateGate(document, 0);
  EXPECT_EQ(last(), "Duplicate gate");
  app::joinGates(document, GateJoin::Any);
  EXPECT_EQ(last(), "Pass any gate");
  app::joinGates(document, GateJoin::All);
  EXPECT_EQ(last(), "Pass all gates");
  app::setGateKind(document, 0, GateKind::Ever);
  EXPECT_EQ(last(), "Change gate");
}

TEST_F(GatesScene, WhatChangesNothingIsNoStep)
{
  addGate(gateOnA(0.1, 1.0));
  app::renameGate(document, 0, "Gate 1");
  app::moveGate(document, 0, 0);
  app::joinGates(document, GateJoin::All);
  app::setGateKind(document, 0, GateKind::Inside);
  EXPECT_EQ(document.undoStack().count(), 1);
}

TEST_F(GatesScene, OnlyGatesOnValuesAtTimesChangeTheWayTheyTakeThem)
{
  addGate(gateOnA(0.1, 1.0));
  app::setGateKind(document, 0, GateKind::Crosses);
  EXPECT_EQ(document.state().gates[0].gate.kind, GateKind::Crosses);
  app::setGateKind(document, 0, GateKind::Never);
  EXPECT_EQ(document.state().gates[0].gate.kind, GateKind::Never);
  document.change("Max", [](app::State& state) { state.gates[0].gate.kind = GateKind::Max; });
  app::setGateKind(document, 0, GateKind::Ever);
  EXPECT_EQ(document.state().gates[0].gate.kind, GateKind::Max);
}

TEST_F(GatesScene, ACopyStandsBehindItsGate)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  app::duplicateGate(document, 0);
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 3", "Gate 2"));
  EXPECT_EQ(document.state().gates[1].gate, gateOnA(0.1, 1.0));
  EXPECT_EQ(document.selectedGate(), 1u);
}

TEST_F(GatesScene, TheMenuOffersWhatCanBeDoneWithTheSelectedGate)
{
  document.selectGate(std::nullopt);
  EXPECT_EQ(menuOf(), QStringList{"New gate..."});
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  document.selectGate(0);
  EXPECT_EQ(menuOf(), (QStringList{"New gate...", "Edit...", "Rename", "Switch off", "Invert", "Duplicate",
                                   "(Move up)", "Move down", "Delete"}));
  menuOf("Switch off");
  EXPECT_FALSE(document.state().gates[0].on);
  document.selectGate(1);
  EXPECT_TRUE(menuOf().contains("(Move down)"));
  document.selectGate(0);
  EXPECT_TRUE(menuOf("Switch on").contains("Switch on"));
  EXPECT_TRUE(document.state().gates[0].on);
  menuOf("Duplicate");
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 3", "Gate 2"));
  menuOf("Delete");
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2"));
  document.close();
  EXPECT_EQ(menuOf(), QStringList{"(New gate...)"});
}

TEST_F(GatesScene, TheMenuRenamesInPlace)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  document.selectGate(1);
  menuOf("Rename");
  auto* editor = pane.list()->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->text(), "Gate 2");
}

TEST_F(GatesScene, ReturnOpensTheFormOfTheSelectedGate)
{
  addGate(gateOnA(0.5, 1.0));
  document.selectGate(0);
  for (Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* form = qobject_cast<app::GateForm*>(QApplication::activeModalWidget());
      ASSERT_NE(form, nullptr);
      opened = form->windowTitle() == "Edit gate";
      form->reject();
    });
    QTest::keyClick(pane.list(), key);
    EXPECT_TRUE(opened);
  }
  EXPECT_EQ(document.undoStack().count(), 1);
}

TEST_F(GatesScene, ADoubleClickOnWhatAGateAsksForOpensItsForm)
{
  addGate(gateOnA(0.5, 1.0));
  bool opened = false;
  QTimer::singleShot(0, [&] {
    auto* form = qobject_cast<app::GateForm*>(QApplication::activeModalWidget());
    opened = form != nullptr;
    if (form) form->reject();
  });
  document.selectGate(0);
  Q_EMIT pane.list()->doubleClicked(pane.list()->model()->index(0, GateListModel::AsksFor));
  EXPECT_TRUE(opened);
}

TEST_F(GatesScene, ADroppedGateStandsBeforeTheRowItWasDroppedOnOrAtTheEnd)
{
  for (double low : {0.1, 0.2, 0.3}) addGate(gateOnA(low, 1.0));
  QAbstractItemModel* model = pane.list()->model();
  auto const drop = [&](int from, int row, QModelIndex const& on, Qt::DropAction action = Qt::MoveAction) {
    const std::unique_ptr<QMimeData> data(model->mimeData({model->index(from, 0)}));
    return model->dropMimeData(data.get(), action, row, 0, on);
  };
  drop(2, -1, model->index(0, 0));
  EXPECT_THAT(names(), ElementsAre("Gate 3", "Gate 1", "Gate 2"));
  EXPECT_EQ(document.selectedGate(), 0u);
  drop(0, -1, {});
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3")) << "on the empty part below";
  drop(0, 3, {}, Qt::CopyAction);
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3")) << "gates are moved, not copied";
  QMimeData other;
  other.setText("0");
  EXPECT_FALSE(model->dropMimeData(&other, Qt::MoveAction, 3, 0, {}));
  EXPECT_THAT(names(), ElementsAre("Gate 1", "Gate 2", "Gate 3"));
}

TEST_F(GatesScene, OnlyNamesOfGatesAreTypedAndOnlyGatesAreDragged)
{
  addGate(gateOnA(0.1, 1.0));
  document.previewGate(1, gateOnA(0.2, 0.9));
  QAbstractItemModel* model = pane.list()->model();
  ASSERT_EQ(model->rowCount(), 2);
  auto const flags = [&](int row, int column) { return model->flags(model->index(row, column)); };
  EXPECT_TRUE(flags(0, GateListModel::Name).testFlag(Qt::ItemIsEditable));
  EXPECT_TRUE(flags(0, GateListModel::Name).testFlag(Qt::ItemIsUserCheckable));
  EXPECT_FALSE(flags(0, GateListModel::AsksFor).testFlag(Qt::ItemIsEditable));
  EXPECT_FALSE(flags(0, GateListModel::Left).testFlag(Qt::ItemIsUserCheckable));
  EXPECT_TRUE(flags(0, GateListModel::AsksFor).testFlag(Qt::ItemIsDragEnabled));
  EXPECT_FALSE(flags(1, GateListModel::Name).testFlag(Qt::ItemIsEditable)) << "it is still being drawn";
  EXPECT_FALSE(flags(1, GateListModel::Name).testFlag(Qt::ItemIsDragEnabled));
  EXPECT_FALSE(model->setData(model->index(1, 0), "x", Qt::EditRole));
  EXPECT_FALSE(model->setData(model->index(0, GateListModel::AsksFor), "x", Qt::EditRole));
  EXPECT_FALSE(model->setData(model->index(0, 0), "x", Qt::ToolTipRole));
  EXPECT_FALSE(role(1, GateListModel::Name, Qt::CheckStateRole).isValid());
  EXPECT_FALSE(role(0, GateListModel::Left, Qt::CheckStateRole).isValid());
  EXPECT_EQ(role(0, GateListModel::Name, Qt::CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(GatesScene, GatesThatAskForNothingArePale)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  app::switchGate(document, 0, false);
  EXPECT_TRUE(role(0, GateListModel::AsksFor, Qt::ForegroundRole).isValid());
  EXPECT_FALSE(role(0, GateListModel::AsksFor, Qt::FontRole).isValid());
  EXPECT_FALSE(role(1, GateListModel::AsksFor, Qt::ForegroundRole).isValid());
  EXPECT_EQ(role(0, GateListModel::Name, Qt::CheckStateRole).toInt(), Qt::Unchecked);
  document.change("Unknown", [](app::State& state) { state.gates[1].gate.column = "nothing"; });
  EXPECT_TRUE(role(1, GateListModel::AsksFor, Qt::ForegroundRole).isValid());
  EXPECT_TRUE(role(1, GateListModel::AsksFor, Qt::FontRole).value<QFont>().italic());
}

TEST_F(GatesScene, NumbersStandAtTheRightUnderTheirTitle)
{
  addGate(gateOnA(0.1, 1.0));
  QAbstractItemModel const* model = pane.list()->model();
  auto const isRight = [](QVariant const& alignment) { return (alignment.toInt() & Qt::AlignRight) != 0; };
  for (int column = 0; column < model->columnCount(); ++column) {
    const bool wanted = column == GateListModel::Left;
    EXPECT_EQ(isRight(role(0, column, Qt::TextAlignmentRole)), wanted);
    EXPECT_EQ(isRight(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)), wanted);
    EXPECT_FALSE(model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
  }
  EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::DisplayRole), "Gate");
  EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole), "Asks for");
  EXPECT_EQ(model->headerData(2, Qt::Horizontal, Qt::DisplayRole), "Left");
}

TEST_F(GatesScene, ATooltipTellsAllOfAGateAsPlainText)
{
  addGate(gateOnA(0.1, 1.0));
  EXPECT_TRUE(role(0, GateListModel::Left, Qt::ToolTipRole).toString().contains("A @ 2..4 in 0.1..1"));
  document.change("Unknown", [](app::State& state) { state.gates[0].gate.column = "<b>"; });
  EXPECT_TRUE(role(0, GateListModel::Left, Qt::ToolTipRole).toString().contains("&lt;b&gt;"));
}

TEST_F(GatesScene, OnlyWhatNeedsMoreRoomThanARowIsToldBelow)
{
  addGate(gateOnA(0.5, 1.0));
  document.selectGate(0);
  EXPECT_EQ(details(), nullptr);
  document.change("Between", [](app::State& state) { state.gates[0].gate.span = GateSpan{2.2, 2.2}; });
  ASSERT_NE(details(), nullptr);
  EXPECT_TRUE(details()->text().startsWith("On the times of the scan"));
  EXPECT_GT(details()->height(), pane.fontMetrics().height());
  document.selectGate(std::nullopt);
  EXPECT_EQ(details(), nullptr);
}

TEST_F(GatesScene, NamesHaveTheRoomThatTheyNeedUpToAPartOfTheList)
{
  addGate(gateOnA(0.5, 1.0));
  auto const nameIt = [&](std::string const& name) {
    document.change("Name", [&](app::State& state) { state.gates[0].name = name; });
    return pane.list()->columnWidth(GateListModel::Name);
  };
  const int before = pane.list()->columnWidth(GateListModel::Name);
  EXPECT_EQ(nameIt("one"), before);
  const QString name = "early peak of the repressor";
  EXPECT_GT(nameIt(name.toStdString()), pane.fontMetrics().horizontalAdvance(name));
  EXPECT_LT(nameIt(std::string(300, 'x')), 0.5 * pane.list()->viewport()->width());
}

TEST_F(GatesScene, LongListsOfRunsAreCut)
{
  Gate gate;
  gate.kind = GateKind::Runs;
  for (int run = 1; run < 40; run += 2) gate.runs.emplace_back(std::to_string(run));
  for (int run = 1000; run < 1100; run += 2) gate.runs.emplace_back(std::to_string(run));
  addGate(gate);
  document.selectGate(0);
  EXPECT_TRUE(cell(0, GateListModel::AsksFor).endsWith(QString::fromUtf8("\u2026")));
  EXPECT_LE(cell(0, GateListModel::AsksFor).size(), 301);
  ASSERT_NE(details(), nullptr) << "the runs are not there";
  EXPECT_LE(details()->text().size(), 161);
  EXPECT_TRUE(details()->toolTip().contains("Does not fit this scan"));
  EXPECT_LE(details()->height(), 6 * pane.fontMetrics().lineSpacing());
}

TEST_F(GatesScene, CountsBehindAMovedGateFollowWhatIsKnownOfTheOthers)
{
  for (double low : {0.1, 0.2, 0.3, 0.4}) addGate(gateOnA(low, 1.0));
  app::switchGate(document, 2, false);
  document.previewGate(1, gateOnA(0.0, 0.6));
  auto const runsIn = [](double low, double high) {
    std::size_t count = 0;
    for (std::size_t run = 0; run < 40; ++run)
      count += scattered(0, run) >= low && scattered(0, run) <= high ? 1 : 0;
    return count;
  };
  EXPECT_THAT(app::runsLeft(document), ElementsAre(Optional(runsIn(0.1, 1.0)), Optional(runsIn(0.1, 0.6)),
                                                   testing::Eq(std::nullopt), Optional(runsIn(0.4, 0.6))));
}

TEST_F(GatesScene, CountsStayWhileAGateThatIsOffIsMoved)
{
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  app::switchGate(document, 0, false);
  auto const before = app::runsLeft(document);
  document.previewGate(0, gateOnA(0.7, 0.8));
  EXPECT_EQ(app::runsLeft(document), before);
}

TEST_F(GatesScene, OfALargeScanOnlyTheLastCountFollowsTheMouse)
{
  document.open(lineScan(30'000, 1), {});
  addGate(gateOnA(0.5, 1.0));
  addGate(gateOnA(0.0, 0.75));
  Gate wide = gateOnA(0.25, 1.0);
  wide.span = GateSpan();
  document.previewGate(0, wide);
  EXPECT_THAT(app::runsLeft(document),
              ElementsAre(Optional(testing::_), Optional(document.passing().count())))
      << "11 times of 30,000 runs are counted at once";
}

/// What a gate that is typed would let through.
struct GateCountsScene : DocumentScene
{
  /// \return runs that pass the gate alone, and with the others
  std::pair<std::size_t, std::size_t> counted(std::optional<std::size_t> index, Gate const& gate)
  {
    app::GateCounts counts(document, index);
    std::pair<std::size_t, std::size_t> found{999, 999};
    QObject::connect(&counts, &app::GateCounts::counted, [&](std::size_t alone, std::size_t all) {
      found = {alone, all};
    });
    counts.count(gate);
    EXPECT_TRUE(counts.isBusy());
    EXPECT_TRUE(waitFor([&] { return !counts.isBusy(); }));
    return found;
  }
  static std::size_t runsIn(double low, double high)
  {
    std::size_t count = 0;
    for (std::size_t run = 0; run < 40; ++run)
      count += scattered(0, run) >= low && scattered(0, run) <= high ? 1 : 0;
    return count;
  }
};

TEST_F(GateCountsScene, AGateWithoutOthersLetsTheSameRunsThroughAloneAndWithThem)
{
  const auto expected = std::pair(runsIn(0.3, 0.6), runsIn(0.3, 0.6));
  EXPECT_EQ(counted(std::nullopt, gateOnA(0.3, 0.6)), expected);
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  EXPECT_EQ(counted(std::nullopt, gateOnA(0.3, 0.6)), expected);
}

TEST_F(GateCountsScene, OtherGatesThatAreOnCountWithIt)
{
  addGate(gateOnA(0.0, 0.5));
  addGate(gateOnA(0.9, 1.0));
  app::switchGate(document, 1, false);
  EXPECT_EQ(counted(std::nullopt, gateOnA(0.3, 0.6)), std::pair(runsIn(0.3, 0.6), runsIn(0.3, 0.5)));
  EXPECT_EQ(counted(0, gateOnA(0.3, 0.6)), std::pair(runsIn(0.3, 0.6), runsIn(0.3, 0.6)))
      << "not the gate that is changed";
  document.change("Any", [](app::State& state) { state.join = GateJoin::Any; });
  EXPECT_EQ(counted(std::nullopt, gateOnA(0.3, 0.6)), std::pair(runsIn(0.3, 0.6), runsIn(0.0, 0.6)));
}

TEST_F(GateCountsScene, AFaultIsToldInWords)
{
  app::GateCounts counts(document, std::nullopt);
  QString fault;
  QObject::connect(&counts, &app::GateCounts::failed, [&](QString const& message) { fault = message; });
  Gate gate = gateOnA(0.0, 1.0);
  gate.column = "nothing";
  counts.count(gate);
  ASSERT_TRUE(waitFor([&] { return !counts.isBusy(); }));
  EXPECT_TRUE(fault.contains("no output \"nothing\""));
}

TEST_F(GatesScene, ItsModelKeepsTheRulesOfModels)
{
  const QAbstractItemModelTester tester(pane.list()->model(),
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  for (double low : {0.1, 0.2}) addGate(gateOnA(low, 1.0));
  document.previewGate(2, gateOnA(0.5, 1.0));
  document.previewGate(0, gateOnA(0.5, 1.0));
  document.cancelPreview();
  app::moveGate(document, 0, 1);
  app::deleteGate(document, 0);
  document.open(lineScan(10), {});
  EXPECT_EQ(rows(), 0);
}

} // namespace
} // namespace runsieve::test
