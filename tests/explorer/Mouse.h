#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

namespace runsieve::test {

/// Mouse events on a widget, as a window system sends them.
class Mouse
{
public:
  explicit Mouse(QWidget& widget) : widget(widget) {}

  void press(QPointF const& at, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    held = button;
    send(QEvent::MouseButtonPress, at, button, button, modifiers);
  }
  void move(QPointF const& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    send(QEvent::MouseMove, to, Qt::NoButton, held, modifiers);
  }
  void release(QPointF const& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    const Qt::MouseButton button = held;
    held = Qt::NoButton;
    send(QEvent::MouseButtonRelease, at, button, Qt::NoButton, modifiers);
  }
  void click(QPointF const& at, Qt::MouseButton button = Qt::LeftButton)
  {
    press(at, button);
    release(at);
  }
  void doubleClick(QPointF const& at)
  {
    click(at);
    held = Qt::LeftButton;
    send(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    release(at);
  }
  /// Presses, moves in steps, and releases.
  void drag(QPointF const& from, QPointF const& to, Qt::MouseButton button = Qt::LeftButton,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    press(from, button, modifiers);
    constexpr int steps = 5;
    for (int i = 1; i <= steps; ++i) move(from + (to - from) * i / steps, modifiers);
    release(to, modifiers);
  }
  void wheel(QPointF const& at, int steps, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    constexpr int stepOfWheel = 120;
    QWheelEvent event(at, widget.mapToGlobal(at.toPoint()), QPoint(), QPoint(0, stepOfWheel * steps),
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
  }

private:
  void send(QEvent::Type type, QPointF const& at, Qt::MouseButton button, Qt::MouseButtons buttons,
            Qt::KeyboardModifiers modifiers)
  {
    QMouseEvent event(type, at, widget.mapToGlobal(at.toPoint()), button, buttons, modifiers);
    QApplication::sendEvent(&widget, &event);
  }

  QWidget& widget;
  Qt::MouseButton held = Qt::NoButton;
};

} // namespace runsieve::test
