#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace runsieve::app {

/// Tells when the release of a button that is held over a widget will never be seen there: the widget is
/// hidden or loses the keyboard, a dialog opens, another window comes to the front, or the pointer moves
/// without a button. Whoever drags something must give that up then. May tell when nothing is held.
class LostMouse : public QObject
{
  Q_OBJECT

public:
  LostMouse(QWidget& widget, std::function<void()> lost);

  /// Moves of the mouse are looked at here as well, such as on the viewport of a widget that scrolls.
  void watch(QWidget& widget);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  std::function<void()> lost;
};

} // namespace runsieve::app
