#include "ParametersScene.h"
#include "WindowScene.h"

#include "app/explorer/parameters/StabilityPage.h"

#include <gmock/gmock.h>

#include <QDockWidget>
#include <QHelpEvent>
#include <QPushButton>
#include <QTableView>
#include <QToolTip>

namespace runsieve::test {
namespace {

using app::ParametersPane;
using app::StabilityModel;
using Stage = app::PassingWork::Stage;
using testing::HasSubstr;
using testing::StartsWith;

struct EnoughRunsPage : ParametersScene
{
  [[nodiscard]] app::StabilityPage& page() { return *pane->stability(); }
  [[nodiscard]] bool isDone()
  {
    return waitFor([&] { return page().work().stage() == Stage::Done; }, 60'000);
  }
  [[nodiscard]] QString cell(int row, int column)
  {
    return page().table()->model()->index(row, column).data().toString();
  }
  [[nodiscard]] std::string verdict() { return page().bar()->text().toStdString(); }
  /// Runs whose k0 is large; the other parameters have no part in it.
  void lookAtLines(std::size_t runs)
  {
    openScan(lineScan(runs));
    addGate(gateOnA(0.6, 1.0));
    pane->showPage(ParametersPane::Page::Stability);
    ASSERT_TRUE(isDone());
  }
};

TEST_F(EnoughRunsPage, SaysWhatToDoWithoutAGate)
{
  pane->showPage(ParametersPane::Page::Stability);
  EXPECT_THAT(verdict(), StartsWith("Draw a gate first"));
  EXPECT_FALSE(page().shownChart()->grab().toImage().isNull());
}

TEST_F(EnoughRunsPage, IsComputedOnlyWhenItIsSeen)
{
  addGate(gateOnA(0.6, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(page().work().stage(), Stage::Waiting);
  pane->showPage(ParametersPane::Page::Stability);
  EXPECT_TRUE(isDone());
  pane->showPage(ParametersPane::Page::Charts);
  document.change("Move gate", [](app::State& state) { state.gates[0].gate.range.low = 0.5; });
  ASSERT_TRUE(settle());
  EXPECT_EQ(page().work().stage(), Stage::Waiting);
}

TEST_F(EnoughRunsPage, TellsTheVerdictAndTheNumbersOfTheComparison)
{
  lookAtLines(400);
  const ComparisonStability expected =
      stabilityOfComparison(document.scan(), document.passing(), document.eligible(), *document.comparison());
  EXPECT_EQ(verdict(), app::verdictSentence(expected).toStdString());
  EXPECT_THAT(verdict(), StartsWith("Enough for what was found"));
  EXPECT_THAT(page().words().toStdString(), StartsWith("Settled: k0 with 10 %"));
  ASSERT_EQ(page().table()->model()->rowCount(), 6);
  EXPECT_EQ(cell(0, StabilityModel::Name), "k0");
  EXPECT_EQ(cell(0, StabilityModel::Distance), "+1.000");
  EXPECT_EQ(cell(0, StabilityModel::Interval),
            QString::asprintf("%.3f..%.3f", expected.parameters[0].low, expected.parameters[0].high));
  EXPECT_EQ(cell(0, StabilityModel::Top), "100 %");
  EXPECT_EQ(cell(0, StabilityModel::SettledAt), "10 %");
  EXPECT_EQ(cell(5, StabilityModel::SettledAt), "n.s.");
}

TEST_F(EnoughRunsPage, SaysThatMoreRunsWouldHelpWhereThereAreFew)
{
  openScan(lineScan(24, 3));
  addGate(gateOnA(0.6, 1.0));
  pane->showPage(ParametersPane::Page::Stability);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(cell(0, StabilityModel::SettledAt), "50 %") << verdict();
  openScan(lineScan(12, 3));
  addGate(gateOnA(0.7, 1.0));
  ASSERT_TRUE(isDone());
  EXPECT_THAT(verdict(), testing::Not(StartsWith("Enough")));
}

TEST_F(EnoughRunsPage, PaintsTheCurvesAndTellsOfThePointUnderThePointer)
{
  lookAtLines(400);
  app::StabilityCurves& chart = *page().shownChart();
  const QImage shot = chart.grab().toImage();
  const app::Theme theme = app::Theme::ofPalette(chart.palette(), chart.font());
  EXPECT_GT(pixelsOf(shot, theme.sets[0]), 100);
  const QPoint first = chart.picture().placeOf({0, 1}).toPoint();
  EXPECT_THAT(chart.tipAt(first).toStdString(),
              StartsWith("k0, 25 % of the runs: 40 passing, 60 others\n|d| 1.000"));
  EXPECT_THAT(chart.tipAt(first).toStdString(), HasSubstr("\nbeyond the noise floor of so many runs"));
  const QPoint all = chart.picture().placeOf({0, 3}).toPoint();
  EXPECT_THAT(chart.tipAt(all).toStdString(),
              StartsWith(QString("k0, all runs: %1 passing, %2 others\n|d| 1.000\nbeyond")
                             .arg(document.passing().count())
                             .arg(400 - document.passing().count())
                             .toStdString()));
  EXPECT_THAT(chart.tipAt({1.0, 1.0}).toStdString(), StartsWith("How large d would have been"));
  QHelpEvent help(QEvent::ToolTip, first, chart.mapToGlobal(first));
  QApplication::sendEvent(&chart, &help);
  EXPECT_THAT(QToolTip::text().toStdString(), HasSubstr("25 % of the runs"));
}

TEST_F(EnoughRunsPage, IsStoppedAndStartedAgain)
{
  openScan(lineScan(20'000, 20));
  addGate(gateOnA(0.6, 1.0));
  pane->showPage(ParametersPane::Page::Stability);
  ASSERT_TRUE(waitFor([&] { return page().work().stage() == Stage::Working; }));
  EXPECT_THAT(verdict(), StartsWith("Comparing parts of the runs"));
  QTest::mouseClick(page().bar()->button(), Qt::LeftButton);
  EXPECT_EQ(page().work().stage(), Stage::Stopped);
  EXPECT_EQ(page().table()->model()->rowCount(), 0);
  openScan(lineScan(100));
  addGate(gateOnA(0.6, 1.0));
  EXPECT_TRUE(isDone());
}

TEST_F(EnoughRunsPage, FollowsChangedGatesAndForgetsWhenTheyAreGone)
{
  lookAtLines(200);
  const QString before = cell(0, StabilityModel::Interval) + cell(1, StabilityModel::Interval);
  document.change("Move gate", [](app::State& state) { state.gates[0].gate.range.low = 0.3; });
  ASSERT_TRUE(waitFor([&] {
    return page().work().stage() == Stage::Done &&
           cell(0, StabilityModel::Interval) + cell(1, StabilityModel::Interval) != before;
  }));
  document.change("Delete gate", [](app::State& state) { state.gates.clear(); });
  EXPECT_THAT(verdict(), StartsWith("Draw a gate first"));
  EXPECT_EQ(page().table()->model()->rowCount(), 0);
  EXPECT_EQ(page().words(), "");
}

TEST_F(EnoughRunsPage, ShowsNamesAsTheyAreWrittenWhateverTheyLookLike)
{
  auto scan = lineScan(60, 2);
  const_cast<Scan&>(*scan).parameters[0].label.name = "<b>&k</b>";
  openScan(scan);
  addGate(gateOnA(0.6, 1.0));
  pane->showPage(ParametersPane::Page::Stability);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(cell(0, StabilityModel::Name), "<b>&k</b>");
  EXPECT_THAT(page().words().toStdString(), HasSubstr("<b>&k</b>"));
  EXPECT_THAT(page().table()->model()->index(0, 0).data(Qt::ToolTipRole).toString().toStdString(),
              HasSubstr("&lt;b&gt;"));
}

TEST_F(WindowScene, APageOfTheParametersIsChosenInTheMenuAndComesBackWithTheSession)
{
  ASSERT_TRUE(openLines());
  EXPECT_TRUE(window->actions().at("page.charts")->isChecked());
  auto* dock = qobject_cast<QDockWidget*>(window->parameters().parentWidget());
  ASSERT_NE(dock, nullptr);
  dock->hide();
  trigger("page.stability");
  EXPECT_TRUE(dock->isVisible());
  EXPECT_TRUE(window->parameters().stability()->isVisible());
  EXPECT_TRUE(window->actions().at("page.stability")->isChecked());
  ASSERT_TRUE(window->files().saveTo(file("page.sieve")));
  trigger("page.pairs");
  EXPECT_EQ(window->parameters().page(), app::ParametersPage::Pairs);
  window->open(file("page.sieve"));
  EXPECT_TRUE(waitFor([&] { return window->parameters().page() == app::ParametersPage::Stability; }));
  EXPECT_TRUE(settle());
}

TEST_F(WindowScene, TheMenuFollowsThePageThatIsClicked)
{
  EXPECT_FALSE(window->actions().at("page.box")->isEnabled()) << "nothing is open";
  ASSERT_TRUE(openLines());
  QTabBar* bar = window->parameters().tabs()->tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(2).center());
  EXPECT_TRUE(window->actions().at("page.box")->isChecked());
  EXPECT_FALSE(document().undoStack().canUndo()) << "looking changes nothing";
}

} // namespace
} // namespace runsieve::test
