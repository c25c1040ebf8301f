#include "app/explorer/controls/LostMouse.h"

#include <QMouseEvent>
#include <QWidget>

#include <utility>

namespace runsieve::app {

LostMouse::LostMouse(QWidget& widget, std::function<void()> onLost)
    : QObject(&widget), lost(std::move(onLost))
{
  watch(widget);
}

void LostMouse::watch(QWidget& widget)
{
  widget.installEventFilter(this);
}

bool LostMouse::eventFilter(QObject* watched, QEvent* event)
{
  switch (event->type()) {
  case QEvent::FocusOut:
  case QEvent::Hide:
  case QEvent::WindowBlocked:
  case QEvent::WindowDeactivate:
    lost();
    break;
  case QEvent::MouseMove:
    if (static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton) lost();
    break;
  default:
    break;
  }
  return QObject::eventFilter(watched, event);
}

} // namespace runsieve::app
