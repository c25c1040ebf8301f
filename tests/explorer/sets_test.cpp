#include "Dialogs.h"
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

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
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
  [[nodiscard]] QVariant role(int row, int column, int role) const
  {
    return pane.list()->model()->index(row, column).data(role);
  }
  /// What is told below the list, if it shows.
  [[nodiscard]] QString message() const
  {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->accessibleName() == "Message") return label->isVisible() ? label->text() : QString();
    return {};
  }
  static QStringList textsOf(QMenu const& menu)
  {
    QStringList texts;
    for (QAction* action : menu.actions())
      if (!action->isSeparator())
        texts << (action->isEnabled() ? action->text() : "(" + action->text() + ")");
    return texts;
  }
  static QAction* actionOf(QMenu const& menu, QString const& text)
  {
    for (QAction* action : menu.actions())
      if (action->text() == text) return action;
    return nullptr;
  }
  /// Opens the menu of the list and looks at it.
  void withMenu(std::function<void(QMenu&)> const& look)
  {
    test::withMenu([this] { Q_EMIT pane.list()->customContextMenuRequested({5, 5}); }, look);
  }
  /// What the button offers for the selected sets.
  [[nodiscard]] QStringList combinations() const
  {
    QMenu* menu = button("Combine")->menu();
    Q_EMIT menu->aboutToShow();
    return textsOf(*menu);
  }
  void writeList(QString const& path, QByteArray const& text) const
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
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
  const QFontMetrics metrics = comparison.fontMetrics();
  for (int column = 1; column < table->columnCount(); ++column)
    EXPECT_GE(table->columnWidth(column),
              metrics.horizontalAdvance(table->horizontalHeaderItem(column)->text()) +
                  4 * metrics.averageCharWidth())
        << column;
  EXPECT_TRUE(comparison.summary().contains("b & <i>"));
  EXPECT_TRUE(comparison.summary().contains("In both, and counted with A: 1 run"));
  QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Parameter\td\tp adj\t"));
}

TEST(ClusterOrigins, TellTheNumberOfTheCluster)
{
  EXPECT_EQ(app::clusterOf(app::clusterOrigin(12, 20, "A of B", "phase")), 12);
  for (char const* other : {"", "cluster", "cluster x of 3", "passing 2 gates", "cluster 3"})
    EXPECT_FALSE(app::clusterOf(other).has_value()) << other;
}

TEST_F(SetsScene, WithoutSetsItIsToldHowToMakeSome)
{
  auto const hint = [this] {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->isVisible() && label->text().startsWith("No sets yet")) return true;
    return false;
  };
  EXPECT_TRUE(hint());
  EXPECT_FALSE(pane.list()->isVisible());
  addSet("a", {1});
  EXPECT_FALSE(hint());
  EXPECT_TRUE(pane.list()->isVisible());
  document.close();
  EXPECT_TRUE(hint());
  EXPECT_FALSE(button("New")->isEnabled());
}

TEST_F(SetsScene, OnlyWhatCanBeDoneWithTheSelectedSetsIsOffered)
{
  for (char const* name : {"a", "b", "c"}) addSet(name, {1, 2});
  auto const enabled = [this] {
    QStringList names;
    for (char const* name : {"New", "Combine", "Compare...", "As gate", "Delete"})
      if (button(name)->isEnabled()) names << name;
    return names;
  };
  EXPECT_EQ(enabled(), QStringList{"New"});
  click(0);
  EXPECT_EQ(enabled(), (QStringList{"New", "Combine", "As gate", "Delete"}));
  click(1, Qt::ControlModifier);
  EXPECT_EQ(enabled(), (QStringList{"New", "Combine", "Compare...", "Delete"}));
  click(2, Qt::ControlModifier);
  EXPECT_EQ(enabled(), (QStringList{"New", "Delete"}));
}

TEST_F(SetsScene, SetsAreCombinedByTheirNames)
{
  addSet("early & <b>", {1, 2});
  addSet("late", {2, 3});
  EXPECT_EQ(combinations(), QStringList{"(Select two sets to combine them)"});
  click(0);
  EXPECT_EQ(combinations(), (QStringList{"Not early && <b>", "(Select two sets to combine them)"}));
  click(1, Qt::ControlModifier);
  EXPECT_EQ(combinations(), (QStringList{"early && <b> and late", "early && <b> or late",
                                         "early && <b> minus late", "late minus early && <b>"}));
  actionOf(*button("Combine")->menu(), "late minus early && <b>")->trigger();
  EXPECT_EQ(names().back(), "late minus early & <b>");
  EXPECT_THAT(sets().back().runs.members(), ElementsAre(3u));
  EXPECT_EQ(sets().back().origin, "combined");
}

TEST_F(SetsScene, LongNamesAreCutInMenus)
{
  addSet(std::string(300, 'x'), {1});
  click(0);
  EXPECT_LT(combinations().first().size(), 80);
}

TEST_F(SetsScene, NothingIsCombinedButOneOrTwoSets)
{
  for (char const* name : {"a", "b", "c"}) addSet(name, {1, 2});
  pane.combine(app::SetOperation::Not);
  click(0);
  pane.combine(app::SetOperation::And);
  click(1, Qt::ControlModifier);
  click(2, Qt::ControlModifier);
  pane.combine(app::SetOperation::Or);
  pane.useAsGate();
  pane.compareSelected();
  EXPECT_EQ(sets().size(), 3u);
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(SetsScene, TheButtonOffersAllWaysToMakeASet)
{
  QMenu* menu = button("New")->menu();
  EXPECT_EQ(textsOf(*menu), (QStringList{"Keep passing runs...", "Type runs...", "From file...",
                                         "Group runs by shape...", "Runs that are not complete"}));
}

TEST_F(SetsScene, TheMenuOfASetShowsItColoursItAndPinsItsRuns)
{
  addSet("a", {3, 4});
  click(0);
  withMenu([this](QMenu& menu) {
    EXPECT_EQ(textsOf(menu), (QStringList{"Rename", "Colour", "Hide in the charts", "Pin its runs", "New",
                                          "Combine", "(Compare...)", "Use as gate", "Delete"}));
    QMenu* colors = actionOf(menu, "Colour")->menu();
    const auto count = std::tuple_size<decltype(app::Theme::sets)>::value;
    ASSERT_EQ(colors->actions().size(), static_cast<int>(count));
    for (int i = 0; i < colors->actions().size(); ++i)
      EXPECT_EQ(colors->actions()[i]->isChecked(), i == static_cast<int>(sets()[0].color)) << i;
    EXPECT_EQ(colors->actions()[2]->text(), "Colour 3");
    colors->actions()[2]->trigger();
    actionOf(menu, "Hide in the charts")->trigger();
    actionOf(menu, "Pin its runs")->trigger();
  });
  EXPECT_EQ(sets()[0].color, 2u);
  EXPECT_FALSE(sets()[0].shown);
  EXPECT_THAT(document.pinnedRuns(), ElementsAre(3u, 4u));
  withMenu([](QMenu& menu) {
    ASSERT_NE(actionOf(menu, "Show in the charts"), nullptr);
    actionOf(menu, "Show in the charts")->trigger();
  });
  EXPECT_TRUE(sets()[0].shown);
}

TEST_F(SetsScene, TheMenuClosesWhenAnotherScanOpens)
{
  addSet("a", {3, 4});
  click(0);
  withMenu([this](QMenu& menu) {
    document.open(lineScan(20), {});
    EXPECT_FALSE(menu.isVisible());
  });
}

TEST_F(SetsScene, TheMenuWithoutASetOffersNewOnesAlone)
{
  addSet("a", {3, 4});
  addSet("b", {5});
  withMenu([](QMenu& menu) { EXPECT_EQ(textsOf(menu), QStringList{"New"}); });
  click(0);
  click(1, Qt::ControlModifier);
  withMenu([](QMenu& menu) {
    EXPECT_EQ(textsOf(menu), (QStringList{"New", "Combine", "Compare...", "(Use as gate)", "Delete"}));
    actionOf(menu, "Delete")->trigger();
  });
  EXPECT_TRUE(sets().empty());
}

TEST_F(SetsScene, MoreRunsThanChartsCanPointOutAreNotPinned)
{
  document.open(lineScan(300, 1), {});
  RunSet many(300);
  for (std::size_t run = 0; run < 101; ++run) many.set(run);
  app::addSets(document, "Add", {{"many", many, ""}});
  click(0);
  auto const pin = [this] { withMenu([](QMenu& menu) { actionOf(menu, "Pin its runs")->trigger(); }); };
  pin();
  EXPECT_TRUE(document.pinnedRuns().empty());
  EXPECT_EQ(message(), "The set has 101 runs; up to 100 can be pointed out.");
  document.change("One less", [](app::State& state) { state.sets[0].runs.set(100, false); });
  click(0);
  pin();
  EXPECT_EQ(document.pinnedRuns().size(), 100u);
}

TEST_F(SetsScene, WhatWasToldGoesWithTheNextThingDoneAndWithAnotherScan)
{
  EXPECT_EQ(message(), "");
  pane.keepIncomplete();
  EXPECT_EQ(message(), "All runs are complete.");
  pane.keepPassing("all");
  EXPECT_EQ(message(), "");
  pane.keepIncomplete();
  document.open(lineScan(10), {});
  EXPECT_EQ(message(), "");
}

TEST_F(SetsScene, ItIsToldWhereASetIsFrom)
{
  pane.keepPassing("a");
  EXPECT_EQ(sets()[0].origin, "all runs");
  addGate(gateOnA(0.1, 1.0));
  addGate(gateOnA(0.2, 1.0));
  pane.keepPassing("b");
  EXPECT_EQ(sets()[1].origin, "passing 2 gates");
  document.change("Off", [](app::State& state) { state.gates[0].on = false; });
  pane.keepPassing("c");
  EXPECT_EQ(sets()[2].origin, "passing 1 gate");
  document.change("Unknown", [](app::State& state) { state.gates[1].gate.column = "nothing"; });
  pane.keepPassing("d");
  EXPECT_EQ(sets()[3].origin, "all runs");
  EXPECT_EQ(cell(1, app::SetListModel::Origin), "passing 2 gates");
}

TEST_F(SetsScene, ThreeUnknownRunsAreNamedAndOfManyTheFirstFive)
{
  QTemporaryDir folder;
  const QString path = folder.filePath("list.txt");
  writeList(path, "1\na\nb\nc\n");
  pane.readFile(path);
  EXPECT_EQ(message(), "1 run from list.txt. The scan has no runs \"a\", \"b\", \"c\".");
  writeList(path, "1\n2\na\nb\nc\nd\ne\nf\ng\n");
  pane.readFile(path);
  EXPECT_EQ(message(), "2 runs from list.txt. The scan has no runs \"a\", \"b\", \"c\", \"d\", \"e\", "
                       "and 2 more.");
  EXPECT_EQ(sets().back().origin, "file list.txt");
  writeList(path, "a\n");
  pane.readFile(path);
  EXPECT_EQ(message(), "list.txt lists no run of this scan. The scan has no runs \"a\".");
  writeList(path, "7\n8\n");
  pane.readFile(path);
  EXPECT_EQ(message(), "2 runs from list.txt.");
  EXPECT_EQ(sets().size(), 3u);
}

TEST_F(SetsScene, LongMessagesAreCut)
{
  QTemporaryDir folder;
  pane.readFile(folder.filePath(QString(600, 'x')));
  EXPECT_LE(message().size(), 401);
  EXPECT_TRUE(message().endsWith(QString::fromUtf8("\u2026")));
}

TEST_F(SetsScene, GroupingShowsItsProgressAndIsGivenUp)
{
  auto const* bar = pane.findChild<QProgressBar*>();
  EXPECT_FALSE(bar->isVisible());
  document.open(lineScan(3000, 1), {});
  pane.cluster({1, ClusterMode::Curves, 3});
  EXPECT_TRUE(bar->isVisible());
  for (QToolButton* each : pane.findChildren<QToolButton*>())
    if (each->text() == "Cancel") each->click();
  EXPECT_FALSE(bar->isVisible());
  EXPECT_EQ(message(), "Grouping was cancelled.");
  ASSERT_TRUE(waitFor([&] { return pane.isSettled(); }));
  EXPECT_TRUE(sets().empty());
  pane.cluster({1, ClusterMode::Curves, 3});
  EXPECT_EQ(message(), "");
  ASSERT_TRUE(waitFor([&] { return pane.isSettled(); }));
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(sets().empty());
}

TEST_F(SetsScene, ASetTellsItsNameOriginAndNumbers)
{
  addSet("a", {1, 2});
  QAbstractItemModel const* model = pane.list()->model();
  EXPECT_EQ(cell(0, app::SetListModel::Origin), "test");
  EXPECT_EQ(cell(0, app::SetListModel::Runs), "2");
  EXPECT_TRUE(role(0, app::SetListModel::Runs, Qt::ToolTipRole).toString().contains("a\ntest"));
  EXPECT_EQ(role(0, app::SetListModel::Name, Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_FALSE(role(0, app::SetListModel::Runs, Qt::CheckStateRole).isValid());
  EXPECT_FALSE(role(0, app::SetListModel::Runs, Qt::DecorationRole).isValid());
  EXPECT_EQ(role(0, app::SetListModel::Name, Qt::EditRole), "a");
  auto const isRight = [](QVariant const& alignment) { return (alignment.toInt() & Qt::AlignRight) != 0; };
  for (int column = 0; column < model->columnCount(); ++column) {
    const bool wanted = column == app::SetListModel::Runs || column == app::SetListModel::Passing;
    EXPECT_EQ(isRight(role(0, column, Qt::TextAlignmentRole)), wanted);
    EXPECT_EQ(isRight(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)), wanted);
    EXPECT_FALSE(model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    const bool isName = column == app::SetListModel::Name;
    EXPECT_EQ(model->flags(model->index(0, column)).testFlag(Qt::ItemIsEditable), isName);
    EXPECT_EQ(model->flags(model->index(0, column)).testFlag(Qt::ItemIsUserCheckable), isName);
  }
  EXPECT_EQ(model->headerData(3, Qt::Horizontal, Qt::DisplayRole), "Passing");
}

TEST_F(SetsScene, ASetHasASquareOfItsColour)
{
  addSet("a", {1});
  app::colorSet(document, 0, 3);
  auto const icon = role(0, app::SetListModel::Name, Qt::DecorationRole).value<QIcon>();
  ASSERT_FALSE(icon.isNull());
  const QImage image = icon.pixmap(16, 16).toImage();
  EXPECT_EQ(image.pixelColor(image.rect().center()),
            app::Theme::ofPalette(QApplication::palette(), QFont()).sets[3]);
}

TEST_F(SetsScene, OnlyTheNameIsTypedAndOnlyTheSwitchIsSwitched)
{
  addSet("a", {1});
  QAbstractItemModel* model = pane.list()->model();
  EXPECT_FALSE(model->setData(model->index(0, app::SetListModel::Runs), "x", Qt::EditRole));
  EXPECT_FALSE(model->setData(model->index(0, 0), "x", Qt::ToolTipRole));
  EXPECT_TRUE(model->setData(model->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_FALSE(sets()[0].shown);
  EXPECT_TRUE(model->setData(model->index(0, 0), Qt::Checked, Qt::CheckStateRole));
  EXPECT_TRUE(sets()[0].shown);
  EXPECT_TRUE(model->setData(model->index(0, 0), "  ", Qt::EditRole));
  EXPECT_TRUE(model->setData(model->index(0, 0), " b ", Qt::EditRole));
  EXPECT_THAT(names(), ElementsAre("b"));
  EXPECT_EQ(document.undoStack().count(), 4);
  EXPECT_EQ(document.undoStack().undoText(), "Rename set");
}

TEST_F(SetsScene, StepsAreNamedAfterWhatWasDone)
{
  addSet("a", {1});
  auto const last = [this] { return document.undoStack().undoText().toStdString(); };
  app::showSet(document, 0, false);
  EXPECT_EQ(last(), "Hide set");
  app::showSet(document, 0, true);
  EXPECT_EQ(last(), "Show set");
  app::deleteSets(document, {0});
  EXPECT_EQ(last(), "Delete set");
  app::deleteSets(document, {});
  EXPECT_EQ(document.undoStack().count(), 4);
}

TEST_F(SetsScene, TheColourThatTheFewestSetsHaveIsTaken)
{
  std::vector<app::NamedSet> sets;
  const auto count = std::tuple_size<decltype(app::Theme::sets)>::value;
  for (std::size_t color = 0; color < count; ++color) {
    EXPECT_EQ(app::freeSetColor(sets), color);
    sets.push_back({"s", RunSet(1), color, true, ""});
  }
  sets.push_back({"s", RunSet(1), 0, true, ""});
  EXPECT_EQ(app::freeSetColor(sets), 1u);
  sets.push_back({"s", RunSet(1), count + 1, true, ""});
  EXPECT_EQ(app::freeSetColor(sets), 2u) << "colours begin anew";
}

TEST_F(SetsScene, TheFormOfGroupsBeginsWithTheOutputThatIsShown)
{
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  app::ClusterForm form(document);
  EXPECT_EQ(form.request().output, 1u);
  EXPECT_EQ(form.request().mode, ClusterMode::Curves);
  EXPECT_EQ(form.request().clusters, 4);
  form.show();
  document.open(lineScan(3), {});
  EXPECT_FALSE(form.isVisible()) << "it was for the former scan";
  auto const mostOf = [this](std::size_t runs) {
    document.open(lineScan(runs, 1), {});
    app::ClusterForm asked(document);
    auto* spin = asked.findChild<QSpinBox*>();
    EXPECT_EQ(spin->minimum(), 2);
    return spin->maximum();
  };
  EXPECT_EQ(mostOf(7), 7) << "no more groups than runs";
  EXPECT_EQ(mostOf(1), 2);
  EXPECT_EQ(mostOf(1500), 1000);
}

TEST_F(SetsScene, TheWayOfGroupingIsChosen)
{
  app::ClusterForm form(document);
  for (QComboBox* box : form.findChildren<QComboBox*>())
    if (box->accessibleName() == "Shape") box->setCurrentIndex(1);
  EXPECT_EQ(form.request().mode, ClusterMode::Phase);
  EXPECT_STREQ(app::modeName(ClusterMode::Phase), "phase");
  EXPECT_STREQ(app::modeName(ClusterMode::Magnitude), "magnitude");
  EXPECT_STREQ(app::modeName(ClusterMode::Curves), "curves");
}

TEST_F(SetsScene, AComparisonTellsHowManyParametersDiffer)
{
  app::NamedSet a{"a", runsOf(40, {}), 0, true, ""};
  app::NamedSet b{"b", runsOf(40, {}), 1, true, ""};
  for (std::size_t run = 0; run < 40; ++run) (scattered(2, run) < 0.5 ? a : b).runs.set(run);
  app::SetComparison comparison(document, a, b);
  auto const told = [&](QString const& text) {
    for (QLabel* label : comparison.findChildren<QLabel*>())
      if (label->text() == text) return true;
    return false;
  };
  EXPECT_TRUE(told(QString::fromUtf8("Comparing \u2026")));
  ASSERT_TRUE(waitFor([&] { return comparison.isSettled(); }));
  EXPECT_TRUE(told("1 of 6 parameters differ"));
  EXPECT_FALSE(comparison.summary().contains("both"));
  QTableWidget* table = comparison.table();
  EXPECT_EQ(table->horizontalHeaderItem(5)->text(), "med. A");
  EXPECT_EQ(table->horizontalHeaderItem(6)->text(), "med. B");
  EXPECT_EQ(table->horizontalHeaderItem(5)->toolTip(), "Middle value of A");
  EXPECT_EQ(table->horizontalHeaderItem(11)->toolTip(), "Runs of A that have a value");
  EXPECT_TRUE((table->item(0, 1)->textAlignment() & Qt::AlignRight) != 0);
  EXPECT_TRUE((table->item(0, 0)->textAlignment() & Qt::AlignLeft) != 0);
  EXPECT_TRUE((table->horizontalHeaderItem(1)->textAlignment() & Qt::AlignRight) != 0);
  for (QPushButton* each : comparison.findChildren<QPushButton*>())
    if (each->text() == "Copy") each->click();
  EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 7) << "all rows and their titles";
}

TEST_F(SetsScene, AComparisonTellsOfParametersThatAreLeftOutAndGoesWithTheScan)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 6; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  for (auto const& values : {std::vector<double>{1, 2, 3, 4, 5, 6}, {7, 7, 7, 7, 7, 7}}) {
    ScanParameter parameter;
    parameter.label.name = "p" + std::to_string(scan->parameters.size());
    parameter.values = values;
    scan->parameters.push_back(std::move(parameter));
  }
  std::fill_n(scan->addOutput({"A", "", "", ""}), 6, 0.5);
  document.open(scan, {});
  app::SetComparison comparison(document, {"a", runsOf(6, {0, 1, 2}), 0, true, ""},
                                {"b", runsOf(6, {3, 4, 5}), 0, true, ""});
  comparison.show();
  ASSERT_TRUE(waitFor([&] { return comparison.isSettled(); }));
  bool told = false;
  for (QLabel* label : comparison.findChildren<QLabel*>())
    told |= label->text().contains("of 1 parameters differ; 1 left out");
  EXPECT_TRUE(told);
  document.close();
  EXPECT_FALSE(comparison.isVisible());
}

TEST_F(SetsScene, TypedRunsHaveANameIfOneIsTyped)
{
  app::TypeRunsForm form(document);
  form.show();
  auto const edits = form.findChildren<QLineEdit*>();
  QTest::keyClicks(edits[0], "3");
  bool counted = false;
  for (QLabel* label : form.findChildren<QLabel*>()) counted |= label->text() == "1 of 40 runs";
  EXPECT_TRUE(counted);
  QTest::keyClicks(edits[1], " third ");
  form.accept();
  EXPECT_THAT(names(), ElementsAre("third"));
  EXPECT_EQ(sets()[0].origin, "typed: 3");
  EXPECT_EQ(document.undoStack().undoText(), "Set of typed runs");
  app::TypeRunsForm other(document);
  other.show();
  document.close();
  EXPECT_FALSE(other.isVisible());
}

TEST_F(SetsScene, NothingIsDoneWithoutAScan)
{
  document.close();
  pane.keepPassing("a");
  pane.keepPassingRuns();
  pane.typeRuns();
  pane.chooseFile();
  pane.groupRuns();
  pane.keepIncomplete();
  pane.deleteSelected();
  EXPECT_EQ(message(), "");
}

TEST(TypedRuns, AreAListAndNothingElse)
{
  auto const scan = scanOfKeys({"1", "2", "3"});
  EXPECT_THAT(app::typedRuns("1,3", *scan).members(), ElementsAre(0u, 2u));
  for (char const* wrong : {"", "  ", "9"}) EXPECT_THROW((void)app::typedRuns(wrong, *scan), GateError);
}

TEST(GateOnRuns, ListsTwoThousandKeysAndNoMore)
{
  std::vector<std::string> keys;
  for (int run = 0; run < 2001; ++run) keys.push_back("r" + std::to_string(run));
  auto const scan = scanOfKeys(keys);
  RunSet runs(2001, true);
  EXPECT_FALSE(app::gateOnRuns(runs, *scan));
  runs.set(0, false);
  ASSERT_TRUE(app::gateOnRuns(runs, *scan));
  EXPECT_EQ(app::gateOnRuns(runs, *scan)->runs.size(), 2000u);
}

TEST_F(SetsScene, ItsModelKeepsTheRulesOfModels)
{
  const QAbstractItemModelTester tester(pane.list()->model(),
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  addSet("a", {1});
  addSet("b", {1, 2});
  app::showSet(document, 0, false);
  document.previewGate(0, gateOnA(0.5, 1.0));
  app::deleteSets(document, {0});
  document.open(lineScan(10), {});
  EXPECT_EQ(pane.list()->model()->rowCount(), 0);
}

} // namespace
} // namespace runsieve::test
