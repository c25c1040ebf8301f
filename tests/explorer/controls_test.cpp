#include "Dialogs.h"

#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/controls/SearchableBox.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/parameters/ResultTable.h"

#include <gtest/gtest.h>

#include <QCompleter>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace runsieve::test {
namespace {

TEST(PlainText, ShowsMarkupControlsAndAmpersandsAsThemselves)
{
  EXPECT_EQ(app::shownText("a\nb"), "a\\x0ab");
  EXPECT_EQ(app::shownText("\xce\xb1 <b>"), QString::fromUtf8("\u03b1 <b>"));
  EXPECT_TRUE(app::toolTipText("<b>x</b>\ny").contains("&lt;b&gt;x&lt;/b&gt;\ny"));
  EXPECT_EQ(app::toolTipText(""), "") << "no empty tooltip";
  EXPECT_EQ(app::menuText("a & b && c"), "a && b &&&& c");
}

TEST(PlainText, FailuresAreToldInABoxAndLongOnesAreCut)
{
  NextMessage told(QMessageBox::Ok);
  app::tellFailure(nullptr, "It could not be written.", "<b>" + QString(2000, 'x'));
  EXPECT_TRUE(told.seen());
  EXPECT_EQ(told.text, "It could not be written.");
  EXPECT_TRUE(told.more.contains("&lt;b&gt;"));
  EXPECT_LT(told.more.size(), 1100);
  EXPECT_TRUE(told.more.contains(QString::fromUtf8("\u2026")));
}

struct KeysScene : testing::Test
{
  QTableWidget table{2, 2};
  int copies = 0;
  int deletes = 0;

  void SetUp() override
  {
    auto* keys = new app::Keys(table);
    keys->on(QKeySequence::Copy, [this] { ++copies; });
    keys->on(Qt::Key_Delete, [this] { ++deletes; });
    for (int row = 0; row < 2; ++row) table.setItem(row, 0, new QTableWidgetItem("x"));
    table.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
    table.setFocus();
  }
  [[nodiscard]] bool takes(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    QKeyEvent event(type, key, modifiers);
    event.ignore();
    QApplication::sendEvent(&table, &event);
    return event.isAccepted();
  }
};

TEST_F(KeysScene, DoWhatTheyAreForAndNothingElse)
{
  EXPECT_TRUE(takes(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier));
  EXPECT_EQ(copies, 1);
  EXPECT_TRUE(takes(QEvent::KeyPress, Qt::Key_Delete));
  EXPECT_EQ(deletes, 1);
  (void)takes(QEvent::KeyPress, Qt::Key_C);
  (void)takes(QEvent::KeyPress, Qt::Key_Delete, Qt::ShiftModifier);
  EXPECT_EQ(copies, 1);
  EXPECT_EQ(deletes, 1);
}

TEST_F(KeysScene, OfTheKeypadAreTheSame)
{
  EXPECT_TRUE(takes(QEvent::KeyPress, Qt::Key_Delete, Qt::KeypadModifier));
  EXPECT_EQ(deletes, 1);
}

TEST_F(KeysScene, AreKeptFromShortcutsOfTheWindow)
{
  EXPECT_TRUE(takes(QEvent::ShortcutOverride, Qt::Key_Delete));
  EXPECT_EQ(deletes, 0) << "the press comes after";
  EXPECT_FALSE(takes(QEvent::ShortcutOverride, Qt::Key_F9));
}

TEST_F(KeysScene, BelongToAnEditorWhileOneIsOpen)
{
  table.editItem(table.item(0, 0));
  auto* editor = table.viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->setFocus();
  QTest::keyClick(editor, Qt::Key_Home);
  QTest::keyClick(editor, Qt::Key_Delete);
  EXPECT_EQ(editor->text(), "");
  EXPECT_EQ(deletes, 0);
}

TEST(SearchableBox, FindsANameByAPartAndForgetsATextThatIsNone)
{
  app::SearchableBox box;
  box.addItems({"alpha", "beta", "alphabet"});
  EXPECT_TRUE(box.isEditable());
  EXPECT_EQ(box.insertPolicy(), QComboBox::NoInsert);
  EXPECT_EQ(box.completer()->filterMode(), Qt::MatchContains);
  box.completer()->setCompletionPrefix("bet");
  EXPECT_EQ(box.completer()->completionCount(), 2);
  box.setCurrentIndex(1);
  box.lineEdit()->setText("no such");
  QFocusEvent out(QEvent::FocusOut);
  QApplication::sendEvent(&box, &out);
  EXPECT_EQ(box.currentText(), "beta");
  box.setCurrentIndex(-1);
  box.lineEdit()->setText("unknown");
  QApplication::sendEvent(&box, &out);
  EXPECT_EQ(box.currentText(), "unknown") << "nothing is chosen to go back to";
}

TEST(SearchableBox, ReturnTakesTheFirstNameThatHoldsWhatWasTyped)
{
  app::SearchableBox box;
  box.addItems({"alpha", "beta", "alphabet"});
  box.setCurrentIndex(1);
  std::vector<int> taken;
  QObject::connect(&box, qOverload<int>(&QComboBox::activated), [&](int index) { taken.push_back(index); });
  auto const type = [&](QString const& text) {
    box.lineEdit()->setText(text);
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    return box.currentText();
  };
  EXPECT_EQ(type(" habe "), "alphabet");
  EXPECT_EQ(type("ALPHA"), "alpha") << "the first of two";
  EXPECT_EQ(type("xx"), "alpha") << "as it was";
  EXPECT_EQ(type(""), "alpha");
  EXPECT_EQ(taken, (std::vector<int>{2, 0}));
}

struct TableScene : testing::Test
{
  QStandardItemModel model{3, 3};
  QTableView table;
  app::TableColumns* columns = nullptr;

  TableScene()
  {
    table.setModel(&model);
    app::styleTable(table);
    model.setHorizontalHeaderLabels({"name", "wide", "last"});
    for (int row = 0; row < 3; ++row)
      for (int column = 0; column < 3; ++column)
        model.setItem(row, column, new QStandardItem(QString("%1%2").arg("abc"[row]).arg(column)));
    model.item(1, 1)->setText(QString(200, 'w'));
    model.item(2, 2)->setText(" tab\tand\nline ");
    columns = new app::TableColumns(table);
  }
};

TEST_F(TableScene, ColumnsFitTheirTextsWithinLimits)
{
  const int letter = table.fontMetrics().averageCharWidth();
  EXPECT_GE(table.columnWidth(0), table.fontMetrics().horizontalAdvance("name"));
  EXPECT_LE(table.columnWidth(1), 26 * letter);
  EXPECT_GE(table.columnWidth(1), 24 * letter);
  EXPECT_GE(table.columnWidth(2), 6 * letter);
}

TEST_F(TableScene, HidingTellsAndTheFirstColumnAlwaysShows)
{
  QSignalSpy changed(columns, &app::TableColumns::changed);
  columns->setHidden(0, true);
  EXPECT_EQ(changed.count(), 0);
  EXPECT_FALSE(table.isColumnHidden(0));
  columns->setHidden(1, true);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_TRUE(table.isColumnHidden(1));
  columns->setHidden(1, false);
  EXPECT_FALSE(table.isColumnHidden(1));
  columns->setHidden(2, true);
  columns->showAll();
  EXPECT_EQ(changed.count(), 4);
  EXPECT_FALSE(table.isColumnHidden(2));
}

TEST_F(TableScene, SelectedRowsAreTextWithTabsInTheOrderOfTheTable)
{
  EXPECT_EQ(app::selectedRowsText(table), "");
  QItemSelectionModel* rows = table.selectionModel();
  auto const select = [&](int row) {
    rows->select(model.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  };
  select(2);
  select(0);
  columns->setHidden(1, true);
  EXPECT_EQ(app::selectedRowsText(table), "name\tlast\na0\ta2\nc0\ttab and line\n");
  table.horizontalHeader()->moveSection(2, 0);
  EXPECT_EQ(app::selectedRowsText(table), "last\tname\na2\ta0\ntab and line\tc0\n");
}

TEST_F(TableScene, TablesSelectWholeRowsAndAreNotTypedInto)
{
  EXPECT_EQ(table.selectionBehavior(), QAbstractItemView::SelectRows);
  EXPECT_EQ(table.selectionMode(), QAbstractItemView::ExtendedSelection);
  EXPECT_EQ(table.editTriggers(), QAbstractItemView::NoEditTriggers);
  EXPECT_EQ(table.textElideMode(), Qt::ElideMiddle);
  EXPECT_FALSE(table.wordWrap());
  EXPECT_FALSE(table.tabKeyNavigation()) << "the tabulator leaves the table";
  EXPECT_TRUE(table.verticalHeader()->isHidden());
  EXPECT_GT(table.rowHeight(0), table.fontMetrics().height());
}

TEST(ResultTable, GivesNamesTheRoomThatIsLeftAndNeverTooLittle)
{
  QStandardItemModel model(2, 3);
  for (int row = 0; row < 2; ++row) {
    model.setItem(row, 0, new QStandardItem("a parameter with a rather long name"));
    for (int column : {1, 2}) model.setItem(row, column, new QStandardItem("-0.1234..0.5678"));
  }
  const std::unique_ptr<QTableView> table(app::resultTable(model, "Results", {0}));
  auto const nameAt = [&](int width) {
    table->resize(width, 200);
    table->show();
    QApplication::processEvents();
    return table->columnWidth(0);
  };
  const int letter = table->fontMetrics().averageCharWidth();
  const int wide = nameAt(900);
  EXPECT_EQ(wide + table->columnWidth(1) + table->columnWidth(2), table->viewport()->width());
  EXPECT_EQ(nameAt(200), 14 * letter) << "the table scrolls";
  EXPECT_EQ(nameAt(900), wide);
}

} // namespace
} // namespace runsieve::test
