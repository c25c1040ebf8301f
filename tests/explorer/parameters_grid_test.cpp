#include "ParametersScene.h"

#include "app/explorer/parameters/LargeChart.h"
#include "app/explorer/parameters/ParameterNumbers.h"

#include <gmock/gmock.h>

#include <QMenu>
#include <QScrollBar>
#include <QTimer>

#include <limits>

namespace runsieve::test {
namespace {

using app::ParameterLook;
using app::State;

struct ParameterCharts : ParametersScene
{
  static constexpr std::array<ParameterLook, 3> looks = {ParameterLook::Curves, ParameterLook::Densities,
                                                         ParameterLook::Scatter};
};

TEST_F(ParameterCharts, StandInTheOrderOfTheComparison)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(pane->runs().order(), document.parameterOrder());
  EXPECT_EQ(pane->runs().order().front(), 0u);
  EXPECT_LT(grid().cell(0).top(), 1.0);
  EXPECT_LT(grid().cell(0).left(), 1.0);
}

TEST_F(ParameterCharts, StayWhereTheyAreWhileAGateIsDragged)
{
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const std::vector<std::size_t> before = pane->runs().order();
  Gate moved;
  moved.column = "B";
  moved.kind = GateKind::Last;
  for (double low : {0.1, 0.3, 0.5, 0.7}) {
    moved.range = {low, 1.0};
    document.previewGate(0, moved);
    QCoreApplication::processEvents();
    EXPECT_EQ(pane->runs().order(), before);
  }
  ASSERT_TRUE(document.commitPreview("Move gate"));
  ASSERT_TRUE(settle());
  EXPECT_NE(pane->runs().order(), before);
  EXPECT_EQ(pane->runs().order().front(), 1u);
}

TEST_F(ParameterCharts, TellDAndPAndWhetherItIsSignificant)
{
  EXPECT_TRUE(headline(app::numbersOf(document, 0)).isEmpty());
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  const QString found = headline(app::numbersOf(document, 0));
  EXPECT_THAT(found.toStdString(), testing::StartsWith("d +"));
  EXPECT_THAT(found.toStdString(), testing::HasSubstr(", p "));
  EXPECT_TRUE(found.endsWith(QString::fromUtf8("\u2605"))) << found.toStdString();
  bool hasOther = false;
  for (std::size_t i = 1; i < 6; ++i)
    hasOther = hasOther || headline(app::numbersOf(document, i)).endsWith("n.s.");
  EXPECT_TRUE(hasOther);
}

TEST_F(ParameterCharts, TellTheLiveDistanceAndNoPWhileAGateIsDragged)
{
  document.previewGate(0, gateOnA(0.5, 1.0));
  const app::ParameterNumbers numbers = app::numbersOf(document, 0);
  EXPECT_EQ(numbers.d, document.liveDistances().at(0).d);
  EXPECT_TRUE(std::isnan(numbers.p));
  EXPECT_EQ(headline(numbers), QString::asprintf("d %+.2f", numbers.d));
}

TEST_F(ParameterCharts, ShowPassingRunsInTheirColourInEachLook)
{
  for (ParameterLook const look : looks) {
    setLook(look);
    EXPECT_EQ(passingPixels(), 0);
    addGate(gateOnA(0.4, 1.0));
    ASSERT_TRUE(settle());
    EXPECT_GT(passingPixels(), 40);
    document.undoStack().undo();
  }
}

TEST_F(ParameterCharts, OfOneOrNoPassingRunAreDrawnInEachLook)
{
  const double value = scattered(0, 7);
  for (ParameterLook const look : looks) {
    setLook(look);
    addGate(gateOnA(value - 1e-9, value + 1e-9));
    ASSERT_TRUE(settle());
    EXPECT_EQ(document.passing().count(), 1u);
    EXPECT_GT(passingPixels(), 5);
    addGate(gateOnA(5.0, 6.0));
    ASSERT_TRUE(settle());
    EXPECT_EQ(document.passing().count(), 0u);
    EXPECT_FALSE(shot().isNull());
    document.undoStack().undo();
    document.undoStack().undo();
  }
}

TEST_F(ParameterCharts, OfMissingAndConstantValuesAreDrawnInEachLook)
{
  auto scan = lineScan();
  auto& parameters = const_cast<Scan&>(*scan).parameters;
  for (double& v : parameters[1].values) v = std::numeric_limits<double>::quiet_NaN();
  for (double& v : parameters[2].values) v = 3.0;
  for (std::size_t run = 0; run < 40; run += 2)
    parameters[3].values[run] = std::numeric_limits<double>::quiet_NaN();
  openScan(scan);
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  for (ParameterLook const look : looks) {
    setLook(look);
    EXPECT_GT(passingPixels(), 50);
  }
  EXPECT_EQ(headline(app::numbersOf(document, 2)), "does not vary");
  const app::ParameterGroups groups = pane->runs().groups(3);
  EXPECT_EQ(groups.passing.total() + groups.others.total(), 20u);
  EXPECT_THAT(app::parameterLines(document, 3, groups.passing.total(), groups.others.total())
                  .join('\n')
                  .toStdString(),
              testing::HasSubstr("20 runs without a value"));
}

TEST_F(ParameterCharts, CountEachRunOnceInItsGroup)
{
  addGate(gateOnA(0.4, 1.0));
  const app::ParameterGroups groups = pane->runs().groups(2);
  EXPECT_EQ(groups.passing.total(), document.passing().count());
  EXPECT_EQ(groups.others.total(), 40 - document.passing().count());
}

TEST_F(ParameterCharts, LeaveOutRunsThatAreNotCompared)
{
  auto scan = lineScan();
  const_cast<Scan&>(*scan).runs[3].status = RunStatus::Failed;
  openScan(scan);
  EXPECT_EQ(pane->runs().groups(2).others.total(), 39u);
}

TEST_F(ParameterCharts, AreReadableAndScrollIfTheyAreMany)
{
  openScan(lineScan(40, 500));
  EXPECT_GE(grid().cell(0).width(), 190.0);
  EXPECT_GT(grid().verticalScrollBar()->maximum(), 1000);
  EXPECT_FALSE(pane->runs().isPlaced(499));
  grid().viewport()->grab();
  EXPECT_TRUE(pane->runs().isPlaced(0));
  EXPECT_FALSE(pane->runs().isPlaced(499)) << "only what is visible is counted";
  QTest::keyClick(&grid(), Qt::Key_End);
  EXPECT_EQ(grid().current(), 499u);
  EXPECT_TRUE(QRectF(grid().viewport()->rect()).contains(grid().cell(499)));
  grid().viewport()->grab();
  EXPECT_TRUE(pane->runs().isPlaced(499));
}

TEST_F(ParameterCharts, TakeFewerColumnsWhereThereIsLessRoom)
{
  const int before = grid().columns();
  pane->resize(420, 600);
  QCoreApplication::processEvents();
  EXPECT_LT(grid().columns(), before);
  EXPECT_GE(grid().cell(0).width(), 190.0);
}

TEST_F(ParameterCharts, AreOpenedLargeByAClickAndByKeys)
{
  Mouse(*grid().viewport()).click(grid().cell(2).topLeft() + QPointF(30.0, 8.0));
  ASSERT_NE(pane->large(), nullptr);
  EXPECT_EQ(pane->large()->shownParameter(), 2u);
  grid().setFocus();
  grid().setCurrent(pane->runs().order()[0]);
  QTest::keyClick(&grid(), Qt::Key_Right);
  QTest::keyClick(&grid(), Qt::Key_Return);
  EXPECT_EQ(pane->large()->shownParameter(), pane->runs().order()[1]);
  QTest::keyClick(&grid(), Qt::Key_Down);
  EXPECT_EQ(grid().current(), pane->runs().order()[static_cast<std::size_t>(1 + grid().columns())]);
}

TEST_F(ParameterCharts, LargeOneFollowsTheGatesAndTellsItsNumbersInWords)
{
  pane->openLarge(0);
  EXPECT_THAT(pane->large()->words().toStdString(), testing::HasSubstr("Draw a gate"));
  addGate(gateOnA(0.5, 1.0));
  ASSERT_TRUE(settle());
  EXPECT_THAT(pane->large()->words().toStdString(), testing::HasSubstr("significant"));
  EXPECT_THAT(pane->large()->words().toStdString(), testing::HasSubstr("median"));
  openScan(lineScan());
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(pane->large(), nullptr) << "of another scan";
}

TEST_F(ParameterCharts, AxisIsChosenInTheContextMenu)
{
  ASSERT_FALSE(pane->runs().isLogarithmic(2));
  bool found = false;
  QTimer::singleShot(0, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
      if (action->text().remove('&') == "Logarithmic axis") {
        found = true;
        action->trigger();
      }
    menu->close();
  });
  const QPoint at = grid().cell(2).center().toPoint();
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid().viewport()->mapToGlobal(at));
  QApplication::sendEvent(grid().viewport(), &event);
  EXPECT_TRUE(found);
  EXPECT_TRUE(pane->runs().isLogarithmic(2));
  EXPECT_EQ(document.undoStack().undoText(), "Logarithmic axis");
  document.undoStack().undo();
  EXPECT_FALSE(pane->runs().isLogarithmic(2));
}

TEST_F(ParameterCharts, LargeOneOfAParameterThatIsGoneIsEmpty)
{
  app::LargeChartView view(pane->runs(), 5);
  view.resize(400, 300);
  EXPECT_FALSE(view.plot().isEmpty());
  openScan(lineScan(40, 5));
  EXPECT_TRUE(view.plot().isEmpty());
  const QImage shot = view.grab().toImage();
  EXPECT_EQ(pixelsOf(shot, theme().paper), shot.width() * shot.height());
  Mouse(view).drag({100.0, 100.0}, {200.0, 100.0});
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(ParameterCharts, OfTextsAreBarsWithTheTexts)
{
  auto scan = lineScan();
  ScanParameter& parameter = const_cast<Scan&>(*scan).parameters[2];
  parameter.texts = {"<b>wild type</b>", "mutant"};
  for (double& value : parameter.values) value = value < 0.5 ? 0.0 : 1.0;
  openScan(scan);
  addGate(gateOnA(0.4, 1.0));
  ASSERT_TRUE(settle());
  const app::TextGroups groups = pane->runs().textGroups(2);
  EXPECT_EQ(groups.passing[0] + groups.passing[1], document.passing().count());
  EXPECT_EQ(groups.allPassing + groups.allOthers, 40u);
  EXPECT_GT(passingPixels(), 100);
  pane->openLarge(2);
  EXPECT_THAT(pane->large()->words().toStdString(), testing::HasSubstr("\"<b>wild type</b>\""));
}

TEST_F(ParameterCharts, WithoutAScanAreNone)
{
  document.close();
  EXPECT_FALSE(grid().current().has_value());
  EXPECT_FALSE(shot().isNull());
  QTest::keyClick(&grid(), Qt::Key_Right);
  QTest::keyClick(&grid(), Qt::Key_Return);
  Mouse(*grid().viewport()).click(QPointF(50.0, 50.0));
  EXPECT_EQ(pane->large(), nullptr);
}

TEST_F(ParameterCharts, OfManyRunsTakeEachMoveOfAGate)
{
  openScan(lineScan(100'000, 8));
  for (ParameterLook const look : looks) {
    setLook(look);
    for (double low : {0.2, 0.4, 0.6}) {
      document.previewGate(0, gateOnA(low, 1.0));
      QCoreApplication::processEvents();
    }
    ASSERT_TRUE(waitFor([&] {
      grid().viewport()->grab();
      return pane->runs().isPlaced(0) && pane->runs().isPlaced(7);
    }));
    EXPECT_GT(passingPixels(), 100);
    document.cancelPreview();
  }
}

TEST(DifferenceText, IsNotRoundedAcrossTheThreshold)
{
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(app::differenceText(0.0984, none, 0.1), "d +0.098");
  EXPECT_EQ(app::differenceText(-0.0996, none, 0.1), "d -0.0996");
  EXPECT_EQ(app::differenceText(-0.1001, none, 0.1), "d -0.10");
  EXPECT_EQ(app::differenceText(0.25, none, 0.1), "d +0.25");
  EXPECT_EQ(app::differenceText(0.0, none, 0.1), "d +0.00");
  EXPECT_EQ(app::differenceText(none, 0.5, 0.1), "");
}

} // namespace
} // namespace runsieve::test
