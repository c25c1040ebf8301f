#include "app/desk/DeskCommands.h"

#include "app/explorer/window/Appearance.h"
#include "app/explorer/window/OpenWindows.h"

#include <QApplication>
#include <QFile>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <cstdlib>
#include <stdexcept>

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
  QStringList files;
  if (!arguments.file.empty()) files << QFile::decodeName(arguments.file.c_str());
  for (std::string const& file : arguments.more) files << QFile::decodeName(file.c_str());
  openWindows(files, arguments.read);
  return QApplication::exec();
}

} // namespace runsieve::app
