#include "DocumentScene.h"

#include "app/cli/RankReport.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/tables/ParameterColumns.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/ParameterTableModel.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>

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

} // namespace
} // namespace runsieve::test
