#include "DocumentScene.h"

#include "app/explorer/gates/GateEdits.h"
#include "app/explorer/gates/GateListModel.h"
#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/gates/LiveCounts.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTableView>
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
};

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

} // namespace
} // namespace runsieve::test
