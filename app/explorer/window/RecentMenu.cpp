#include "app/explorer/window/RecentMenu.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/session/RecentFiles.h"

namespace runsieve::app {

RecentMenu::RecentMenu(QWidget* parent) : QMenu("Open recen&t", parent)
{
  setToolTipsVisible(true);
  for (auto tell : {&QAction::setToolTip, &QAction::setStatusTip})
    (menuAction()->*tell)("Open a file that was opened before");
  connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
}

void RecentMenu::fill()
{
  clear();
  const QStringList files = RecentFiles::list();
  const QStringList names = RecentFiles::namesOf(files);
  for (int i = 0; i < files.size(); ++i) {
    QAction* action = addAction(menuText(names[i]));
    action->setToolTip(RecentFiles::tipOf(files[i]));
    connect(action, &QAction::triggered, this, [this, path = files[i]] { Q_EMIT fileWanted(path); });
  }
  if (files.isEmpty()) {
    addAction("No file was opened yet")->setEnabled(false);
    return;
  }
  addSeparator();
  connect(addAction("Forget &these"), &QAction::triggered, this, [] { RecentFiles::clear(); });
}

} // namespace runsieve::app
