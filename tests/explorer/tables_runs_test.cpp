#include "DocumentScene.h"

#include "app/explorer/tables/NaturalOrder.h"
#include "app/explorer/tables/RunCells.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/tables/RunTableModel.h"

#include <runsieve/core/read/ReadScan.h>

#include <gmock/gmock.h>

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

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

} // namespace
} // namespace runsieve::test
