#include "support/ChartMouse.h"

#include <vtkAxis.h>
#include <vtkContextView.h>

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace runsieve::test {

QPoint ChartMouse::at(double x, double y) const
{
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  auto place = [](double value, vtkAxis* axis, float from, float to) {
    return from + (value - axis->GetMinimum()) / (axis->GetMaximum() - axis->GetMinimum()) * (to - from);
  };
  const double px = place(x, bottom, bottom->GetPosition1().GetX(), bottom->GetPosition2().GetX());
  const double py = place(y, left, left->GetPosition1().GetY(), left->GetPosition2().GetY());
  // The scene counts from below, the widget from above.
  return {qRound(px), qRound(widget.height() - 1 - py)};
}

void ChartMouse::drag(QPointF from, QPointF to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) const
{
  const QPoint start = at(from.x(), from.y());
  const QPoint end = at(to.x(), to.y());
  QTest::mouseMove(&widget, start);
  QTest::mousePress(&widget, button, modifiers, start);
  for (int step = 1; step <= 3; ++step) {
    // QTest::mouseMove carries no buttons, and a chart follows only a pressed mouse.
    const QPoint position = start + (end - start) * step / 3;
    QMouseEvent move(QEvent::MouseMove, position, widget.mapToGlobal(position), Qt::NoButton, button,
                     modifiers);
    QApplication::sendEvent(&widget, &move);
  }
  QTest::mouseRelease(&widget, button, modifiers, end);
}

void showAndWait(VtkPlotWidget& widget, int width, int height)
{
  widget.resize(width, height);
  widget.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
  settle(widget);
}

void settle(VtkPlotWidget& widget)
{
  widget.updatePlot(false);
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace runsieve::test
