#include "app/cli/Commands.h"

#include "app/explorer/ExplorerWindow.h"

#include <QApplication>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

namespace runsieve::app {

int runExplore(ExploreArguments const& arguments)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  int argc = 1;
  char name[] = "runsieve";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  ExplorerWindow window;
  window.resize(1200, 950);
  window.show();
  if (!arguments.file.empty())
    window.openInteractively(QString::fromLocal8Bit(arguments.file.c_str()), arguments.read);
  return QApplication::exec();
}

} // namespace runsieve::app
