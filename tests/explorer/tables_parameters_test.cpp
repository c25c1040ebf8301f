#include "Dialogs.h"
#include "DocumentScene.h"

#include "app/cli/RankReport.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/gates/GateForm.h"
#include "app/explorer/tables/ParameterColumns.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/ParameterTableModel.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

#include <limits>
#include <sstream>

namespace runsieve::test {
namespace {

using testing::ElementsAre;

struct ParameterTableScene : DocumentScene
{
  app::ParameterTable pane{document};

  void SetUp() override
  {
    pane.resize(1300, 400);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  }
  [[nodiscard]] app::ParameterTableModel& model() const
  {
    return *static_cast<app::ParameterTableModel*>(pane.table()->model());
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
  [[nodiscard]] std::vector<std::string> names() const
  {
    std::vector<std::string> names;
    for (int row = 0; row < model().rowCount(); ++row) names.push_back(cell(row, "Parameter"));
    return names;
  }
  void clickHeader(QString const& title)
  {
    QHeaderView* header = pane.table()->horizontalHeader();
    const int section = column(title);
    const QPoint place(header->sectionViewportPosition(section) + header->sectionSize(section) / 2, 5);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
  }
};

TEST_F(ParameterTableScene, ShowsTheNumbersOfTheComparisonInItsOrder)
{
  EXPECT_EQ(model().rowCount(), 0);
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  Comparison const& compared = *document.comparison();
  ASSERT_EQ(names().size(), 6u);
  for (int row = 0; row < 6; ++row) {
    ParameterComparison const& expected = compared.parameters[static_cast<std::size_t>(row)];
    EXPECT_EQ(cell(row, "Parameter"), expected.name);
    EXPECT_EQ(cell(row, "d"), app::formatted(expected.d, "%+.3f", "-"));
    EXPECT_EQ(cell(row, "p"), app::pText(expected.p));
    EXPECT_EQ(cell(row, "p adj"), app::pText(expected.pPermutation));
    EXPECT_EQ(cell(row, "sig."), expected.significant ? "*" : "");
    EXPECT_EQ(cell(row, "n passing"), std::to_string(expected.passing));
    EXPECT_EQ(cell(row, "p by"), pSourceName(expected.source));
  }
}

TEST_F(ParameterTableScene, AClickOnAHeaderOrdersByNumbersAndTheRankComesBack)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const std::vector<std::string> ranked = names();
  clickHeader("d");
  for (int row = 1; row < 6; ++row) EXPECT_LE(std::stod(cell(row - 1, "d")), std::stod(cell(row, "d")));
  clickHeader("d");
  for (int row = 1; row < 6; ++row) EXPECT_GE(std::stod(cell(row - 1, "d")), std::stod(cell(row, "d")));
  clickHeader("Parameter");
  EXPECT_THAT(names(), ElementsAre("k0", "k1", "k2", "k3", "k4", "k5"));
  pane.sortAsRanked();
  EXPECT_EQ(names(), ranked);
}

TEST_F(ParameterTableScene, UndefinedNumbersAreLastBothWays)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 4; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  const double missing = std::numeric_limits<double>::quiet_NaN();
  for (auto const& values : {std::vector<double>{1, 2, 3, 4}, {missing, missing, 1, 2}, {4, 3, 2, 1}}) {
    ScanParameter parameter;
    parameter.label.name = "p" + std::to_string(scan->parameters.size());
    parameter.values = values;
    scan->parameters.push_back(std::move(parameter));
  }
  double* a = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 4; ++run) a[run] = run;
  document.open(scan, {});
  Gate gate;
  gate.column = "A";
  gate.range = {0.0, 1.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  for (auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
    model().sort(column("d"), order);
    EXPECT_EQ(names().back(), "p1");
    EXPECT_EQ(cell(2, "d"), "-");
  }
}

TEST_F(ParameterTableScene, ATypedTextFiltersByName)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  QTest::keyClicks(pane.filterField(), "K3");
  EXPECT_THAT(names(), ElementsAre("k3"));
  QTest::keyClick(pane.filterField(), Qt::Key_Backspace);
  EXPECT_EQ(names().size(), 6u);
}

TEST_F(ParameterTableScene, DistancesFollowAGateThatIsMovedAndTheOrderStays)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const std::vector<std::string> before = names();
  document.previewGate(0, gateOnA(0.3, 0.6));
  ASSERT_FALSE(document.liveDistances().empty());
  EXPECT_EQ(names(), before);
  for (int row = 0; row < 6; ++row)
    EXPECT_EQ(cell(row, "d"),
              app::formatted(document.liveDistances()[model().parameterAt(row)].d, "%+.3f", "-"));
}

TEST_F(ParameterTableScene, WhileTheFirstGateIsTypedItIsNotSaidToCompare)
{
  app::GateForm form(document, std::nullopt);
  form.show();
  ASSERT_TRUE(waitFor([&] { return form.isSettled() && document.previewedGate() != nullptr; }));
  auto const says = [this](char const* text) {
    for (QLabel* each : pane.findChildren<QLabel*>())
      if (each->isVisible() && each->text().contains(text)) return true;
    return false;
  };
  EXPECT_FALSE(says("Comparing"));
  EXPECT_TRUE(says("when the gate is placed"));
  form.reject();
  EXPECT_TRUE(says("Without gates all runs pass"));
}

TEST_F(ParameterTableScene, SelectedRowsAreCopiedAsTextWithTheirTitles)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  for (int c = 2; c < model().columnCount(); ++c) pane.table()->setColumnHidden(c, true);
  const QPoint place = pane.table()->visualRect(model().index(1, 0)).center();
  QTest::mouseClick(pane.table()->viewport(), Qt::LeftButton, {}, place);
  QTest::keyClick(pane.table(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(),
            "Parameter\td\n" + cell(1, "Parameter") + "\t" + cell(1, "d") + "\n");
  pane.table()->clearSelection();
  pane.copy();
  EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 7);
}

TEST_F(ParameterTableScene, TheWrittenTableIsThatOfTheRankCommand)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  QTemporaryDir folder;
  pane.writeCsv(folder.filePath("rank.csv"));
  QFile file(folder.filePath("rank.csv"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  std::ostringstream expected;
  app::printRankCsv(expected, compareParameters(document.scan(), document.passing(), document.eligible()));
  EXPECT_EQ(file.readAll().toStdString(), expected.str());
}

TEST_F(ParameterTableScene, ParametersThatAreLeftOutAreToldBelow)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 4; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  for (auto const& values : {std::vector<double>{1, 2, 3, 4}, {7, 7, 7, 7}}) {
    ScanParameter parameter;
    parameter.label.name = "<i>p" + std::to_string(scan->parameters.size());
    parameter.values = values;
    scan->parameters.push_back(std::move(parameter));
  }
  double* a = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 4; ++run) a[run] = run;
  document.open(scan, {});
  Gate gate;
  gate.column = "A";
  gate.range = {0.0, 1.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  EXPECT_THAT(pane.remarks().toStdString(), testing::HasSubstr("Left out: <i>p1 (does not vary)"));
}

TEST_F(ParameterTableScene, HiddenColumnsStayHiddenAndTheFirstAlwaysShows)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  auto* columns = pane.table()->findChild<app::TableColumns*>();
  columns->setHidden(column("area"), true);
  columns->setHidden(0, true);
  document.open(lineScan(20, 4), {});
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(pane.table()->isColumnHidden(column("area")));
  EXPECT_FALSE(pane.table()->isColumnHidden(0));
  columns->showAll();
  EXPECT_FALSE(pane.table()->isColumnHidden(column("area")));
}

TEST_F(ParameterTableScene, ADoubleClickAsksForTheParameter)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  std::vector<std::size_t> wanted;
  QObject::connect(&pane, &app::ParameterTable::parameterWanted, [&](std::size_t p) { wanted.push_back(p); });
  const QPoint place = pane.table()->visualRect(model().index(0, 0)).center();
  QTest::mouseClick(pane.table()->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(pane.table()->viewport(), Qt::LeftButton, {}, place);
  EXPECT_THAT(wanted, ElementsAre(document.comparison()->parameters[0].parameter));
}

QStringList entriesOf(QMenu const& menu)
{
  QStringList texts;
  for (QAction* action : menu.actions())
    if (!action->isSeparator()) texts << (action->isEnabled() ? action->text() : "(" + action->text() + ")");
  return texts;
}

TEST_F(ParameterTableScene, ItIsToldWhyThereAreNoNumbers)
{
  auto const told = [this] {
    for (QLabel* label : pane.findChildren<QLabel*>())
      if (label->isVisible() && !label->text().isEmpty()) return label->text().toStdString();
    return std::string();
  };
  auto* exporting = pane.findChild<QToolButton*>();
  ASSERT_EQ(exporting->text(), "Export...");
  EXPECT_THAT(told(), testing::StartsWith("Without gates all runs pass"));
  EXPECT_FALSE(pane.table()->isVisible());
  EXPECT_FALSE(pane.filterField()->isEnabled());
  EXPECT_FALSE(exporting->isEnabled());
  addGate(gateOnA(0.5, 1.0));
  EXPECT_EQ(told(), "Comparing ...");
  ASSERT_TRUE(settle());
  EXPECT_TRUE(pane.table()->isVisible());
  EXPECT_TRUE(pane.filterField()->isEnabled());
  EXPECT_TRUE(exporting->isEnabled());
  document.previewGate(0, gateOnA(0.3, 1.0));
  EXPECT_FALSE(exporting->isEnabled()) << "these are not the numbers of the runs that pass";
  document.close();
  EXPECT_EQ(told(), "No scan is open.");
}

TEST_F(ParameterTableScene, SignificantParametersStandOutByNameAndDistance)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  auto const isBold = [this](int row, int column) {
    return model().index(row, column).data(Qt::FontRole).value<QFont>().bold();
  };
  EXPECT_TRUE(isBold(0, 0));
  EXPECT_TRUE(isBold(0, column("d")));
  EXPECT_FALSE(isBold(0, column("p adj")));
  EXPECT_FALSE(isBold(5, 0)) << "it does not differ";
}

TEST_F(ParameterTableScene, AllNumbersOfFormerGatesArePaleUntilTheNewOnesAreThere)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  document.change("Move gate", [](app::State& state) { state.gates[0].gate.range.low = 0.3; });
  ASSERT_FALSE(document.isCompared());
  for (char const* title : {"d", "p adj", "p"})
    EXPECT_TRUE(model().index(0, column(title)).data(Qt::ForegroundRole).isValid()) << title;
  ASSERT_TRUE(settle());
  EXPECT_FALSE(model().index(0, column("d")).data(Qt::ForegroundRole).isValid());
}

TEST_F(ParameterTableScene, WhileAGateIsMovedOnlyItsDistancesAreNotPale)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  auto const isPale = [this](QString const& title) {
    return model().index(0, column(title)).data(Qt::ForegroundRole).isValid();
  };
  EXPECT_FALSE(isPale("p"));
  document.previewGate(0, gateOnA(0.3, 1.0));
  EXPECT_TRUE(isPale("p"));
  EXPECT_TRUE(isPale("p adj"));
  EXPECT_FALSE(isPale("d"));
  EXPECT_FALSE(isPale("Parameter"));
}

TEST_F(ParameterTableScene, NumbersStandAtTheRightUnderTitlesThatSayWhatTheyMean)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  auto const isRight = [](QVariant const& alignment) { return (alignment.toInt() & Qt::AlignRight) != 0; };
  for (int c = 0; c < model().columnCount(); ++c) {
    EXPECT_EQ(isRight(model().index(0, c).data(Qt::TextAlignmentRole)), c > 0);
    EXPECT_EQ(isRight(model().headerData(c, Qt::Horizontal, Qt::TextAlignmentRole)), c > 0);
    EXPECT_GT(model().headerData(c, Qt::Horizontal, Qt::ToolTipRole).toString().size(), 5);
  }
  EXPECT_TRUE(model().index(0, 0).data(Qt::ToolTipRole).toString().contains("k0"));
  EXPECT_FALSE(model().headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
  EXPECT_FALSE(model().headerData(model().columnCount(), Qt::Horizontal, Qt::DisplayRole).isValid());
}

TEST_F(ParameterTableScene, EachColumnIsOrderedByWhatItShows)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  for (app::ParameterColumn const& each : app::parameterColumns()) {
    if (!each.number) continue;
    model().sort(column(each.title), Qt::AscendingOrder);
    for (int row = 1; row < model().rowCount(); ++row) {
      auto const valueOf = [&](int at) {
        std::vector<ParameterComparison> const& all = document.comparison()->parameters;
        auto const found = std::find_if(all.begin(), all.end(), [&](ParameterComparison const& one) {
          return one.parameter == model().parameterAt(at);
        });
        return each.number(*found, document.comparison()->method.adjustment);
      };
      EXPECT_FALSE(valueOf(row) < valueOf(row - 1)) << each.title;
    }
  }
}

TEST_F(ParameterTableScene, EachColumnShowsItsNumber)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  ParameterComparison const& first = document.comparison()->parameters[0];
  EXPECT_EQ(cell(0, "med. passing"), app::formatted(first.medianPassing, "%.4g", "-"));
  EXPECT_EQ(cell(0, "med. others"), app::formatted(first.medianOthers, "%.4g", "-"));
  EXPECT_EQ(cell(0, "shift"), app::formatted(first.medianShift, "%+.2f", "-"));
  EXPECT_EQ(cell(0, "kept"), app::formatted(100.0 * first.rangeShare, "%.0f%%", "-"));
  EXPECT_EQ(cell(0, "area"), app::formatted(first.area, "%.4g", "-"));
  EXPECT_EQ(cell(0, "at"), app::formatted(first.value, "%.4g", "-"));
  EXPECT_EQ(cell(0, "n others"), std::to_string(first.others));
  EXPECT_EQ(cell(0, "p Holm"), app::pText(first.pHolm));
  EXPECT_EQ(cell(0, "p BH"), app::pText(first.pBenjaminiHochberg));
  EXPECT_EQ(cell(0, "p perm"), app::pText(first.pPermutation));
  document.change("Method", [](app::State& state) { state.method.adjustment = Adjustment::Holm; });
  ASSERT_TRUE(settle());
  EXPECT_EQ(cell(0, "p adj"), cell(0, "p Holm"));
}

TEST_F(ParameterTableScene, TheMenuOffersWhatCanBeDoneWithTheTable)
{
  auto const open = [this] { Q_EMIT pane.table()->customContextMenuRequested({5, 5}); };
  withMenu(open, [](QMenu& menu) {
    EXPECT_EQ(entriesOf(menu), (QStringList{"(Copy)", "Select all", "Order by significance", "(Export...)"}));
  });
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const std::vector<std::string> ranked = names();
  clickHeader("d");
  withMenu(open, [](QMenu& menu) {
    EXPECT_EQ(entriesOf(menu), (QStringList{"Copy", "Select all", "Order by significance", "Export..."}));
    menu.actions()[2]->trigger();
  });
  EXPECT_EQ(names(), ranked);
  EXPECT_EQ(pane.table()->horizontalHeader()->sortIndicatorSection(), -1);
}

TEST_F(ParameterTableScene, AnExportAsksForAFile)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  QTemporaryDir folder;
  {
    NextFile asked(folder.filePath("table.csv"));
    pane.exportCsv();
    EXPECT_TRUE(asked.seen());
    EXPECT_TRUE(asked.proposed.endsWith("comparison.csv"));
  }
  EXPECT_TRUE(QFile::exists(folder.filePath("table.csv")));
  {
    NextFile asked("");
    pane.exportCsv();
    EXPECT_TRUE(asked.seen());
  }
  EXPECT_THROW(pane.writeCsv("/nowhere/at/all/table.csv"), std::exception);
}

TEST_F(ParameterTableScene, ReturnAsksForTheParameterAndDeleteDoesNothing)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  std::vector<std::size_t> wanted;
  QObject::connect(&pane, &app::ParameterTable::parameterWanted, [&](std::size_t p) { wanted.push_back(p); });
  pane.table()->setFocus();
  pane.table()->setCurrentIndex(model().index(2, 0));
  QTest::keyClick(pane.table(), Qt::Key_Return);
  EXPECT_THAT(wanted, ElementsAre(model().parameterAt(2)));
  document.selectGate(0);
  QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
  key.ignore();
  QApplication::sendEvent(pane.table(), &key);
  EXPECT_TRUE(key.isAccepted()) << "else it would delete the selected gate";
}

TEST_F(ParameterTableScene, TheMenuOfTheTitlesHidesAndShowsColumns)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  QHeaderView* header = pane.table()->horizontalHeader();
  auto const open = [&](QString const& title) {
    return [&, title] {
      const int section = column(title);
      Q_EMIT header->customContextMenuRequested({header->sectionViewportPosition(section) + 3, 3});
    };
  };
  withMenu(open("p adj"), [&](QMenu& menu) {
    const QStringList entries = entriesOf(menu);
    EXPECT_EQ(entries[0], "Hide p adj");
    EXPECT_EQ(entries[1], "(Show all columns)");
    EXPECT_EQ(entries.size(), 2 + model().columnCount() - 1) << "the first column always shows";
    menu.actions()[0]->trigger();
  });
  EXPECT_TRUE(pane.table()->isColumnHidden(column("p adj")));
  withMenu(open("Parameter"), [&](QMenu& menu) {
    EXPECT_EQ(entriesOf(menu)[0], "Show all columns");
    QAction* hidden = nullptr;
    for (QAction* action : menu.actions()) {
      if (action->text() == "p adj") hidden = action;
      if (action->text() == "d") {
        EXPECT_TRUE(action->isChecked());
        action->trigger();
      }
    }
    ASSERT_NE(hidden, nullptr);
    EXPECT_FALSE(hidden->isChecked());
    hidden->trigger();
  });
  EXPECT_FALSE(pane.table()->isColumnHidden(column("p adj")));
  EXPECT_TRUE(pane.table()->isColumnHidden(column("d")));
  withMenu(open("Parameter"), [](QMenu& menu) { menu.actions()[0]->trigger(); });
  EXPECT_FALSE(pane.table()->isColumnHidden(column("d")));
}

TEST_F(ParameterTableScene, ColumnsAreAsWideAsTheirTitlesAndTextsNeed)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const QFontMetrics metrics = pane.table()->fontMetrics();
  for (int c = 0; c < model().columnCount(); ++c) {
    const QString title = model().headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
    EXPECT_GT(pane.table()->columnWidth(c), metrics.horizontalAdvance(title)) << title.toStdString();
    EXPECT_LT(pane.table()->columnWidth(c), 30 * metrics.averageCharWidth()) << title.toStdString();
    for (int row = 0; row < model().rowCount(); ++row)
      EXPECT_GT(pane.table()->columnWidth(c),
                metrics.horizontalAdvance(model().index(row, c).data().toString()))
          << title.toStdString();
  }
}

TEST_F(ParameterTableScene, LongNamesDoNotFillTheTable)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  for (int run = 0; run < 20; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 1});
  ScanParameter parameter;
  parameter.label.name = std::string(300, 'k');
  for (int run = 0; run < 20; ++run) parameter.values.push_back(run);
  scan->parameters.push_back(std::move(parameter));
  double* a = scan->addOutput({"A", "", "", ""});
  for (int run = 0; run < 20; ++run) a[run] = run;
  document.open(scan, {});
  Gate gate;
  gate.column = "A";
  gate.range = {0.0, 9.0};
  addGate(gate);
  ASSERT_TRUE(settle());
  const int letter = pane.table()->fontMetrics().averageCharWidth();
  EXPECT_LE(pane.table()->columnWidth(0), 36 * letter);
  EXPECT_GE(pane.table()->columnWidth(0), 20 * letter);
}

TEST_F(ParameterTableScene, ItsModelKeepsTheRulesOfModels)
{
  const QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  clickHeader("d");
  document.previewGate(0, gateOnA(0.3, 1.0));
  document.cancelPreview();
  pane.filterField()->setText("k1");
  document.undoStack().undo();
  ASSERT_TRUE(settle());
  EXPECT_EQ(model().rowCount(), 0);
}

} // namespace
} // namespace runsieve::test
