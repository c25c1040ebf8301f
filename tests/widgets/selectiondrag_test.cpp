#include "support/ChartMouse.h"
#include "support/PlotParts.h"
#include "support/ScanBuilder.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/SelectionDrag.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkAxis.h>
#include <vtkChart.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <vector>

namespace runsieve::test {
namespace {

/// A widget on runs over time, with all that it tells of drags.
struct SelectionDragTest : testing::Test
{
  void SetUp() override
  {
    ScanShape shape;
    shape.runs = 20;
    shape.times = 11;
    shape.parameters = 1;
    shape.parameter = [](int, int run) { return static_cast<double>(run); };
    shape.bounds.emplace_back(0.0, 20.0);
    shape.value = [](int, int run, int) { return static_cast<double>(run); };
    plot = widget.plotContainer;
    plot->metaData->setPlotStyle(selectionCdfPlot);
    plot->metaData->setPlotLine(true);
    plot->setLinePlotTable(makeScan(shape), false);
    showAndWait(widget, 700, 600);
    widget.updatePlot(true);
    settle(widget);
    QObject::connect(widget.selectionDrag(), &SelectionDrag::moved,
                     [this](DragRectangle const& rectangle) { rectangles.push_back(rectangle); });
    QObject::connect(widget.selectionDrag(), &SelectionDrag::ended, [this](bool cancelled) {
      ends.push_back(cancelled);
      selectedAtEnd.push_back(selectedRows());
    });
  }

  [[nodiscard]] int selectedRows() const
  {
    auto flags = vtkSmartPointer<vtkIntArray>::Take(plot->getCurrentSelection());
    int count = 0;
    for (vtkIdType row = 0; flags && row < flags->GetNumberOfTuples(); ++row)
      count += flags->GetValue(row) != 0;
    return count;
  }

  void send(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons buttons)
  {
    const QPoint position = mouse().at(place.x(), place.y());
    QMouseEvent event(type, position, widget.mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }

  [[nodiscard]] ChartMouse mouse() { return {widget, plot->chartXY}; }

  VtkPlotWidget widget;
  PlotContainer* plot = nullptr;
  std::vector<DragRectangle> rectangles;
  std::vector<bool> ends;
  std::vector<int> selectedAtEnd;
};

TEST_F(SelectionDragTest, EachMoveTellsTheRectangleInUnitsOfTheAxes)
{
  vtkAxis* bottom = plot->chartXY->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = plot->chartXY->GetAxis(vtkAxis::LEFT);
  const double x0 = bottom->GetMinimum() + 0.3 * (bottom->GetMaximum() - bottom->GetMinimum());
  const double x1 = bottom->GetMinimum() + 0.6 * (bottom->GetMaximum() - bottom->GetMinimum());
  mouse().drag({x0, 15.0}, {x1, 5.0}, Qt::RightButton, Qt::NoModifier);
  ASSERT_EQ(rectangles.size(), 4u); // the press and three moves
  EXPECT_EQ(rectangles.front().left, rectangles.front().right);
  EXPECT_EQ(rectangles.front().bottom, rectangles.front().top);
  const double pixelX = (bottom->GetMaximum() - bottom->GetMinimum()) / 500.0;
  const double pixelY = (left->GetMaximum() - left->GetMinimum()) / 200.0;
  EXPECT_NEAR(rectangles.back().left, x0, pixelX);
  EXPECT_NEAR(rectangles.back().right, x1, pixelX);
  EXPECT_NEAR(rectangles.back().bottom, 5.0, pixelY);
  EXPECT_NEAR(rectangles.back().top, 15.0, pixelY);
  EXPECT_GT(rectangles[2].right, rectangles[1].right);
}

TEST_F(SelectionDragTest, TheEndIsToldBeforeTheSelectionChanges)
{
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  mouse().drag({0.3 * x, 15.0}, {0.6 * x, 5.0}, Qt::RightButton, Qt::NoModifier);
  ASSERT_EQ(ends, std::vector<bool>{false});
  EXPECT_EQ(selectedAtEnd.front(), 0);
  EXPECT_GT(selectedRows(), 0);
}

TEST_F(SelectionDragTest, ModifiersOfTheKeyboardAreTold)
{
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  mouse().drag({0.3 * x, 15.0}, {0.6 * x, 5.0}, Qt::RightButton, Qt::ControlModifier);
  EXPECT_TRUE(rectangles.back().modifiers.testFlag(Qt::ControlModifier));
}

TEST_F(SelectionDragTest, OtherButtonsAndOtherPlacesAreNoSelection)
{
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  mouse().drag({0.3 * x, 15.0}, {0.4 * x, 10.0}, Qt::LeftButton, Qt::NoModifier);
  QTest::mousePress(&widget, Qt::RightButton, Qt::NoModifier, {3, 3});
  QTest::mouseRelease(&widget, Qt::RightButton, Qt::NoModifier, {3, 3});
  EXPECT_TRUE(rectangles.empty());
  EXPECT_TRUE(ends.empty());
}

TEST_F(SelectionDragTest, EscGivesADragUpAndTheReleaseSelectsNothing)
{
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  send(QEvent::MouseButtonPress, {0.3 * x, 15.0}, Qt::RightButton, Qt::RightButton);
  send(QEvent::MouseMove, {0.6 * x, 5.0}, Qt::NoButton, Qt::RightButton);
  QTest::keyClick(&widget, Qt::Key_Escape);
  EXPECT_EQ(ends, std::vector<bool>{true});
  const std::size_t told = rectangles.size();
  send(QEvent::MouseMove, {0.7 * x, 3.0}, Qt::NoButton, Qt::RightButton);
  send(QEvent::MouseButtonRelease, {0.7 * x, 3.0}, Qt::RightButton, Qt::NoButton);
  EXPECT_EQ(rectangles.size(), told);
  EXPECT_EQ(ends.size(), 1u);
  EXPECT_EQ(selectedRows(), 0);

  mouse().drag({0.3 * x, 15.0}, {0.6 * x, 5.0}, Qt::RightButton, Qt::NoModifier);
  EXPECT_GT(selectedRows(), 0) << "the next drag selects again";
}

TEST_F(SelectionDragTest, EscKeepsTheSelectionThatThereWas)
{
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  mouse().drag({0.3 * x, 15.0}, {0.6 * x, 5.0}, Qt::RightButton, Qt::NoModifier);
  const int before = selectedRows();
  ASSERT_GT(before, 0);
  settle(widget);
  send(QEvent::MouseButtonPress, {0.1 * x, 15.0}, Qt::RightButton, Qt::RightButton);
  send(QEvent::MouseMove, {0.9 * x, 1.0}, Qt::NoButton, Qt::RightButton);
  QTest::keyClick(&widget, Qt::Key_Escape);
  send(QEvent::MouseButtonRelease, {0.9 * x, 1.0}, Qt::RightButton, Qt::NoButton);
  EXPECT_EQ(selectedRows(), before);
}

TEST_F(SelectionDragTest, EscWithoutADragIsAKeyAsAnyOther)
{
  QTest::keyClick(&widget, Qt::Key_Escape);
  EXPECT_TRUE(ends.empty());
}

TEST_F(SelectionDragTest, ALogarithmicAxisTellsValuesNotLogarithms)
{
  vtkAxis* left = plot->chartXY->GetAxis(vtkAxis::LEFT);
  left->SetBehavior(vtkAxis::FIXED);
  left->SetUnscaledRange(1.0, 100.0);
  left->SetLogScale(true);
  settle(widget);
  ASSERT_TRUE(left->GetLogScaleActive());
  const double x = plot->chartXY->GetAxis(vtkAxis::BOTTOM)->GetMaximum();
  mouse().drag({0.3 * x, 1.0}, {0.6 * x, 0.0}, Qt::RightButton, Qt::NoModifier); // 10 and 1
  EXPECT_NEAR(rectangles.back().top, 10.0, 0.4);
  EXPECT_NEAR(rectangles.back().bottom, 1.0, 0.05);
}

} // namespace
} // namespace runsieve::test
