#include "app/explorer/runs/RunsView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double wheelStep = 0.83; ///< of the axis that one step of the wheel leaves
constexpr double keyStep = 0.1;    ///< of the axis

} // namespace

void RunsView::mouseDoubleClickEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || gateAt(event->localPos())) return;
  if (clicked) document.togglePin(*clicked); // the first click of the two was none
  clicked.reset();
  zoom.reset();
}

void RunsView::zoomAbout(QPointF const& at, double factor, bool horizontal, bool vertical)
{
  const QRectF plot = axes.plot();
  const double x = std::clamp((at.x() - plot.left()) / plot.width(), 0.0, 1.0);
  const double y = std::clamp((plot.bottom() - at.y()) / plot.height(), 0.0, 1.0);
  std::optional<AxisMap> time;
  std::optional<AxisMap> value;
  if (horizontal) time = axes.horizontal().part(x - x * factor, x + (1.0 - x) * factor);
  if (vertical) value = axes.vertical().part(y - y * factor, y + (1.0 - y) * factor);
  zoom.show(time, output, value);
}

void RunsView::nudge(double x, double y)
{
  zoom.show(axes.horizontal().part(x, 1.0 + x), output, axes.vertical().part(y, 1.0 + y));
}

void RunsView::wheelEvent(QWheelEvent* event)
{
  if (!document.isOpen() || drag) return;
  constexpr double stepsOfWheel = 120.0;
  const QPoint angle = event->angleDelta();
  const double steps = (angle.y() != 0 ? angle.y() : angle.x()) / stepsOfWheel;
  const QPointF at = event->position();
  const bool onTimes = at.y() > axes.plot().bottom() || event->modifiers().testFlag(Qt::ControlModifier);
  const bool onValues = at.x() < axes.plot().left() || event->modifiers().testFlag(Qt::ShiftModifier);
  zoomAbout(at, std::pow(wheelStep, steps), !onValues, !onTimes);
  event->accept();
}

void RunsView::keyPressEvent(QKeyEvent* event)
{
  const QPointF middle = axes.plot().center();
  switch (event->key()) {
  case Qt::Key_Escape:
    if (drag)
      cancelDrag();
    else
      document.selectGate(std::nullopt);
    break;
  case Qt::Key_0:
    zoom.reset();
    break;
  case Qt::Key_Plus:
  case Qt::Key_Equal:
    zoomAbout(middle, wheelStep, true, true);
    break;
  case Qt::Key_Minus:
    zoomAbout(middle, 1.0 / wheelStep, true, true);
    break;
  case Qt::Key_Left:
    nudge(-keyStep, 0.0);
    break;
  case Qt::Key_Right:
    nudge(keyStep, 0.0);
    break;
  case Qt::Key_Up:
    nudge(0.0, keyStep);
    break;
  case Qt::Key_Down:
    nudge(0.0, -keyStep);
    break;
  default:
    QWidget::keyPressEvent(event);
  }
}

bool RunsView::event(QEvent* event)
{
  // A pointer on its way to a drag leaves time to prepare for it.
  if (event->type() == QEvent::Enter) prepare();
  if (event->type() == QEvent::Leave) {
    found.reset();
    document.hover(std::nullopt);
    update();
  }
  return QWidget::event(event);
}

} // namespace runsieve::app
