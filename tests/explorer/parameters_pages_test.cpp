#include "PaintRecorder.h"
#include "ParametersScene.h"

#include <gmock/gmock.h>

#include <QPushButton>
#include <QTableView>

namespace runsieve::test {
namespace {

using app::ParametersPane;
using Stage = app::PassingWork::Stage;

struct ParameterPages : ParametersScene
{
  /// A scan whose output A is the product of two parameters.
  static std::shared_ptr<Scan const> productScan(std::size_t runs = 300)
  {
    auto scan = lineScan(runs, 5);
    double* a = const_cast<Scan&>(*scan).outputs[0].values.get();
    for (std::size_t run = 0; run < runs; ++run)
      for (std::size_t t = 0; t < scan->times.size(); ++t) *a++ = scattered(2, run) * scattered(4, run);
    return scan;
  }
  [[nodiscard]] bool settleWork(app::PassingWork& work)
  {
    return waitFor([&] { return work.stage() == Stage::Done; });
  }
};

TEST_F(ParameterPages, SayWhatToDoWithoutAGate)
{
  pane->showPage(ParametersPane::Page::Pairs);
  EXPECT_THAT(pane->pairs()->bar()->text().toStdString(), testing::StartsWith("Draw a gate first"));
  pane->showPage(ParametersPane::Page::Box);
  EXPECT_THAT(pane->box()->bar()->text().toStdString(), testing::StartsWith("Draw a gate first"));
  EXPECT_EQ(pane->box()->useAsGates(), 0u);
}

TEST_F(ParameterPages, OfPairsAreComputedOnlyWhenTheyAreSeen)
{
  openScan(productScan());
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(pane->pairs()->work().stage(), Stage::Waiting);
  EXPECT_EQ(pane->box()->work().stage(), Stage::Waiting);
  pane->showPage(ParametersPane::Page::Pairs);
  ASSERT_TRUE(settleWork(pane->pairs()->work()));
  EXPECT_EQ(pane->box()->work().stage(), Stage::Waiting);
}

TEST_F(ParameterPages, ThatWereLeftAreComputedNoMore)
{
  openScan(productScan());
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  const std::pair<ParametersPane::Page, app::PassingWork*> pages[] = {
      {ParametersPane::Page::Pairs, &pane->pairs()->work()},
      {ParametersPane::Page::Box, &pane->box()->work()},
      {ParametersPane::Page::Stability, &pane->stability()->work()}};
  double low = 0.4;
  for (auto const& [page, work] : pages) {
    pane->showPage(page);
    ASSERT_TRUE(settleWork(*work));
    pane->showPage(ParametersPane::Page::Charts);
    low -= 0.05;
    document.change("Move gate", [&](app::State& state) { state.gates[0].gate.range.low = low; });
    ASSERT_TRUE(settle());
    EXPECT_EQ(work->stage(), Stage::Waiting);
  }
}

TEST(BoxWords, TellOfHalvesOnlyIfBothNumbersAreKnown)
{
  BoxOfRuns box;
  box.restricted = 1;
  box.density.count = 5;
  EXPECT_FALSE(app::boxWords(box).contains("halves"));
  box.coverage.count = 5;
  EXPECT_TRUE(app::boxWords(box).contains("halves"));
  box.density.count = 0;
  EXPECT_FALSE(app::boxWords(box).contains("halves"));
}

TEST_F(ParameterPages, ListTheStrongestPairFirstAndShowChartsOfThePairs)
{
  openScan(productScan(1000));
  addGate(gateOnA(0.4, 1.0));
  pane->showPage(ParametersPane::Page::Pairs);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(settleWork(pane->pairs()->work()));
  QAbstractItemModel const& model = *pane->pairs()->table()->model();
  ASSERT_EQ(model.rowCount(), 10);
  EXPECT_EQ(model.index(0, 0).data().toString(), "k2");
  EXPECT_EQ(model.index(0, 1).data().toString(), "k4");
  EXPECT_TRUE(model.index(0, 2).data().toString().startsWith("-"));
  EXPECT_TRUE(model.index(0, 4).data().toString().endsWith(QString::fromUtf8("\u2605")));
  EXPECT_EQ(pane->pairs()->shownCharts()->count(), 9u);
  const QImage shot = pane->pairs()->shownCharts()->viewport()->grab().toImage();
  EXPECT_GT(passingPixels(shot), 100);
}

TEST_F(ParameterPages, OfPairsFollowChangedGates)
{
  openScan(productScan());
  addGate(gateOnA(0.4, 1.0));
  pane->showPage(ParametersPane::Page::Pairs);
  ASSERT_TRUE(settleWork(pane->pairs()->work()));
  const QString before = pane->pairs()->bar()->text();
  document.change("Move gate", [](app::State& state) { state.gates[0].gate.range.low = 0.2; });
  ASSERT_TRUE(waitFor([&] {
    return pane->pairs()->work().stage() == Stage::Done && pane->pairs()->bar()->text() != before;
  }));
  document.undoStack().clear();
  document.change("Delete gate", [](app::State& state) { state.gates.clear(); });
  EXPECT_THAT(pane->pairs()->bar()->text().toStdString(), testing::StartsWith("Draw a gate first"));
  EXPECT_EQ(pane->pairs()->table()->model()->rowCount(), 0);
}

TEST_F(ParameterPages, TellIfNoRunPasses)
{
  addGate(gateOnA(5.0, 6.0));
  pane->showPage(ParametersPane::Page::Box);
  ASSERT_TRUE(settle());
  EXPECT_THAT(pane->box()->bar()->text().toStdString(), testing::HasSubstr("no run passes"));
}

TEST_F(ParameterPages, AreStoppedAndStartedAgain)
{
  openScan(productScan(4000));
  addGate(gateOnA(0.4, 1.0));
  pane->showPage(ParametersPane::Page::Box);
  ASSERT_TRUE(waitFor([&] { return pane->box()->work().stage() == Stage::Working; }));
  QTest::mouseClick(pane->box()->bar()->button(), Qt::LeftButton);
  EXPECT_EQ(pane->box()->work().stage(), Stage::Stopped);
  EXPECT_EQ(pane->box()->bar()->text(), "Stopped.");
  QTest::mouseClick(pane->box()->bar()->button(), Qt::LeftButton);
  ASSERT_TRUE(settleWork(pane->box()->work()));
  EXPECT_GT(pane->box()->limits()->count(), 0u);
}

TEST_F(ParameterPages, TurnTheBoxIntoGatesInOneStep)
{
  openScan(productScan());
  addGate(gateOnA(0.4, 1.0));
  pane->showPage(ParametersPane::Page::Box);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(settleWork(pane->box()->work()));
  EXPECT_THAT(pane->box()->words().toStdString(), testing::HasSubstr("coverage"));
  EXPECT_THAT(pane->box()->words().toStdString(), testing::HasSubstr("density"));
  const std::size_t limits = pane->box()->limits()->count();
  ASSERT_GT(limits, 0u);
  QTest::mouseClick(pane->box()->gatesButton(), Qt::LeftButton);
  ASSERT_EQ(document.state().gates.size(), 1 + limits);
  for (std::size_t i = 1; i <= limits; ++i) {
    EXPECT_TRUE(document.outcomes()[i].error.empty());
    EXPECT_THAT(document.state().gates[i].name, testing::StartsWith("Box: "));
  }
  document.undoStack().undo();
  EXPECT_EQ(document.state().gates.size(), 1u);
}

TEST_F(ParameterPages, OfParallelCoordinatesShowAllRunsAndThePassingOnesAbove)
{
  pane->showPage(ParametersPane::Page::Parallel);
  ASSERT_TRUE(waitFor([&] { return pane->parallel()->isSettled(); }));
  auto const shown = [&] { return passingPixels(pane->parallel()->viewport()->grab().toImage()); };
  const int before = shown();
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(waitFor([&] { return pane->parallel()->isSettled() && shown() > before + 50; }));
}

TEST_F(ParameterPages, OfParallelCoordinatesNeedTwoParametersAndNoMore)
{
  pane->showPage(ParametersPane::Page::Parallel);
  auto const texts = [this](std::size_t parameters) {
    openScan(lineScan(20, parameters));
    EXPECT_TRUE(waitFor([this] { return pane->parallel()->isSettled(); }));
    PaintRecorder paper(pane->parallel()->viewport()->size());
    pane->parallel()->viewport()->render(&paper, QPoint(), QRegion(), QWidget::RenderFlags());
    return wordsOf(paper.painting());
  };
  EXPECT_THAT(texts(2), testing::IsSupersetOf({"k0", "k1"}));
  EXPECT_THAT(texts(1), testing::Each(testing::HasSubstr("two parameters")));
}

TEST_F(ParameterPages, OfParallelCoordinatesPinTheRunThatIsClicked)
{
  pane->showPage(ParametersPane::Page::Parallel);
  app::ParallelView& view = *pane->parallel();
  auto const& order = pane->runs().order();
  auto const placeOf = [&](std::size_t parameter, std::size_t run) {
    const app::AxisMap axis = pane->runs().axis(parameter);
    return view.axisLine(parameter).pointAt(axis.place(document.scan().parameters[parameter].values[run]));
  };
  const QPointF middle = 0.5 * (placeOf(order[0], 11) + placeOf(order[1], 11));
  Mouse mouse(*view.viewport());
  mouse.move(middle);
  EXPECT_EQ(document.hoveredRun(), 11u);
  mouse.click(middle);
  EXPECT_EQ(document.pinnedRuns(), std::set<std::size_t>{11});
}

TEST_F(ParameterPages, OfParallelCoordinatesScrollIfTheParametersAreMany)
{
  openScan(lineScan(40, 300));
  pane->showPage(ParametersPane::Page::Parallel);
  app::ParallelView& view = *pane->parallel();
  EXPECT_GT(view.axisLine(1).x1() - view.axisLine(0).x1(), 70.0);
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_EQ(view.current(), 299u);
  EXPECT_LT(view.axisLine(299).x1(), view.viewport()->width());
  ASSERT_TRUE(waitFor([&] { return view.isSettled(); }));
  EXPECT_FALSE(view.viewport()->grab().toImage().isNull());
  QTest::keyClick(&view, Qt::Key_Return);
  ASSERT_NE(pane->large(), nullptr);
  EXPECT_EQ(pane->large()->shownParameter(), 299u);
}

TEST_F(ParameterPages, OfOneParameterSayWhatTheyNeed)
{
  openScan(lineScan(40, 1));
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  pane->showPage(ParametersPane::Page::Parallel);
  EXPECT_FALSE(pane->parallel()->viewport()->grab().toImage().isNull());
  pane->showPage(ParametersPane::Page::Pairs);
  ASSERT_TRUE(settleWork(pane->pairs()->work()));
  EXPECT_THAT(pane->pairs()->bar()->text().toStdString(), testing::HasSubstr("no two number parameters"));
}

TEST_F(ParameterPages, SurviveAnotherScanInTheMiddleOfTheirWork)
{
  openScan(productScan(3000));
  addGate(gateOnA(0.4, 1.0));
  pane->showPage(ParametersPane::Page::Box);
  waitFor([&] { return pane->box()->work().stage() == Stage::Working; });
  openScan(lineScan());
  EXPECT_EQ(pane->box()->work().stage(), Stage::NoGate);
  document.close();
  EXPECT_EQ(pane->box()->limits()->count(), 0u);
  QTest::qWait(50);
}

} // namespace
} // namespace runsieve::test
