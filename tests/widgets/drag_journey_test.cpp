#include "support/ChartMouse.h"
#include "support/PlotParts.h"
#include "support/ScanBuilder.h"

#include <vtkAxis.h>
#include <vtkContextMouseEvent.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

#include <cmath>
#include <memory>

namespace runsieve::test {
namespace {

constexpr int runs = 60;
constexpr int times = 21;
constexpr int early = 2; // the chart begins at time 0, so a drag around it would begin outside

/// A value between 0 and 1 that scatters over the runs, in another order for each parameter.
double scattered(int parameter, int run)
{
  const double turn = (run + 1) * std::sqrt(2.0 + 3.0 * parameter);
  return turn - std::floor(turn);
}

/// Runs start at their first parameter and bend to their second one at time 10.
double bent(int, int run, int time)
{
  const double first = scattered(0, run);
  const double second = scattered(1, run);
  return time < 10 ? first + (second - first) * time / 10.0 : second;
}

class DragJourney : public testing::Test
{
protected:
  void SetUp() override
  {
    ScanShape shape;
    shape.runs = runs;
    shape.times = times;
    shape.parameters = 10;
    shape.value = bent;
    shape.parameter = scattered;
    shape.bounds.assign(10, {0.0, 1.0});
    plot().metaData->setPlotStyle(selectionCdfPlot);
    plot().metaData->blockSignals(true);
    plot().metaData->setPlotLine(true);
    plot().metaData->blockSignals(false);
    plot().setLinePlotTable(makeScan(shape), false);
    widget.updatePlot(true);
    showAndWait(widget, 800, 700);
  }

  PlotContainer& plot() { return *widget.plotContainer; }

  void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
            Qt::MouseButton button = Qt::RightButton)
  {
    ChartMouse(widget, plot().chartXY).drag(from, to, button, modifiers);
    settle(widget);
  }

  std::set<int> survivors()
  {
    const std::unique_ptr<ParameterSelection> selection(plot().getSelection());
    return selection->selectedRuns;
  }

  /// Runs whose value lies in a range at both given times.
  static std::set<int> runsBetween(double low0, double high0, double low1 = -1.0, double high1 = 2.0)
  {
    std::set<int> found;
    for (int r = 0; r < runs; ++r) {
      const double a = bent(0, r, early);
      const double b = bent(0, r, 15);
      if (a >= low0 && a <= high0 && b >= low1 && b <= high1) found.insert(r);
    }
    return found;
  }

  vtkAbstractContextItem* pickedAt(int x, int y)
  {
    vtkContextMouseEvent event;
    event.SetPos({static_cast<float>(x), static_cast<float>(y)});
    event.SetScenePos(event.GetPos());
    event.SetScreenPos({x, y});
    return plot().item->GetPickedItem(event);
  }

  std::vector<std::string> shownParameters()
  {
    std::vector<std::string> names;
    const vtkVector2i size = plot().chartMatrix->GetSize();
    for (int row = 0; row < size.GetY() / 2; ++row)
      for (int column = 0; column < size.GetX(); ++column) {
        vtkChart* chart = plot().chartMatrix->GetChart({column, row});
        if (chart->GetNumberOfPlots() > 0) names.push_back(chart->GetAxis(vtkAxis::BOTTOM)->GetTitle());
      }
    return names;
  }

  VtkPlotWidget widget;
};

TEST_F(DragJourney, aDragAndACtrlDragLeaveTheRunsThatPassBothPlaces)
{
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9));
  ASSERT_EQ(plot().ksStatistics.size(), 10u);
  EXPECT_LT(plot().ksStatistics[0].p, 1e-6);
  EXPECT_EQ(shownParameters().front(), "k1");

  drag({14.9, 0.3}, {15.1, 0.8}, Qt::ControlModifier);
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9, 0.3, 0.8));
  EXPECT_EQ(plot().tables.size(), 8u);
  const std::vector<std::string> shown = shownParameters();
  EXPECT_EQ(shown.size(), 4u);
  EXPECT_EQ(shown[0], "k1");
  vtkChart* first = plot().chartMatrix->GetChart({0, 0});
  EXPECT_EQ(first->GetTitle().substr(0, 4), "p = ");
  EXPECT_EQ(first->GetNumberOfPlots(), 3);

  // A plain drag replaces, Shift takes away.
  drag({early - 0.1, 0.01}, {early + 0.1, 0.5});
  EXPECT_EQ(survivors(), runsBetween(0.01, 0.5));
  drag({early - 0.1, 0.01}, {early + 0.1, 0.2}, Qt::ShiftModifier);
  EXPECT_EQ(survivors(), runsBetween(0.2, 0.5));
}

TEST_F(DragJourney, theWindowStillWorksAfterwards)
{
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  const double before = plot().chartXY->GetAxis(vtkAxis::BOTTOM)->GetMinimum();
  drag({10.0, 0.5}, {5.0, 0.5}, Qt::NoModifier, Qt::LeftButton);
  EXPECT_GT(plot().chartXY->GetAxis(vtkAxis::BOTTOM)->GetMinimum(), before + 2.0);
  EXPECT_EQ(plot().coordinateWindows.size(), 1u);
  drag({14.9, 0.1}, {15.1, 0.6});
  EXPECT_EQ(survivors(), runsBetween(-1.0, 2.0, 0.1, 0.6));
}

TEST_F(DragJourney, aDragBegunByADoubleClickSelects)
{
  const ChartMouse mouse(widget, plot().chartXY);
  const QPoint start = mouse.at(early - 0.1, 0.5);
  const QPoint end = mouse.at(early + 0.1, 0.9);
  QMouseEvent click(QEvent::MouseButtonDblClick, start, widget.mapToGlobal(start), Qt::RightButton,
                    Qt::RightButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &click);
  QMouseEvent move(QEvent::MouseMove, end, widget.mapToGlobal(end), Qt::NoButton, Qt::RightButton,
                   Qt::NoModifier);
  QApplication::sendEvent(&widget, &move);
  QTest::mouseRelease(&widget, Qt::RightButton, Qt::NoModifier, end);
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9));
}

TEST_F(DragJourney, aRightClickOnAPointLeavesTheSelectionAlone)
{
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  const QPoint point = ChartMouse(widget, plot().chartXY).at(early, bent(0, 3, early));
  QTest::mouseClick(&widget, Qt::RightButton, Qt::NoModifier, point);
  plot().annotationUpdate();
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9));
}

TEST_F(DragJourney, quartileBandsDoNotDisturbSelecting)
{
  plot().generateQuartiles();
  plot().metaData->setShowQuantiles(true);
  widget.updatePlot(true);
  settle(widget);
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9));
  drag({early - 0.1, 0.01}, {early + 0.1, 0.5});
  EXPECT_EQ(survivors(), runsBetween(0.01, 0.5));
  drag({early - 0.1, 0.01}, {early + 0.1, 0.2}, Qt::ShiftModifier);
  EXPECT_EQ(survivors(), runsBetween(0.2, 0.5));
}

TEST_F(DragJourney, twoHundredDragsWithAGridThatGrowsAndShrinks)
{
  // Thresholds decide how many parameters count as significant, and so the size of the grid that is rebuilt
  // inside the event of the chart that was dragged on.
  const double largestP[] = {0.0, 1.0, 0.05};
  std::set<int> sizes;
  for (int i = 0; i < 200; ++i) {
    plot().metaData->blockSignals(true);
    plot().metaData->setPThreshold(largestP[i % 3]);
    plot().metaData->setKsThreshold(0.0);
    plot().metaData->blockSignals(false);
    const double low = 0.02 * (i % 20 + 1);
    const Qt::KeyboardModifiers modifiers = i % 7 == 3    ? Qt::ControlModifier
                                            : i % 11 == 5 ? Qt::ShiftModifier
                                                          : Qt::NoModifier;
    const double time = i % 2 ? 15.0 : early;
    drag({time - 0.05, low}, {time + 0.05, low + 0.4}, modifiers);
    sizes.insert(plot().chartMatrix->GetSize().GetY());
  }
  EXPECT_GT(sizes.size(), 1u);
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  EXPECT_EQ(survivors(), runsBetween(0.5, 0.9));
}

TEST_F(DragJourney, everyPixelOfAVisibleChartBelongsToThatChart)
{
  drag({early - 0.1, 0.5}, {early + 0.1, 0.9});
  const vtkVector2i size = plot().chartMatrix->GetSize();
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) {
      vtkChart* chart = plot().chartMatrix->GetChart({column, row});
      if (chart->GetNumberOfPlots() == 0) continue;
      int const* from = chart->GetPoint1();
      int const* to = chart->GetPoint2();
      int lost = 0;
      for (int x = from[0] + 1; x < to[0]; x += 3)
        for (int y = from[1] + 1; y < to[1]; y += 3) lost += pickedAt(x, y) != chart;
      EXPECT_EQ(lost, 0) << "cell " << column << ", " << row;
    }
}

} // namespace
} // namespace runsieve::test
