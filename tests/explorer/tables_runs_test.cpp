#include "Dialogs.h"
#include "DocumentScene.h"

#include "app/explorer/tables/NaturalOrder.h"
#include "app/explorer/tables/RunCells.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/tables/RunTableModel.h"

#include <runsieve/core/read/ReadScan.h>

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

#include <limits>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// Six runs with missing values, texts, ties, names that are numbered, and a run that has failed.
std::shared_ptr<Scan const> unevenScan()
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 5.0, 10.0};
  for (char const* key : {"run_10", "run_2", "run_1", "a,\"b\"", "run_3", "x"})
    scan->runs.push_back({key, RunStatus::Complete, 3});
  scan->runs[3].status = RunStatus::Failed;
  ScanParameter number;
  number.label.name = "k, \"1\"";
  number.values = {3.0, missing, 1.0, 3.0, -2.0, missing};
  ScanParameter text;
  text.label.name = "medium";
  text.values = {0, 1, 2, missing, 1, 0};
  text.texts = {"M10", "M9", "LB"};
  scan->parameters.push_back(std::move(number));
  scan->parameters.push_back(std::move(text));
  double* a = scan->addOutput({"A", "nM", "", ""});
  const double values[] = {1,       5,       2,       0, missing, 7, 4, 4, missing,
                           missing, missing, missing, 9, -1,      3, 2, 2, 2};
  std::copy(std::begin(values), std::end(values), a);
  scan->check();
  return scan;
}

struct RunTableScene : testing::Test
{
  app::Document document;
  app::RunTable pane{document};

  void show(std::shared_ptr<Scan const> const& scan)
  {
    document.open(scan, {});
    pane.resize(900, 400);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  }
  [[nodiscard]] app::RunTableModel& model() const
  {
    return *static_cast<app::RunTableModel*>(pane.table()->model());
  }
  [[nodiscard]] bool settled() const
  {
    return waitFor([this] { return pane.isSettled(); });
  }
  [[nodiscard]] int column(QString const& title) const
  {
    for (int c = 0; c < model().columnCount(); ++c)
      if (model().headerData(c, Qt::Horizontal, Qt::DisplayRole).toString() == title) return c;
    ADD_FAILURE() << "no column " << title.toStdString();
    return 0;
  }
  [[nodiscard]] std::string cell(int row, QString const& title) const
  {
    return model().index(row, column(title)).data().toString().toStdString();
  }
  [[nodiscard]] std::vector<std::string> keys() const
  {
    std::vector<std::string> keys;
    for (std::size_t run : model().shownRuns()) keys.push_back(document.scan().runs[run].key);
    return keys;
  }
  void clickHeader(QString const& title)
  {
    QHeaderView* header = pane.table()->horizontalHeader();
    const int section = column(title);
    pane.table()->scrollTo(model().index(0, section));
    const QPoint place(header->sectionViewportPosition(section) + header->sectionSize(section) / 2, 5);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(settled());
  }
  void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
  {
    const QRect place = pane.table()->visualRect(model().index(row, 0));
    QTest::mouseClick(pane.table()->viewport(), Qt::LeftButton, modifiers, place.center());
  }
  void choose(QString const& text)
  {
    const int index = pane.runFilter()->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    pane.runFilter()->setCurrentIndex(index);
    Q_EMIT pane.runFilter()->activated(index);
  }
  [[nodiscard]] std::vector<int> selectedRows() const
  {
    std::vector<int> rows;
    for (QModelIndex const& index : pane.table()->selectionModel()->selectedRows())
      rows.push_back(index.row());
    return rows;
  }
  [[nodiscard]] QToolButton* button(QString const& text) const
  {
    for (QToolButton* each : pane.findChildren<QToolButton*>())
      if (each->text().trimmed() == text) return each;
    return nullptr;
  }
  static QStringList entriesOf(QMenu const& menu)
  {
    QStringList texts;
    for (QAction* action : menu.actions())
      if (!action->isSeparator())
        texts << (action->isEnabled() ? action->text() : "(" + action->text() + ")");
    return texts;
  }
  /// Looks at the menu of the table.
  void withMenu(std::function<void(QMenu&)> const& look)
  {
    test::withMenu([this] { Q_EMIT pane.table()->customContextMenuRequested({5, 5}); }, look);
  }
  /// What was told of the last thing written, if it shows.
  [[nodiscard]] std::string told() const
  {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->isVisible() && label->wordWrap()) return label->text().toStdString();
    return "";
  }
};

TEST_F(RunTableScene, ARowTellsOfARunItsParametersAndFeatures)
{
  show(unevenScan());
  EXPECT_EQ(cell(0, "Run"), "run_10");
  EXPECT_EQ(cell(3, "Status"), "failed");
  EXPECT_EQ(cell(0, "k, \"1\""), "3");
  EXPECT_EQ(cell(1, "k, \"1\""), "");
  EXPECT_EQ(cell(1, "medium"), "M9");
  EXPECT_EQ(cell(0, "last A"), "2");
  EXPECT_EQ(cell(2, "last A"), "4");
  EXPECT_EQ(cell(0, "max A"), "5");
  EXPECT_EQ(cell(4, "min A"), "-1");
  EXPECT_EQ(cell(1, "mean A"), "3.5");
  EXPECT_EQ(cell(0, "time of max A"), "5");
  EXPECT_EQ(cell(2, "time of max A"), "0");
  EXPECT_EQ(cell(3, "max A"), "");
}

TEST_F(RunTableScene, NumbersAreOrderedAsNumbersWithMissingOnesLastBothWaysAndTiesAsTheyStood)
{
  show(unevenScan());
  clickHeader("k, \"1\"");
  EXPECT_THAT(keys(), ElementsAre("run_3", "run_1", "run_10", "a,\"b\"", "run_2", "x"));
  clickHeader("k, \"1\"");
  EXPECT_THAT(keys(), ElementsAre("run_10", "a,\"b\"", "run_1", "run_3", "run_2", "x"));
}

TEST_F(RunTableScene, KeysAndTextsAreOrderedAsPeopleNumberThings)
{
  show(unevenScan());
  clickHeader("Run");
  EXPECT_THAT(keys(), ElementsAre("a,\"b\"", "run_1", "run_2", "run_3", "run_10", "x"));
  clickHeader("medium");
  EXPECT_THAT(keys(), ElementsAre("run_1", "run_2", "run_3", "run_10", "x", "a,\"b\""));
  clickHeader("Status");
  EXPECT_EQ(keys().back(), "a,\"b\"");
  pane.table()->sortByColumn(-1, Qt::AscendingOrder);
  ASSERT_TRUE(settled());
  EXPECT_EQ(keys().front(), "run_10");
}

TEST(NaturalOrder, CountsDigitsAsNumbers)
{
  for (auto const& [a, b] : std::vector<std::pair<std::string, std::string>>{
           {"2", "10"}, {"a2b", "a10"}, {"", "a"}, {"a", "a1"}, {"9", "a"}, {"x07", "x7"}, {"x7", "x08"}}) {
    EXPECT_TRUE(app::standsBefore(a, b)) << a << " " << b;
    EXPECT_FALSE(app::standsBefore(b, a)) << a << " " << b;
  }
  EXPECT_FALSE(app::standsBefore("x", "x"));
}

TEST_F(RunTableScene, TheTableShowsPassingRunsOthersPinnedOnesAndSets)
{
  show(unevenScan());
  document.change("Add", [](app::State& state) {
    Gate gate;
    gate.kind = GateKind::Max;
    gate.column = "A";
    gate.range.low = 5.0;
    state.gates.push_back({"g", gate, true});
    app::NamedSet set{"mine & <b>", RunSet(6), 0, true, ""};
    set.runs.set(5);
    state.sets.push_back(set);
  });
  ASSERT_TRUE(settled());
  choose("Passing runs");
  EXPECT_THAT(keys(), ElementsAre("run_10", "run_2", "run_3"));
  EXPECT_EQ(cell(0, "Passes"), "yes");
  choose("Other runs");
  EXPECT_THAT(keys(), ElementsAre("run_1", "a,\"b\"", "x"));
  EXPECT_EQ(cell(2, "Sets"), "mine & <b>");
  choose("In mine & <b>");
  EXPECT_THAT(keys(), ElementsAre("x"));
  document.undoStack().undo();
  EXPECT_THAT(keys(), testing::SizeIs(6)) << "the set is gone, and the filter with it";
  EXPECT_EQ(pane.runFilter()->currentText(), "All runs");
  document.pin({1, 4});
  choose("Pinned runs");
  EXPECT_THAT(keys(), ElementsAre("run_2", "run_3"));
  clickRow(0);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(1u, 4u)) << "rows do not vanish under the mouse";
}

TEST_F(RunTableScene, ATypedTextFindsRunsByTheirKeys)
{
  show(unevenScan());
  QTest::keyClicks(pane.keyFilter(), "RUN_1");
  EXPECT_THAT(keys(), ElementsAre("run_10", "run_1"));
  QTest::keyClick(pane.keyFilter(), Qt::Key_Backspace);
  EXPECT_THAT(keys(), testing::SizeIs(4));
}

TEST_F(RunTableScene, SelectedRowsArePinnedAndPinnedRunsSelected)
{
  show(unevenScan());
  clickRow(1);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(1u));
  clickRow(4, Qt::ControlModifier);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(1u, 4u));
  QTest::keyClick(pane.table(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(document.pinnedRuns().count(5u), 1u);
  document.togglePin(0);
  EXPECT_THAT(selectedRows(), testing::Contains(0));
  document.pin({2});
  EXPECT_THAT(selectedRows(), ElementsAre(2));
  clickHeader("Run");
  EXPECT_THAT(selectedRows(), ElementsAre(1)) << "the same run in its new place";
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(2u));
  document.pin({});
  EXPECT_TRUE(selectedRows().empty());
}

TEST_F(RunTableScene, ThousandsOfRowsCanBeSelectedAndAreNotPointedOut)
{
  show(lineScan(300, 2));
  document.pin({7});
  pane.table()->selectAll();
  EXPECT_TRUE(document.pinnedRuns().empty());
  EXPECT_EQ(selectedRows().size(), 300u);
  EXPECT_TRUE(pane.statusText().contains("300 selected, too many"));
}

TEST_F(RunTableScene, TheTableFollowsAGateThatIsBeingMoved)
{
  show(lineScan());
  choose("Passing runs");
  document.previewGate(0, gateOnA(0.5, 1.0));
  ASSERT_TRUE(settled());
  EXPECT_EQ(model().shownRuns().size(), document.passing().count());
  EXPECT_LT(model().shownRuns().size(), 40u);
  document.cancelPreview();
  ASSERT_TRUE(settled());
  EXPECT_EQ(model().shownRuns().size(), 40u);
}

TEST_F(RunTableScene, ColumnsFollowTheShownOutputsAndClusters)
{
  show(lineScan());
  const int before = model().columnCount();
  document.change("Show", [](app::State& state) {
    state.view.outputs = {1, 0};
    app::NamedSet set{"c", RunSet(40), 0, true, "cluster 2 of 3 of A by curves"};
    set.runs.set(4);
    state.sets.push_back(set);
  });
  EXPECT_EQ(model().columnCount(), before + 6);
  EXPECT_EQ(cell(4, "Cluster"), "2");
  EXPECT_EQ(cell(5, "Cluster"), "");
  EXPECT_EQ(cell(4, "Sets"), "c");
  document.undoStack().undo();
  EXPECT_EQ(model().columnCount(), before);
}

TEST_F(RunTableScene, AHundredThousandRunsAreSortedFilteredAndSelected)
{
  show(lineScan(100'000, 3));
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  EXPECT_EQ(model().rowCount(), 100'000);
  clickHeader("k2");
  std::vector<std::size_t> const& runs = model().shownRuns();
  for (std::size_t i = 1; i < runs.size(); ++i)
    ASSERT_LE(scattered(2, runs[i - 1]), scattered(2, runs[i])) << i;
  clickHeader("max B");
  for (std::size_t i = 1; i < runs.size(); ++i)
    ASSERT_LE(scattered(1, model().runAt(static_cast<int>(i) - 1)),
              scattered(1, model().runAt(static_cast<int>(i))));
  pane.table()->scrollToTop();
  clickRow(0);
  QTest::keyClick(pane.table(), Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(pane.table()->currentIndex().row(), 99'999);
  QTest::keyClicks(pane.keyFilter(), "99999");
  EXPECT_EQ(model().rowCount(), 1);
}

TEST_F(RunTableScene, AWrittenTableIsReadBackEqual)
{
  show(unevenScan());
  QTemporaryDir folder;
  const QString path = folder.filePath("runs.csv");
  clickHeader("Run");
  pane.writeCsv(app::RunTable::Rows::Shown, path);
  ASSERT_TRUE(settled());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QList<QByteArray> lines = file.readAll().split('\n');
  EXPECT_EQ(
      lines[0].toStdString(),
      "\"run\",\"status\",\"passes\",\"sets\",\"k, \"\"1\"\"\",\"medium\",\"last(A)\",\"max(A)\",\"min(A)\","
      "\"mean(A)\",\"timeofmax(A)\"");
  EXPECT_EQ(lines[1].toStdString(), "\"a,\"\"b\"\"\",\"failed\",\"true\",\"\",3,\"\",,,,,");
  EXPECT_EQ(lines[2].toStdString(), "\"run_1\",\"complete\",\"true\",\"\",1,\"LB\",4,4,4,4,0");
  EXPECT_EQ(lines.size(), 8) << "a line for each run, one of names, and the end";
}

TEST_F(RunTableScene, HiddenColumnsAreNeitherWrittenNorCopied)
{
  show(unevenScan());
  for (int c = 1; c < model().columnCount(); ++c) pane.table()->setColumnHidden(c, c != column("max A"));
  clickRow(0);
  clickRow(4, Qt::ControlModifier);
  QTest::keyClick(pane.table(), Qt::Key_C, Qt::ControlModifier);
  ASSERT_TRUE(settled());
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Run\tmax A\nrun_10\t5\nrun_3\t9\n");
}

TEST_F(RunTableScene, SelectedRunsAreWrittenAsAScanThatReadsBackEqual)
{
  show(lineScan());
  QTemporaryDir folder;
  const QString path = folder.filePath("part.csv");
  clickRow(3);
  clickRow(5, Qt::ControlModifier);
  pane.writeScan(app::RunTable::Rows::Selected, path);
  ASSERT_TRUE(settled());
  const Scan read = readScan(QFile::encodeName(path).toStdString(), {}).scan;
  ASSERT_EQ(read.runs.size(), 2u);
  EXPECT_EQ(read.runs[0].key, "4");
  EXPECT_EQ(read.runs[1].key, "6");
  ASSERT_EQ(read.parameters.size(), 6u);
  EXPECT_EQ(read.parameters[2].values[1], scattered(2, 5));
  EXPECT_EQ(read.valuesOf(0, 0)[3], document.scan().valuesOf(0, 3)[3]);
}

TEST_F(RunTableScene, WhatCannotBeWrittenIsToldAndLeavesNothing)
{
  show(lineScan());
  QString told;
  QTimer closing;
  QObject::connect(&closing, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    told = box->informativeText();
    box->close();
  });
  closing.start(10);
  pane.writeCsv(app::RunTable::Rows::Shown, "/nowhere/at/all/runs.csv");
  ASSERT_TRUE(waitFor([&] { return !told.isEmpty(); }));
  EXPECT_TRUE(told.contains("/nowhere/at/all/runs.csv"));
}

TEST_F(RunTableScene, AnotherScanLeavesNothingOfTheFormer)
{
  show(unevenScan());
  QTest::keyClicks(pane.keyFilter(), "run_1");
  clickHeader("Run");
  document.open(lineScan(12), {});
  ASSERT_TRUE(settled());
  EXPECT_EQ(model().rowCount(), 12);
  EXPECT_TRUE(pane.keyFilter()->text().isEmpty());
  EXPECT_EQ(keys().front(), "1");
  document.close();
  EXPECT_EQ(model().rowCount(), 0);
  EXPECT_FALSE(pane.isEnabled());
}

TEST_F(RunTableScene, WhatIsShownAndSelectedIsCountedBelow)
{
  show(lineScan());
  EXPECT_EQ(pane.statusText(), "40 of 40 runs");
  clickRow(3);
  EXPECT_EQ(pane.statusText(), "40 of 40 runs   |   1 selected");
  QTest::keyClicks(pane.keyFilter(), "4");
  EXPECT_THAT(pane.statusText().toStdString(), testing::StartsWith("5 of 40 runs"));
  document.close();
  EXPECT_EQ(pane.statusText(), "");
  EXPECT_FALSE(pane.isEnabled());
}

TEST_F(RunTableScene, AHundredSelectedRunsArePointedOutAndNoMore)
{
  show(lineScan(101, 1));
  QItemSelectionModel* rows = pane.table()->selectionModel();
  auto const select = [&](int count) {
    rows->select(QItemSelection(model().index(0, 0), model().index(count - 1, model().columnCount() - 1)),
                 QItemSelectionModel::ClearAndSelect);
  };
  select(100);
  EXPECT_EQ(document.pinnedRuns().size(), 100u);
  EXPECT_FALSE(pane.statusText().contains("too many"));
  select(101);
  EXPECT_TRUE(document.pinnedRuns().empty());
  EXPECT_TRUE(pane.statusText().contains("too many to point out in the charts (up to 100)"));
}

TEST_F(RunTableScene, APinnedRunIsScrolledTo)
{
  show(lineScan(2000, 1));
  EXPECT_EQ(pane.table()->rowAt(5), 0);
  document.pin({1500});
  EXPECT_TRUE(waitFor([this] {
    return pane.table()->viewport()->rect().contains(
        pane.table()->visualRect(model().index(1500, 0)).center());
  }));
  EXPECT_THAT(selectedRows(), ElementsAre(1500));
}

TEST_F(RunTableScene, TheButtonAndTheMenuOfferWhatThereIsToWrite)
{
  show(lineScan());
  QMenu* menu = button("Export")->menu();
  Q_EMIT menu->aboutToShow();
  EXPECT_EQ(entriesOf(*menu), (QStringList{"Rows shown as CSV...", "(Selected rows as CSV...)",
                                           "Rows shown as scan...", "(Selected rows as scan...)", "Copy"}));
  clickRow(2);
  Q_EMIT menu->aboutToShow();
  EXPECT_FALSE(entriesOf(*menu).contains("(Selected rows as CSV...)"));
  withMenu([](QMenu& menu) {
    EXPECT_EQ(entriesOf(menu), (QStringList{"Rows shown as CSV...", "Selected rows as CSV...",
                                            "Rows shown as scan...", "Selected rows as scan...", "Copy",
                                            "Select all", "Unpin all", "Order of the file"}));
    menu.actions()[7]->trigger();
  });
  EXPECT_TRUE(document.pinnedRuns().empty());
  QTest::keyClicks(pane.keyFilter(), "none");
  withMenu([](QMenu& menu) {
    const QStringList entries = entriesOf(menu);
    EXPECT_TRUE(entries.contains("(Rows shown as CSV...)"));
    EXPECT_TRUE(entries.contains("(Copy)"));
    EXPECT_TRUE(entries.contains("(Unpin all)"));
  });
}

TEST_F(RunTableScene, TheMenuPutsTheRunsInTheOrderOfTheFile)
{
  show(unevenScan());
  clickHeader("Run");
  ASSERT_NE(keys().front(), "run_10");
  withMenu([](QMenu& menu) { menu.actions().last()->trigger(); });
  ASSERT_TRUE(settled());
  EXPECT_EQ(keys().front(), "run_10");
}

TEST_F(RunTableScene, ExportsAskForAFileAndTellWhatWasWritten)
{
  show(lineScan());
  QTemporaryDir folder;
  auto const exported = [&](void (app::RunTable::*slot)(), char const* name) {
    NextFile asked(folder.filePath(name));
    (pane.*slot)();
    EXPECT_TRUE(asked.seen()) << name;
    EXPECT_TRUE(settled());
    EXPECT_TRUE(QFile::exists(folder.filePath(name))) << name;
    return told();
  };
  clickRow(2);
  EXPECT_EQ(exported(&app::RunTable::exportCsv, "a.csv"), "40 runs written to a.csv");
  EXPECT_EQ(exported(&app::RunTable::exportSelectedCsv, "b.csv"), "1 run written to b.csv");
  EXPECT_EQ(exported(&app::RunTable::exportScan, "c.csv"), "40 runs written as scan to c.csv");
  EXPECT_EQ(exported(&app::RunTable::exportSelectedScan, "d.csv"), "1 run written as scan to d.csv");
  document.change("Add", [](app::State& state) { state.gates.push_back({"g", gateOnA(0.5, 1.0), true}); });
  EXPECT_EQ(exported(&app::RunTable::exportPassingScan, "e.csv"),
            std::to_string(document.passing().count()) + " runs written as scan to e.csv");
  pane.copy();
  ASSERT_TRUE(settled());
  EXPECT_EQ(told(), "1 run copied");
  NextFile asked("");
  pane.exportCsv();
  EXPECT_TRUE(asked.seen());
  EXPECT_EQ(told(), "1 run copied") << "given up";
}

TEST_F(RunTableScene, WithoutRunsNothingIsAskedFor)
{
  show(lineScan());
  document.change("Add", [](app::State& state) { state.gates.push_back({"g", gateOnA(5.0, 6.0), true}); });
  pane.exportPassingScan();
  EXPECT_EQ(told(), "There are no runs to write: a scan has one at least.");
  pane.exportSelectedCsv();
  pane.exportSelectedScan();
  EXPECT_EQ(told(), "There are no runs to write: a scan has one at least.");
  document.close();
  EXPECT_EQ(told(), "");
  pane.exportPassingScan();
  pane.exportScan();
  pane.exportSelectedScan();
  pane.copy();
  EXPECT_EQ(told(), "");
}

TEST_F(RunTableScene, WritingIsTakenBackByItsButton)
{
  show(lineScan(30'000, 3));
  QTemporaryDir folder;
  QToolButton* cancel = button("Cancel");
  EXPECT_FALSE(cancel->isVisible());
  pane.writeCsv(app::RunTable::Rows::Shown, folder.filePath("large.csv"));
  EXPECT_TRUE(cancel->isVisible());
  EXPECT_EQ(told(), QString::fromUtf8("Writing \u2026").toStdString());
  cancel->click();
  EXPECT_EQ(told(), "Cancelled.");
  ASSERT_TRUE(settled());
  EXPECT_FALSE(cancel->isVisible());
}

TEST_F(RunTableScene, NumbersStandAtTheRightAndNamesAtTheLeft)
{
  show(unevenScan());
  document.change("Set", [](app::State& state) {
    state.sets.push_back({"c", RunSet(6, true), 0, true, "cluster 2 of 3 of A by curves"});
  });
  auto const isRight = [this](QString const& title) {
    const int c = column(title);
    const bool cell = (model().index(0, c).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
    const bool head =
        (model().headerData(c, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
    EXPECT_EQ(cell, head) << title.toStdString();
    return cell;
  };
  EXPECT_TRUE(isRight("k, \"1\""));
  EXPECT_TRUE(isRight("max A"));
  for (char const* name : {"Run", "Status", "Passes", "Cluster", "Sets", "medium"})
    EXPECT_FALSE(isRight(name)) << name;
}

TEST_F(RunTableScene, TitlesSayWhatColumnsMean)
{
  show(unevenScan());
  auto const hint = [this](QString const& title) {
    return model().headerData(column(title), Qt::Horizontal, Qt::ToolTipRole).toString().toStdString();
  };
  EXPECT_THAT(hint("max A"), testing::HasSubstr("The largest value of A [nM]"));
  EXPECT_THAT(hint("min A"), testing::HasSubstr("The smallest value of A [nM]"));
  EXPECT_THAT(hint("last A"), testing::HasSubstr("The last value of A [nM]"));
  EXPECT_THAT(hint("mean A"), testing::HasSubstr("The mean of the values of A [nM]"));
  EXPECT_THAT(hint("time of max A"), testing::HasSubstr("The time of the largest value of A"));
  EXPECT_THAT(hint("medium"), testing::HasSubstr("Parameter medium"));
  EXPECT_THAT(hint("Passes"), testing::HasSubstr("Whether the run passes the gates"));
  EXPECT_FALSE(model().headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

TEST_F(RunTableScene, ATooltipHasAllDigits)
{
  show(lineScan());
  QString tip = model().index(0, column("k1")).data(Qt::ToolTipRole).toString();
  EXPECT_GT(tip.remove(QRegularExpression("<[^>]*>")).size(), 12);
  EXPECT_LE(cell(0, "k1").size(), 9u);
}

TEST_F(RunTableScene, RunsAreOrderedByPassingSetsAndClusters)
{
  show(lineScan(6, 1));
  document.change("Add", [](app::State& state) {
    Gate gate = gateOnA(0.5, 1.0);
    state.gates.push_back({"g", gate, true});
    for (auto const& [name, run, origin] :
         {std::tuple{"b", 4, "cluster 1 of 2 of A by curves"}, {"a", 2, "cluster 0 of 2 of A by curves"}}) {
      RunSet runs(6);
      runs.set(static_cast<std::size_t>(run));
      state.sets.push_back({name, runs, 0, true, origin});
    }
  });
  ASSERT_TRUE(settled());
  clickHeader("Sets");
  EXPECT_THAT(model().shownRuns(), ElementsAre(2u, 4u, 0u, 1u, 3u, 5u)) << "runs of no set last";
  clickHeader("Sets");
  EXPECT_THAT(model().shownRuns(), ElementsAre(4u, 2u, 0u, 1u, 3u, 5u)) << "both ways";
  clickHeader("Cluster");
  EXPECT_THAT(model().shownRuns(), ElementsAre(2u, 4u, 0u, 1u, 3u, 5u));
  clickHeader("Passes");
  bool passes = true;
  for (std::size_t run : model().shownRuns()) {
    const bool now = document.passing().contains(run);
    EXPECT_TRUE(passes || !now) << "passing runs first";
    passes = now;
  }
  document.change("Invert", [](app::State& state) { state.gates[0].gate.negated = true; });
  ASSERT_TRUE(waitFor([this] { return pane.isSettled() && document.passing().contains(model().runAt(0)); }))
      << "the order follows the gates";
}

TEST_F(RunTableScene, OfSeveralSetsARunNamesAll)
{
  show(lineScan(4, 1));
  document.change("Add", [](app::State& state) {
    state.sets.push_back({"a", RunSet(4, true), 0, true, ""});
    state.sets.push_back({"b", RunSet(4, true), 0, true, ""});
  });
  EXPECT_EQ(cell(0, "Sets"), "a, b");
}

TEST_F(RunTableScene, ASetThatIsShownAloneFollowsItsRunsAndItsName)
{
  show(lineScan(4, 1));
  auto const withRun = [](std::size_t run) {
    RunSet runs(4);
    runs.set(run);
    return runs;
  };
  document.change("Add", [&](app::State& state) {
    state.sets.push_back({"a", withRun(1), 0, true, ""});
    state.sets.push_back({"b", withRun(2), 0, true, ""});
  });
  choose("In b");
  EXPECT_THAT(model().shownRuns(), ElementsAre(2u));
  EXPECT_EQ(pane.runFilter()->currentText(), "In b");
  document.change("Other", [&](app::State& state) { state.sets[1].runs = withRun(3); });
  EXPECT_THAT(model().shownRuns(), ElementsAre(3u));
  EXPECT_EQ(pane.runFilter()->currentText(), "In b") << "the choice stays";
}

TEST_F(RunTableScene, ATableWithoutAScanCannotBeUsed)
{
  EXPECT_FALSE(pane.isEnabled());
  show(lineScan());
  EXPECT_TRUE(pane.isEnabled());
}

TEST_F(RunTableScene, WhatIsToldIsPlainTextInsideOfThePane)
{
  show(lineScan());
  QTemporaryDir folder;
  pane.writeCsv(app::RunTable::Rows::Shown, folder.filePath("<b>x.csv"));
  ASSERT_TRUE(settled());
  EXPECT_EQ(told(), "40 runs written to <b>x.csv");
  int inside = 0;
  for (QLabel* label : pane.findChildren<QLabel*>()) {
    if (label->text().contains("<b>")) {
      EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
    inside += label->isVisible() && label->text() == pane.statusText() ? 1 : 0;
  }
  EXPECT_EQ(inside, 1);
}

TEST_F(RunTableScene, ItsModelKeepsTheRulesOfModels)
{
  show(unevenScan());
  const QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  QTest::keyClicks(pane.keyFilter(), "run");
  clickHeader("Run");
  document.change("Add", [](app::State& state) {
    state.gates.push_back({"g", gateOnA(2.0, 9.0), true});
    state.view.outputs = {0};
    state.sets.push_back({"c", RunSet(6, true), 0, true, "cluster 2 of 3 of A by curves"});
  });
  ASSERT_TRUE(settled());
  choose("Passing runs");
  document.open(lineScan(12), {});
  ASSERT_TRUE(settled());
  EXPECT_EQ(model().rowCount(), 12);
}

} // namespace
} // namespace runsieve::test
