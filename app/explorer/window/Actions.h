#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;

namespace runsieve::app {

/// The actions of a window, made from the table of actions.
class Actions : public QObject
{
  Q_OBJECT

public:
  /// Fills the menus and the toolbar of a window.
  explicit Actions(QMainWindow& window);

  [[nodiscard]] QAction* at(char const* id) const;
  /// What an action does when it is chosen; a switch or choice when it is switched on, or off, by the user.
  void on(char const* id, std::function<void()> const& handler);
  [[nodiscard]] QMenu* menu(char const* title) const { return menus.value(title); }
  [[nodiscard]] QToolBar* toolbar() const { return bar; }

private:
  QHash<QString, QAction*> actions;
  QHash<QString, QMenu*> menus;
  QHash<QString, QActionGroup*> groups;
  QToolBar* bar = nullptr;
};

} // namespace runsieve::app
