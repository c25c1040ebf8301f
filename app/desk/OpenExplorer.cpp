#include "app/desk/DeskCommands.h"

#include "app/explorer/window/Appearance.h"
#include "app/explorer/window/ExplorerWindow.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <utility>

namespace runsieve::app {

namespace {

/// Qt ends the program with a signal if it finds no display.
void requireDisplay()
{
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    if (const char* value = std::getenv(name); value && *value) return;
  throw std::runtime_error(
      "there is no display to open a window on; `runsieve rank` and `runsieve render` need none");
}

} // namespace

int openExplorer(ExploreArguments const& arguments)
{
  requireDisplay();
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  int argc = 1;
  char name[] = "runsieve";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  QApplication::setOrganizationName("runsieve"); // one file of settings
  QApplication::setApplicationName("runsieve");
  QApplication::setApplicationDisplayName("Runsieve");
  QApplication::setDesktopFileName("org.runsieve.Runsieve");
  applyChosenAppearance();
  std::vector<std::string> files = arguments.more;
  files.insert(files.begin(), arguments.file);
  bool isFirst = true;
  for (std::string const& file : files) {
    ExplorerWindow* window = newExplorerWindow();
    const QString path = QFile::decodeName(file.c_str());
    const auto recovered = std::exchange(isFirst, false) ? window->files().recover() : std::nullopt;
    if (path.isEmpty() || (recovered && QFileInfo(*recovered) == QFileInfo(path))) continue;
    // Recovered work has a window of its own.
    (recovered ? newExplorerWindow() : window)->open(path, arguments.read);
  }
  return QApplication::exec();
}

} // namespace runsieve::app
