#include "ParametersScene.h"

#include <gmock/gmock.h>

#include <QDialog>

namespace runsieve::test {
namespace {

using app::ParameterLook;
using app::State;

struct ParameterGates : ParametersScene
{
  /// Runs whose parameter lies in the range of a gate.
  [[nodiscard]] std::size_t runsIn(std::size_t parameter, GateRange const& range)
  {
    auto const& values = document.scan().parameters[parameter].values;
    return static_cast<std::size_t>(std::count_if(
        values.begin(), values.end(), [&](double v) { return v >= range.low && v <= range.high; }));
  }
};

TEST_F(ParameterGates, AreDrawnByDraggingAcrossAChart)
{
  dragIn(2, 0.25, 0.75);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().kind, GateKind::Inside);
  EXPECT_EQ(gate().column, "k2");
  EXPECT_FALSE(gate().span.has_value());
  EXPECT_NEAR(gate().range.low, 0.25, 0.03);
  EXPECT_NEAR(gate().range.high, 0.75, 0.03);
  EXPECT_EQ(document.passing().count(), runsIn(2, gate().range));
  EXPECT_EQ(document.undoStack().undoText(), "Draw gate");
}

TEST_F(ParameterGates, TakeTheFullNameWhereAnOutputHasTheSame)
{
  auto scan = lineScan();
  const_cast<Scan&>(*scan).parameters[1].label.name = "B";
  openScan(scan);
  dragIn(1, 0.2, 0.6);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().column, "Parameter: B");
  EXPECT_TRUE(document.outcomes()[0].error.empty());
  EXPECT_EQ(document.passing().count(), runsIn(1, gate().range));
}

TEST_F(ParameterGates, ShowWhatPassesWhileTheyAreDrawn)
{
  Mouse mouse(*grid().viewport());
  mouse.press(inPlot(2, 0.2));
  mouse.move(inPlot(2, 0.4));
  ASSERT_NE(document.previewedGate(), nullptr);
  const std::size_t few = document.passing().count();
  mouse.move(inPlot(2, 0.9));
  EXPECT_GT(document.passing().count(), few);
  EXPECT_TRUE(document.state().gates.empty());
  mouse.release(inPlot(2, 0.9));
  EXPECT_EQ(document.state().gates.size(), 1u);
}

TEST_F(ParameterGates, EndsAreDraggedOneByOne)
{
  dragIn(2, 0.3, 0.6);
  const GateRange before = gate().range;
  dragIn(2, app::SpanAxis{2, pane->runs().axis(2).widened(0.025), 0.0, 1.0}.pixelAt(before.high), 0.9);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().range.low, before.low);
  EXPECT_GT(gate().range.high, 0.8);
  EXPECT_EQ(document.undoStack().undoText(), "Resize gate");
}

TEST_F(ParameterGates, AreMovedByTheirMiddleAndKeepTheirWidth)
{
  dragIn(2, 0.3, 0.5);
  const GateRange before = gate().range;
  dragIn(2, 0.4, 0.7);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_NEAR(gate().range.low - before.low, 0.3, 0.03);
  EXPECT_NEAR(gate().range.high - gate().range.low, before.high - before.low, 0.02);
  EXPECT_EQ(document.undoStack().undoText(), "Move gate");
  document.undoStack().undo();
  EXPECT_EQ(gate().range.low, before.low);
}

TEST_F(ParameterGates, ExcludeRunsWithShift)
{
  dragIn(2, 0.25, 0.75, Qt::ShiftModifier);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_TRUE(gate().negated);
  EXPECT_EQ(document.passing().count(), 40 - runsIn(2, gate().range));
}

TEST_F(ParameterGates, AreGivenUpByEscape)
{
  Mouse mouse(*grid().viewport());
  mouse.press(inPlot(2, 0.2));
  mouse.move(inPlot(2, 0.6));
  QTest::keyClick(&grid(), Qt::Key_Escape);
  EXPECT_EQ(document.previewedGate(), nullptr);
  mouse.release(inPlot(2, 0.6));
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_EQ(document.passing().count(), 40u);
  EXPECT_EQ(pane->large(), nullptr);
}

TEST_F(ParameterGates, AreGivenUpIfADialogOpensUnderTheHand)
{
  auto const expectGivenUp = [this](QWidget& under, QPointF const& from, QPointF const& to) {
    Mouse mouse(under);
    mouse.press(from);
    mouse.move(to);
    ASSERT_NE(document.previewedGate(), nullptr);
    QDialog dialog(pane.get());
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_EQ(document.previewedGate(), nullptr);
    dialog.close();
    mouse.move(from); // a button is down no more where the pointer comes back
    mouse.release(from);
    EXPECT_TRUE(document.state().gates.empty());
  };
  expectGivenUp(*grid().viewport(), inPlot(2, 0.2), inPlot(2, 0.6));
  pane->showPage(app::ParametersPane::Page::Parallel);
  const QLineF axis = pane->parallel()->axisLine(4);
  expectGivenUp(*pane->parallel()->viewport(), axis.pointAt(0.2), axis.pointAt(0.6));
  pane->openLarge(3);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(pane->large()));
  const QRectF plot = pane->large()->view()->plot();
  expectGivenUp(*pane->large()->view(), plot.center(),
                QPointF(plot.left() + 0.9 * plot.width(), plot.center().y()));
}

TEST_F(ParameterGates, OverNoRunChangeNothing)
{
  auto scan = lineScan();
  for (double& value : const_cast<Scan&>(*scan).parameters[3].values) value = value < 0.5 ? 0.0 : 1.0;
  openScan(scan);
  QStringList told;
  QObject::connect(pane.get(), &app::ParametersPane::told, [&](QString const& text) { told << text; });
  dragIn(3, 0.3, 0.6);
  EXPECT_TRUE(document.state().gates.empty());
  EXPECT_FALSE(document.undoStack().canUndo());
  EXPECT_THAT(told.last().toStdString(), testing::HasSubstr("nothing has changed"));
}

TEST_F(ParameterGates, AreSelectedByAClickAndStayAsTheyAre)
{
  dragIn(2, 0.3, 0.6);
  const GateRange before = gate().range;
  document.selectGate(std::nullopt);
  Mouse(*grid().viewport()).click(inPlot(2, 0.45));
  EXPECT_EQ(document.selectedGate(), 0u);
  EXPECT_EQ(gate().range.low, before.low);
  EXPECT_EQ(pane->large(), nullptr);
}

TEST_F(ParameterGates, AreSeenAsBands)
{
  const int before = pixelsOf(shot(), theme().gate);
  dragIn(2, 0.3, 0.6);
  EXPECT_GT(pixelsOf(shot(), theme().gate), before + 100);
}

TEST_F(ParameterGates, OnALogarithmicAxisAreAsWideAsTheyLook)
{
  auto scan = lineScan(400);
  for (double& value : const_cast<Scan&>(*scan).parameters[2].values) value = std::pow(10.0, 4.0 * value);
  openScan(scan);
  ASSERT_TRUE(pane->runs().isLogarithmic(2));
  dragIn(2, 0.25, 0.75);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_NEAR(std::log10(gate().range.low), 1.0, 0.12);
  EXPECT_NEAR(std::log10(gate().range.high), 3.0, 0.12);
}

TEST_F(ParameterGates, AreDrawnInTheLargeChartToo)
{
  pane->openLarge(3);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(pane->large()));
  const QRectF plot = pane->large()->view()->plot();
  Mouse(*pane->large()->view())
      .drag(plot.center(), QPointF(plot.left() + 0.9 * plot.width(), plot.center().y()));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().column, "k3");
  EXPECT_NEAR(gate().range.low, 0.5, 0.02);
}

TEST_F(ParameterGates, AreDrawnAlongTheAxesOfParallelCoordinates)
{
  pane->showPage(app::ParametersPane::Page::Parallel);
  const QLineF axis = pane->parallel()->axisLine(4);
  Mouse(*pane->parallel()->viewport()).drag(axis.pointAt(0.2), axis.pointAt(0.6));
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(gate().column, "k4");
  auto const& values = document.scan().parameters[4].values;
  const double low = *std::min_element(values.begin(), values.end());
  const double high = *std::max_element(values.begin(), values.end());
  EXPECT_NEAR((gate().range.low - low) / (high - low), 0.2, 0.02);
  EXPECT_NEAR((gate().range.high - low) / (high - low), 0.6, 0.02);
}

} // namespace
} // namespace runsieve::test
