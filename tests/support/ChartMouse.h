#pragma once

#include "support/PlotParts.h"

#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkChart.h>

#include <QPointF>
#include <QtGlobal>

namespace runsieve::test {

/// Plays a user's mouse on a chart of a shown widget, in data coordinates.
class ChartMouse
{
public:
  ChartMouse(VtkPlotWidget& widget, vtkChart* chart) : widget(widget), chart(chart) {}

  /// The widget position of a point given in the coordinates of the chart's axes.
  [[nodiscard]] QPoint at(double x, double y) const;

  /// Presses at one corner, moves in steps, releases at the other one.
  void drag(QPointF from, QPointF to, Qt::MouseButton button,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

private:
  VtkPlotWidget& widget;
  vtkChart* chart;
};

/// Shows a widget at a size and waits until it has been drawn.
void showAndWait(VtkPlotWidget& widget, int width, int height);

/// Renders and runs the event loop until nothing is left to do.
void settle(VtkPlotWidget& widget);

} // namespace runsieve::test
