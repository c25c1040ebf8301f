#include "DocumentScene.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/Theme.h"
#include "app/explorer/sets/ClusterForm.h"
#include "app/explorer/sets/ClusterOrigin.h"
#include "app/explorer/sets/RunLists.h"
#include "app/explorer/sets/SetComparison.h"
#include "app/explorer/sets/SetListModel.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/sets/TypeRunsForm.h"
#include "app/explorer/tables/ParameterColumns.h"

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

RunSet runsOf(std::size_t all, std::initializer_list<std::size_t> members)
{
  RunSet runs(all);
  for (std::size_t run : members) runs.set(run);
  return runs;
}

std::shared_ptr<Scan const> scanOfKeys(std::vector<std::string> const& keys)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (std::string const& key : keys) scan->runs.push_back({key, RunStatus::Complete, 1});
  double* a = scan->addOutput({"A", "", "", ""});
  std::fill_n(a, keys.size(), 1.0);
  scan->check();
  return scan;
}

struct SetsScene : DocumentScene
{
  app::SetsPane pane{document};

  void SetUp() override
  {
    pane.resize(480, 320);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  }
  [[nodiscard]] std::vector<app::NamedSet> const& sets() const { return document.state().sets; }
  [[nodiscard]] std::vector<std::string> names() const
  {
    std::vector<std::string> names;
    for (app::NamedSet const& set : sets()) names.push_back(set.name);
    return names;
  }
  void addSet(std::string const& name, std::initializer_list<std::size_t> runs)
  {
    app::addSets(document, "Add", {{name, runsOf(40, runs), "test"}});
  }
  [[nodiscard]] QString cell(int row, int column) const
  {
    return pane.list()->model()->index(row, column).data().toString();
  }
  void click(int row, Qt::KeyboardModifiers modifiers = {})
  {
    const QRect place = pane.list()->visualRect(pane.list()->model()->index(row, app::SetListModel::Runs));
    QTest::mouseClick(pane.list()->viewport(), Qt::LeftButton, modifiers, place.center());
  }
  [[nodiscard]] QToolButton* button(QString const& text) const
  {
    for (QToolButton* button : pane.findChildren<QToolButton*>())
      if (button->accessibleName() == text) return button;
    return nullptr;
  }
};

TEST_F(SetsScene, PassingRunsAreKeptUnderANameAndAColour)
{
  addGate(gateOnA(0.5, 1.0));
  pane.keepPassing("late & <b>large</b>");
  ASSERT_EQ(sets().size(), 1u);
  EXPECT_EQ(sets()[0].runs, document.passing());
  EXPECT_EQ(sets()[0].origin, "passing 1 gate");
  EXPECT_EQ(cell(0, app::SetListModel::Name), "late & <b>large</b>");
  EXPECT_EQ(cell(0, app::SetListModel::Runs).toInt(), static_cast<int>(document.passing().count()));
  pane.keepPassing("late & <b>large</b>");
  EXPECT_EQ(names()[1], "late & <b>large</b> (2)");
  EXPECT_NE(sets()[0].color, sets()[1].color);
  document.undoStack().undo();
  document.undoStack().undo();
  EXPECT_TRUE(sets().empty());
}

TEST_F(SetsScene, TheNameIsAskedFor)
{
  QTimer::singleShot(50, [] {
    auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    auto* edit = dialog->findChild<QLineEdit*>();
    edit->selectAll();
    QTest::keyClicks(edit, "mine");
    QTest::keyClick(edit, Qt::Key_Return);
  });
  pane.keepPassingRuns();
  EXPECT_THAT(names(), ElementsAre("mine"));
}

TEST_F(SetsScene, NothingIsKeptIfNoRunPasses)
{
  addGate(gateOnA(5.0, 6.0));
  pane.keepPassing("none");
  EXPECT_TRUE(sets().empty());
  EXPECT_TRUE(pane.told().contains("No run passes"));
}

TEST_F(SetsScene, TwoSelectedSetsAreCombined)
{
  addSet("a", {1, 2, 3});
  addSet("b", {3, 4});
  click(0);
  click(1, Qt::ControlModifier);
  ASSERT_TRUE(button("Combine")->isEnabled());
  pane.combine(app::SetOperation::And);
  pane.list()->clearSelection();
  auto const combineFirstTwo = [&](app::SetOperation operation, bool swapped) {
    click(0);
    click(1, Qt::ControlModifier);
    pane.combine(operation, swapped);
  };
  combineFirstTwo(app::SetOperation::Or, false);
  combineFirstTwo(app::SetOperation::Minus, false);
  combineFirstTwo(app::SetOperation::Minus, true);
  click(0);
  pane.combine(app::SetOperation::Not);
  EXPECT_THAT(names(), ElementsAre("a", "b", "a and b", "a or b", "a minus b", "b minus a", "not a"));
  EXPECT_THAT(sets()[2].runs.members(), ElementsAre(3u));
  EXPECT_THAT(sets()[3].runs.members(), ElementsAre(1u, 2u, 3u, 4u));
  EXPECT_THAT(sets()[4].runs.members(), ElementsAre(1u, 2u));
  EXPECT_THAT(sets()[5].runs.members(), ElementsAre(4u));
  EXPECT_EQ(sets()[6].runs, sets()[0].runs.complement());
  document.undoStack().undo();
  EXPECT_EQ(sets().size(), 6u);
}

TEST_F(SetsScene, ASetWithoutRunsIsToldAndNotMade)
{
  addSet("a", {1});
  addSet("b", {2});
  click(0);
  click(1, Qt::ControlModifier);
  pane.combine(app::SetOperation::And);
  EXPECT_EQ(sets().size(), 2u);
  EXPECT_TRUE(pane.told().contains("a and b"));
}

TEST_F(SetsScene, TypedRunsAreASetAndMistakesAreTold)
{
  app::TypeRunsForm form(document);
  form.show();
  auto const edits = form.findChildren<QLineEdit*>();
  QPushButton* keep = form.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  EXPECT_FALSE(keep->isEnabled());
  QTest::keyClicks(edits[0], "3,5,10-15,99");
  EXPECT_FALSE(keep->isEnabled());
  bool told = false;
  for (QLabel* label : form.findChildren<QLabel*>()) told |= label->text().contains("no run \"99\"");
  EXPECT_TRUE(told);
  for (int key = 0; key < 3; ++key) QTest::keyClick(edits[0], Qt::Key_Backspace);
  ASSERT_TRUE(keep->isEnabled());
  QTest::mouseClick(keep, Qt::LeftButton);
  ASSERT_EQ(sets().size(), 1u);
  EXPECT_THAT(sets()[0].runs.members(), ElementsAre(2u, 4u, 9u, 10u, 11u, 12u, 13u, 14u));
  EXPECT_EQ(names()[0], "runs 3,5,10-15");
}

TEST_F(SetsScene, AFileOfRunsIsASetAndUnknownRunsAreTold)
{
  QTemporaryDir folder;
  const QString path = folder.filePath("my runs.txt");
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("3\r\n\r\n 5 \n77\n\"12\",1\n");
  }
  pane.readFile(path);
  ASSERT_EQ(sets().size(), 1u);
  EXPECT_EQ(names()[0], "my runs");
  EXPECT_THAT(sets()[0].runs.members(), ElementsAre(2u, 4u, 11u));
  EXPECT_TRUE(pane.told().contains("no runs \"77\"")) << pane.told().toStdString();
  pane.readFile(folder.filePath("not there"));
  EXPECT_TRUE(pane.told().contains("not there"));
  EXPECT_EQ(sets().size(), 1u);
}

TEST(ListedRuns, AreFoundInEveryWayTheyAreWritten)
{
  auto const scan = scanOfKeys({"1", "a,b", "\"q\"", "run", "\xc3\xa4"});
  auto const found = [&](std::string const& text) { return app::listedRuns(text, *scan).runs.members(); };
  EXPECT_THAT(found("\xef\xbb\xbf"
                    "1\n"),
              ElementsAre(0u));
  EXPECT_THAT(found("a,b\n1,rest"), ElementsAre(0u, 1u));
  EXPECT_THAT(found("\"a,b\",2"), ElementsAre(1u));
  EXPECT_THAT(found("\"\"\"q\"\"\""), ElementsAre(2u));
  EXPECT_THAT(found("run\n1"), ElementsAre(0u, 3u));
  EXPECT_THAT(found("\xe4"), ElementsAre(4u));
  EXPECT_THAT(app::listedRuns("run,cluster\n1,0\n2,0\n", *scanOfKeys({"1"})).unknown, ElementsAre("2"));
}

TEST_F(SetsScene, ClustersAreSetsOfTheirOwnColours)
{
  pane.cluster({1, ClusterMode::Curves, 3});
  EXPECT_FALSE(pane.isSettled());
  ASSERT_TRUE(waitFor([&] { return pane.isSettled(); }));
  const std::vector<int> labels = clusterRuns(document.scan(), 1, ClusterMode::Curves, 3);
  ASSERT_EQ(sets().size(), clusterSizes(labels).size());
  for (std::size_t run = 0; run < 40; ++run)
    EXPECT_TRUE(sets()[static_cast<std::size_t>(labels[run])].runs.contains(run)) << run;
  EXPECT_EQ(app::clusterOf(sets().back().origin), static_cast<int>(sets().size()) - 1);
  document.undoStack().undo();
  EXPECT_TRUE(sets().empty()) << "all clusters are one step";
}

TEST_F(SetsScene, ClustersOfAScanThatIsGoneAreForgotten)
{
  pane.cluster({1, ClusterMode::Curves, 3});
  document.open(lineScan(10), {});
  ASSERT_TRUE(waitFor([&] { return pane.isSettled(); }));
  EXPECT_TRUE(sets().empty());
}

TEST_F(SetsScene, RunsThatAreNotCompleteAreASet)
{
  pane.keepIncomplete();
  EXPECT_TRUE(sets().empty());
  EXPECT_EQ(pane.told(), "All runs are complete.");
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (auto status : {RunStatus::Complete, RunStatus::Short, RunStatus::Failed})
    scan->runs.push_back({std::to_string(scan->runs.size()), status, 1});
  scan->addOutput({"A", "", "", ""});
  document.open(scan, {});
  pane.keepIncomplete();
  ASSERT_EQ(sets().size(), 1u);
  EXPECT_THAT(sets()[0].runs.members(), ElementsAre(1u, 2u));
}

TEST_F(SetsScene, ASetIsAGateThatItsRunsPass)
{
  addSet("mine", {2, 4, 9, 10, 11});
  click(0);
  QTest::mouseClick(button("As gate"), Qt::LeftButton);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.state().gates[0].name, "mine");
  EXPECT_EQ(formatGate(document.state().gates[0].gate), "runs 3, 5, 10-12");
  EXPECT_EQ(document.passing(), sets()[0].runs);
  document.undoStack().undo();
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(SetsScene, ASetThatNoGateCanListIsTold)
{
  document.open(lineScan(10'000, 1), {});
  RunSet odd(10'000);
  for (std::size_t run = 1; run < 10'000; run += 2) odd.set(run);
  app::addSets(document, "Add", {{"odd", odd, ""}});
  click(0);
  pane.useAsGate();
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_TRUE(pane.told().contains("takes more"));
}

TEST(GateOnRuns, LetsExactlyTheRunsOfTheSetThroughWhateverTheirKeysAre)
{
  auto const scan = scanOfKeys({"7", "a-b", "8", "-3", "9", "x, \"y\"", "12", "10-15", "-2"});
  for (unsigned bits = 1; bits < 512; ++bits) {
    RunSet runs(9);
    for (std::size_t run = 0; run < 9; ++run) runs.set(run, (bits >> run & 1u) != 0);
    auto const gate = app::gateOnRuns(runs, *scan);
    ASSERT_TRUE(gate.has_value());
    const Gate read = parseGate(formatGate(*gate));
    EXPECT_EQ(runsThrough(resolveGate(read, *scan), *scan), runs) << formatGate(*gate);
  }
  EXPECT_FALSE(app::gateOnRuns(RunSet(9), *scan).has_value());
  auto const zeros = scanOfKeys({"7", "07", "8"});
  auto const gate = app::gateOnRuns(runsOf(3, {0, 2}), *zeros);
  EXPECT_THAT(runsThrough(resolveGate(*gate, *zeros), *zeros).members(), ElementsAre(0u, 2u));
}

TEST_F(SetsScene, SetsAreRenamedShownRecolouredAndDeletedInStepsThatAreTakenBack)
{
  addSet("a", {1});
  addSet("b", {2});
  click(0);
  QTest::keyClick(pane.list(), Qt::Key_F2);
  auto* editor = pane.list()->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->selectAll();
  QTest::keyClicks(editor, "b");
  QTest::keyClick(editor, Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return names()[0] == "b (2)"; })) << "names stay different";
  click(0);
  QTest::keyClick(pane.list(), Qt::Key_Space);
  EXPECT_FALSE(sets()[0].shown);
  app::colorSet(document, 0, 5);
  EXPECT_EQ(sets()[0].color, 5u);
  click(0);
  click(1, Qt::ControlModifier);
  QTest::keyClick(pane.list(), Qt::Key_Delete);
  EXPECT_TRUE(sets().empty());
  for (char const* step : {"Delete sets", "Colour set", "Hide set", "Rename set"}) {
    EXPECT_EQ(document.undoStack().undoText().toStdString(), step);
    document.undoStack().undo();
  }
  EXPECT_THAT(names(), ElementsAre("a", "b"));
  EXPECT_TRUE(sets()[0].shown);
}

TEST_F(SetsScene, TheNumberOfPassingMembersFollowsAGateThatIsMoved)
{
  RunSet all(40, true);
  app::addSets(document, "Add", {{"all", all, ""}});
  document.previewGate(0, gateOnA(0.5, 1.0));
  EXPECT_EQ(cell(0, app::SetListModel::Passing).toInt(), static_cast<int>(document.passing().count()));
  EXPECT_LT(document.passing().count(), 40u);
}

TEST_F(SetsScene, TwoSetsAreComparedByTheirRunsAlone)
{
  app::NamedSet a{"a", runsOf(40, {}), 0, true, ""};
  app::NamedSet b{"b & <i>", runsOf(40, {}), 1, true, ""};
  for (std::size_t run = 0; run < 30; ++run) (scattered(2, run) < 0.5 ? a : b).runs.set(run);
  b.runs.set(a.runs.members().front());
  app::SetComparison comparison(document, a, b);
  comparison.show();
  ASSERT_TRUE(waitFor([&] { return comparison.isSettled(); }));
  RunSet either = a.runs;
  either |= b.runs;
  const Comparison expected = compareParameters(document.scan(), a.runs, either);
  QTableWidget* table = comparison.table();
  ASSERT_EQ(table->rowCount(), 6);
  for (int row = 0; row < 6; ++row) {
    ParameterComparison const& parameter = expected.parameters[static_cast<std::size_t>(row)];
    EXPECT_EQ(table->item(row, 0)->text().toStdString(), parameter.name);
    EXPECT_EQ(table->item(row, 1)->text().toStdString(), app::formatted(parameter.d, "%+.3f", "-"));
    EXPECT_EQ(table->item(row, 2)->text().toStdString(), app::pText(parameter.pPermutation));
  }
  EXPECT_EQ(table->item(0, 0)->text(), "k2");
  EXPECT_TRUE(comparison.summary().contains("b & <i>"));
  EXPECT_TRUE(comparison.summary().contains("1 runs of both count with A"));
  QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Parameter\td\tp adj\t"));
}

TEST(ClusterOrigins, TellTheNumberOfTheCluster)
{
  EXPECT_EQ(app::clusterOf(app::clusterOrigin(12, 20, "A of B", "phase")), 12);
  for (char const* other : {"", "cluster", "cluster x of 3", "passing 2 gates", "cluster 3"})
    EXPECT_FALSE(app::clusterOf(other).has_value()) << other;
}

} // namespace
} // namespace runsieve::test
