#include "app/explorer/window/Actions.h"

#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/Icons.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <stdexcept>

namespace runsieve::app {

namespace {

QList<QKeySequence> shortcutsOf(ActionEntry const& entry)
{
  QList<QKeySequence> keys;
  for (QString const& key : QString(entry.shortcut).split("; "))
    if (!key.isEmpty()) keys << QKeySequence::fromString(key, QKeySequence::PortableText);
  return keys;
}

QString plainText(QString text)
{
  return text.remove('&');
}

/// The hint, with the first shortcut.
QString tipOf(ActionEntry const& entry, QList<QKeySequence> const& keys)
{
  const QString hint = entry.hint;
  return keys.isEmpty() ? hint
                        : QString("%1 (%2)").arg(hint, keys.first().toString(QKeySequence::NativeText));
}

} // namespace

Actions::Actions(QMainWindow& window) : QObject(&window)
{
  bar = window.addToolBar("Toolbar");
  bar->setObjectName("toolbar");
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setMovable(false);
  QString lastMenu;
  for (ActionEntry const& entry : actionTable()) {
    if (!menus.contains(entry.menu)) menus[entry.menu] = window.menuBar()->addMenu(entry.menu);
    auto* action = new QAction(iconOf(entry.id), entry.text, &window);
    const QList<QKeySequence> keys = shortcutsOf(entry);
    action->setShortcuts(keys);
    action->setToolTip(tipOf(entry, keys));
    action->setStatusTip(entry.hint);
    action->setIconText(plainText(entry.text).remove("..."));
    action->setObjectName(entry.id);
    action->setCheckable(entry.kind != ActionEntry::Kind::Plain);
    if (entry.kind == ActionEntry::Kind::Choice) {
      const QString group = QString(entry.id).section('.', 0, 0);
      if (!groups.contains(group)) groups[group] = new QActionGroup(this);
      groups[group]->addAction(action);
    }
    menus[entry.menu]->addAction(action);
    if (entry.endsGroup) menus[entry.menu]->addSeparator();
    if (entry.inToolbar) {
      if (!lastMenu.isEmpty() && lastMenu != entry.menu) bar->addSeparator();
      lastMenu = entry.menu;
      bar->addAction(action);
    }
    actions[entry.id] = action;
  }
}

QAction* Actions::at(char const* id) const
{
  QAction* action = actions.value(id);
  if (!action) throw std::logic_error(std::string("no such action: ") + id);
  return action;
}

void Actions::on(char const* id, std::function<void()> const& handler)
{
  connect(at(id), &QAction::triggered, this, [handler] { handler(); });
}

} // namespace runsieve::app
