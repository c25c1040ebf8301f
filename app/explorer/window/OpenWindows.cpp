#include "app/explorer/window/OpenWindows.h"

#include "app/explorer/window/ExplorerWindow.h"

#include <QFileInfo>

namespace runsieve::app {

void openWindows(QStringList const& files, ReadOptions const& options)
{
  ExplorerWindow* window = newExplorerWindow();
  const auto recovered = window->files().recover();
  bool isFree = !recovered;
  for (QString const& file : files) {
    if (recovered && QFileInfo(*recovered) == QFileInfo(file)) continue;
    if (!isFree) window = newExplorerWindow();
    isFree = false;
    window->open(file, options);
  }
}

} // namespace runsieve::app
